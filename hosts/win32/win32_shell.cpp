#include "hosts/win32/win32_shell.h"

#include <shlobj.h>

#include <vector>

#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

constexpr TextView kOwnType = u"Orvello.Calendar";
constexpr TextView kEnding = u"\\.ics";
constexpr wchar_t kBefore[] = L"before";  // what opened calendars before, in our type's key
constexpr DWORD kLongestShellText = 65536;

class ShellKey {
 public:
  ~ShellKey() {
    if (key) RegCloseKey(key);
  }
  HKEY key = nullptr;
};

}  // namespace

Win32Shell::Answer Win32Shell::text_at(const Text& key, const wchar_t* name) const {
  ShellKey open;
  const LONG opened = RegOpenKeyExW(top_, wide(key), 0, KEY_READ, &open.key);
  if (opened != ERROR_SUCCESS) return {opened == ERROR_FILE_NOT_FOUND, std::nullopt};
  std::vector<wchar_t> text(kLongestShellText / sizeof(wchar_t) + 1);
  DWORD size = kLongestShellText, type = 0;
  const LONG read =
      RegQueryValueExW(open.key, name, nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size);
  if (read != ERROR_SUCCESS) return {read == ERROR_FILE_NOT_FOUND, std::nullopt};
  if (type != REG_SZ || text.front() == L'\0') return {true, std::nullopt};
  return {true, from_wide(text.data())};
}

bool Win32Shell::set_text(const Text& key, const wchar_t* name, const Text& text) const {
  ShellKey made;
  return RegCreateKeyExW(top_, wide(key), 0, nullptr, 0, KEY_WRITE, nullptr, &made.key, nullptr) ==
             ERROR_SUCCESS &&
         RegSetValueExW(made.key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(wide(text)),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

bool Win32Shell::remove_text(const Text& key, const wchar_t* name) const {
  ShellKey open;
  const LONG opened = RegOpenKeyExW(top_, wide(key), 0, KEY_WRITE, &open.key);
  if (opened != ERROR_SUCCESS) return opened == ERROR_FILE_NOT_FOUND;
  const LONG removed = RegDeleteValueW(open.key, name);
  return removed == ERROR_SUCCESS || removed == ERROR_FILE_NOT_FOUND;
}

Text Win32Shell::command() const { return u"\"" + program_ + u"\" \"%1\""; }

std::optional<bool> Win32Shell::starts_this_program() const {
  const Answer chosen = text_at(choices_ + Text(kEnding) + u"\\UserChoice", L"ProgId");
  const Answer type = text_at(classes_ + Text(kEnding), L"");
  const Answer started =
      text_at(classes_ + u"\\" + Text(kOwnType) + u"\\shell\\open\\command", L"");
  if (!chosen.known || !type.known || !started.known) return std::nullopt;
  const auto& opened_by = chosen.text ? chosen.text : type.text;
  return opened_by == kOwnType && started.text == command();
}

bool Win32Shell::describe_own_type() const {
  const Text type = classes_ + u"\\" + Text(kOwnType);
  return set_text(type, L"", Text(u"iCalendar")) &&
         set_text(type + u"\\DefaultIcon", L"", u"\"" + program_ + u"\",0") &&
         set_text(type + u"\\shell\\open\\command", L"", command()) &&
         set_text(classes_ + Text(kEnding) + u"\\OpenWithProgids", wide(Text(kOwnType)), Text());
}

bool Win32Shell::prefer_own_type(const std::optional<Text>& before) const {
  if (before == kOwnType) return true;
  const Text type = classes_ + u"\\" + Text(kOwnType);
  const bool noted = before ? set_text(type, kBefore, *before) : remove_text(type, kBefore);
  return noted && set_text(classes_ + Text(kEnding), L"", Text(kOwnType));
}

bool Win32Shell::give_back() const {
  const Text ending = classes_ + Text(kEnding), type = classes_ + u"\\" + Text(kOwnType);
  const Answer before = text_at(type, kBefore);
  if (!before.known) return false;
  if (before.text ? !set_text(ending, L"", *before.text) : !remove_text(ending, L"")) return false;
  remove_text(ending + u"\\OpenWithProgids", wide(Text(kOwnType)));
  RegDeleteTreeW(top_, wide(type));
  return true;
}

bool Win32Shell::start_this_program(bool wanted) {
  const Answer chosen = text_at(choices_ + Text(kEnding) + u"\\UserChoice", L"ProgId");
  const Answer type = text_at(classes_ + Text(kEnding), L"");
  if (!chosen.known || !type.known) return false;
  bool done = true;
  if (wanted) {
    done = !program_.empty() && describe_own_type() &&
           (chosen.text ? chosen.text == kOwnType : prefer_own_type(type.text));
  } else {
    if (type.text == kOwnType) done = give_back();
    done = done && chosen.text != kOwnType;
  }
  SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
  return done;
}

}  // namespace orvello
