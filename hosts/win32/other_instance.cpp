#include "hosts/win32/other_instance.h"

#include <cstdio>
#include <utility>

#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

constexpr ULONG_PTR kCallMark = 0x4F525631;  // of our own blocks
constexpr std::size_t kMostUnits = 1 << 20;
constexpr LRESULT kCallTaken = 0x4F52;
constexpr int kBetweenLooks = 50;  // milliseconds

// A short name for a path of any length, without what names of objects may not hold.
Text short_name(TextView identity) {
  std::uint64_t sum = 14695981039346656037u;
  for (const char16_t unit : identity) sum = (sum ^ unit) * 1099511628211u;
  char digits[20];
  std::snprintf(digits, sizeof digits, "%08x%08x", static_cast<unsigned>(sum >> 32),
                static_cast<unsigned>(sum));
  return to_utf16(digits);
}

Text whole_path(const Text& path) {
  constexpr DWORD kLongest = 32768;
  std::wstring whole(kLongest, L'\0');
  const DWORD length = GetFullPathNameW(wide(path), kLongest, whole.data(), nullptr);
  return length == 0 || length >= kLongest ? path : from_wide({whole.data(), length});
}

bool is_whole_path(TextView path) {
  return starts_with(path, u"\\\\") || (path.size() > 2 && path[1] == u':' && path[2] == u'\\');
}

}  // namespace

Text packed(const InstanceCall& call) {
  Text block(1, call.new_appointment ? u'1' : u'0');
  for (const Text& file : call.files) block.append(file).push_back(u'\0');
  return block;
}

std::optional<InstanceCall> unpacked(TextView block) {
  if (block.empty() || block.size() > kMostUnits || (block[0] != u'0' && block[0] != u'1'))
    return std::nullopt;
  if (block.size() > 1 && block.back() != u'\0') return std::nullopt;
  InstanceCall call;
  call.new_appointment = block[0] == u'1';
  for (TextView rest = block.substr(1); !rest.empty();) {
    const std::size_t end = rest.find(u'\0');
    if (!is_whole_path(rest.substr(0, end))) return std::nullopt;
    call.files.emplace_back(rest.substr(0, end));
    rest.remove_prefix(end + 1);
  }
  return call;
}

OtherInstance::OtherInstance(TextView window_class, TextView title, TextView identity)
    : class_(Text(window_class) + u"Call"), title_(Text(title) + u" " + short_name(identity)) {
  lock_name_ = Text(u"Local\\") + class_ + u" " + title_;
}

OtherInstance::~OtherInstance() {
  if (lock_) CloseHandle(lock_);
}

bool OtherInstance::be_first() {
  lock_ = CreateMutexW(nullptr, FALSE, wide(lock_name_));
  // Without one there is no telling, and a calendar that does not start helps nobody.
  if (lock_ && GetLastError() == ERROR_ALREADY_EXISTS) {
    CloseHandle(lock_);
    lock_ = nullptr;
    return false;
  }
  Creation creation;
  creation.window_class = wide(class_);
  creation.title = wide(title_);
  creation.style = WS_POPUP;
  creation.place = {0, 0, 0, 0};
  create_own(creation);
  return true;
}

OtherInstance::Joined OtherInstance::join(InstanceCall call, int patience_milliseconds) {
  for (Text& file : call.files) file = whole_path(file);
  const Text block = packed(call);
  for (int waited = 0;; waited += kBetweenLooks) {
    if (be_first()) return Joined::first;
    // It may be starting, or about to end.
    const HWND other = FindWindowW(wide(class_), wide(title_));
    if (other) return hand_over(other, block) ? Joined::handed_over : Joined::unanswered;
    if (waited >= patience_milliseconds) return Joined::unanswered;
    Sleep(kBetweenLooks);
  }
}

bool OtherInstance::hand_over(HWND other, const Text& packed_call) const {
  DWORD process = 0;
  GetWindowThreadProcessId(other, &process);
  AllowSetForegroundWindow(process);  // else the system keeps it from coming forward
  COPYDATASTRUCT data{};
  data.dwData = kCallMark;
  data.cbData = static_cast<DWORD>(packed_call.size() * sizeof(char16_t));
  data.lpData = const_cast<char16_t*>(packed_call.data());
  DWORD_PTR answer = 0;
  constexpr UINT kPatience = 4000;
  const LRESULT sent = SendMessageTimeoutW(other, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data),
                                           SMTO_ABORTIFHUNG, kPatience, &answer);
  return sent != 0 && static_cast<LRESULT>(answer) == kCallTaken;
}

// Any program may send this: only what is whole is believed.
LRESULT OtherInstance::message(UINT id, WPARAM wparam, LPARAM lparam) {
  if (id != WM_COPYDATA) return by_default(id, wparam, lparam);
  const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(lparam);
  if (!data || data->dwData != kCallMark || !data->lpData || data->cbData % sizeof(char16_t) != 0)
    return 0;
  const TextView block(static_cast<const char16_t*>(data->lpData), data->cbData / sizeof(char16_t));
  auto call = unpacked(block);
  if (!call) return 0;
  if (called) called(std::move(*call));
  return kCallTaken;
}

}  // namespace orvello
