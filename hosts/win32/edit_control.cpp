#include "hosts/win32/edit_control.h"

#include <algorithm>
#include <utility>

#include "hosts/win32/form_paint.h"
#include "hosts/win32/wide_text.h"
#include "ports/messages.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kNoLimit = 0x7FFFFFF;

bool is_first_half(WPARAM letter) { return letter >= 0xD800 && letter <= 0xDBFF; }

}  // namespace

Text edit_text(HWND edit) {
  const int length = GetWindowTextLengthW(edit);
  std::wstring read(static_cast<std::size_t>(length) + 1, L'\0');
  read.resize(static_cast<std::size_t>(GetWindowTextW(edit, read.data(), length + 1)));
  std::erase(read, L'\r');
  return from_wide(read);
}

void set_edit_text(HWND edit, TextView text, int limit) {
  Text kept = limit > 0 ? cut(text, static_cast<std::size_t>(limit)) : Text(text);
  std::erase(kept, u'\r');
  Text lines;
  for (const char16_t letter : kept) {
    if (letter == u'\n') lines += u'\r';
    lines += letter;
  }
  SetWindowTextW(edit, wide(lines));
}

bool has_room_for(HWND edit, WPARAM letter, int limit) {
  if (limit <= 0 || !is_first_half(letter)) return true;
  DWORD from = 0, to = 0;
  SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  return GetWindowTextLengthW(edit) - static_cast<int>(to - from) + 2 <= limit;
}

bool EditControl::create(HWND parent) {
  Creation creation;
  creation.window_class = L"EDIT";
  creation.style = WS_CHILD | WS_TABSTOP;
  creation.style |=
      several() ? ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL : ES_AUTOHSCROLL;
  if (look().right_to_left()) creation.extended_style = WS_EX_RIGHT;
  creation.place = {0, 0, 0, 0};
  creation.parent = parent;
  creation.id = id();
  if (!create_control(creation)) return false;
  look_changed();
  set_text(made().text);
  return true;
}

void EditControl::look_changed() {
  frame_.inset = {look().scaled(1), several() ? look().scaled(1) : 0};
  FormControl::look_changed();
  const int side = look().scaled(1.5 * kGrid) - look().scaled(kFieldEdge) - look().scaled(1);
  SendMessageW(window(), EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN,
               MAKELPARAM(std::max(0, side), std::max(0, side)));
}

// One line stands in the middle of its height.
void EditControl::put(const Rect& place) {
  if (stands_at(place)) return;
  const int edges = 2 * std::max(1, look().scaled(kFieldEdge));
  if (!several()) frame_.inset.cy = std::max(0, (place.height - edges - look().line_height()) / 2);
  FormControl::put(place);
  FieldFrame::refresh(window());
}

void EditControl::put_caret(Caret caret) {
  if (caret == Caret::unchanged) return;
  const int end = GetWindowTextLengthW(window());
  SendMessageW(window(), EM_SETSEL, static_cast<WPARAM>(caret == Caret::all ? 0 : end), end);
  SendMessageW(window(), EM_SCROLLCARET, 0, 0);
}

void EditControl::set_text(TextView text) {
  setting_ = true;
  SendMessageW(window(), EM_SETLIMITTEXT, kNoLimit, 0);
  set_edit_text(window(), text, made().limit);
  // Who is typing goes on behind it; the platform would begin it anew.
  if (GetFocus() == window()) put_caret(Caret::end);
  keep_limit();
  last_ = edit_text(window());
  setting_ = false;
}

void EditControl::keep_limit() {
  if (made().limit <= 0) return;
  const auto lines = several() ? SendMessageW(window(), EM_GETLINECOUNT, 0, 0) : 1;
  LRESULT breaks = 0;
  if (lines > 1)
    breaks = GetWindowTextLengthW(window()) - static_cast<LRESULT>(edit_text(window()).size());
  SendMessageW(window(), EM_SETLIMITTEXT, static_cast<WPARAM>(made().limit + breaks), 0);
}

bool EditControl::uses_key(UINT key) const {
  if (key == VK_RETURN) return several();
  return key == VK_UP || key == VK_DOWN || key == VK_LEFT || key == VK_RIGHT;
}

std::optional<LRESULT> EditControl::reflected(UINT message, WPARAM wparam, LPARAM lparam) {
  const LookColors& colors = look().colors();
  if (message == WM_CTLCOLOREDIT || message == WM_CTLCOLORSTATIC) {
    const auto dc = reinterpret_cast<HDC>(wparam);
    const bool enabled = IsWindowEnabled(window());
    const Color ground = enabled ? colors.field : colors.ground;
    SetTextColor(dc, color_ref(enabled ? colors.text : colors.dim_text));
    SetBkColor(dc, color_ref(ground));
    return reinterpret_cast<LRESULT>(look().brush(ground));
  }
  if (message != WM_COMMAND || HIWORD(wparam) != EN_CHANGE || setting_) return {};
  (void)lparam;
  if (several()) keep_limit();
  Text now = text();
  if (now == last_) return 0;
  last_ = std::move(now);
  tell(Event::changed);
  return 0;
}

LRESULT EditControl::control_message(UINT message, WPARAM wparam, LPARAM lparam) {
  const auto rest = [this](UINT id, WPARAM w, LPARAM l) { return by_default(id, w, l); };
  if (const auto answer = frame_.take(window(), message, wparam, lparam, rest)) return *answer;
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      if (sink().covered()) return 0;
      break;
    case WM_CHAR:
      if (wparam == L'\t' || !has_room_for(window(), wparam, made().limit)) return 0;
      if (!several() && (wparam == L'\r' || wparam == L'\n')) return 0;
      break;
    case WM_KEYDOWN: {
      const bool vertical = wparam == VK_UP || wparam == VK_DOWN;
      if (several() || !vertical || is_key_held(VK_SHIFT) || is_key_held(VK_CONTROL)) break;
      DialogEvent event{Event::key, id(), nullptr, {}};
      event.key = wparam == VK_UP ? kKeyUp : kKeyDown;
      sink().report(event);
      return 0;
    }
    default:
      break;
  }
  return by_default(message, wparam, lparam);
}

}  // namespace orvello
