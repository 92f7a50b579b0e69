#include "hosts/win32/press_control.h"

#include <algorithm>

#include "draw/mirrored.h"
#include "hosts/win32/form_paint.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kMark = 14;  // design units, of a box

DWORD button_style(ControlTemplate::Kind kind) {
  using Kind = ControlTemplate::Kind;
  switch (kind) {
    case Kind::default_button:
      return BS_DEFPUSHBUTTON;
    case Kind::check_box:
      return BS_CHECKBOX;
    case Kind::radio_button:
      return BS_RADIOBUTTON;
    case Kind::toggle:
      return BS_CHECKBOX | BS_PUSHLIKE;
    default:
      return BS_PUSHBUTTON;
  }
}

void paint_tick(HDC dc, const RECT& box, Color color) {
  const double side = box.right - box.left;
  const auto at = [&](double x, double y) {
    return POINT{box.left + static_cast<LONG>(side * x), box.top + static_cast<LONG>(side * y)};
  };
  const POINT points[] = {at(0.22, 0.52), at(0.43, 0.73), at(0.79, 0.29)};
  paint_strokes(dc, points, 3, color, std::max(2, static_cast<int>(side * 0.13)));
}

}  // namespace

bool PressControl::create(HWND parent) {
  text_ = made().text;
  if (made().image) image_ = *made().image;
  Creation creation;
  creation.window_class = L"BUTTON";
  creation.style = WS_CHILD | WS_TABSTOP | button_style(kind());
  creation.place = {0, 0, 0, 0};
  creation.parent = parent;
  creation.id = id();
  if (!create_control(creation)) return false;
  write_title();
  return true;
}

// What a screen reader takes it for; a line is called after what it is about, and says its text.
void PressControl::write_title() {
  Text title = kind() == Kind::line && !name().empty() ? name() + u": " + text_ : text_;
  if (kind() == Kind::picture_button && title.empty()) title = name();
  Text escaped;
  for (const char16_t letter : title) escaped.append(letter == u'&' ? 2u : 1u, letter);
  SetWindowTextW(window(), wide(escaped));
}

void PressControl::set_text(TextView text) {
  text_ = text;
  write_title();
  invalidate();
}

void PressControl::set_name(const Text& name) {
  FormControl::set_name(name);
  write_title();
}

void PressControl::set_checked(bool checked) {
  if (!is_choice() && kind() != Kind::toggle) return;
  if (checked == checked_) return;
  checked_ = checked;
  SendMessageW(window(), BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
  invalidate();
}

DrawnControl* PressControl::drawn() { return kind() == Kind::picture_button ? this : nullptr; }

void PressControl::set_image(const Image& image) {
  image_ = image;
  invalidate();
}

std::uint32_t PressControl::track_menu(const std::vector<MenuItem>& items, Point at) {
  RECT whole{};
  GetClientRect(window(), &whole);
  if (look().right_to_left()) at = mirrored(at, whole.right);
  POINT place{at.x, at.y};
  ClientToScreen(window(), &place);
  return sink().track_menu(items, place);
}

bool PressControl::uses_key(UINT key) const {
  return key == VK_RETURN && !is_choice() && kind() != Kind::toggle;
}

bool PressControl::is_marked() const { return kind() == Kind::default_button || checked_; }

void PressControl::press() {
  if (!IsWindowEnabled(window())) return;
  if (kind() == Kind::check_box || kind() == Kind::toggle) set_checked(!checked_);
  tell(Event::command);
}

void PressControl::set_down(bool down) {
  if (down == down_) return;
  down_ = down;
  invalidate();
  UpdateWindow(window());
}

void PressControl::press_pointer() {
  if (sink().covered()) return;
  take_focus();
  held_ = true;
  SetCapture(window());
  set_down(true);
}

void PressControl::move_pointer(LPARAM at) {
  if (!held_) return;
  RECT room{};
  GetClientRect(window(), &room);
  set_down(PtInRect(&room, {static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))}));
}

void PressControl::release_pointer(LPARAM at) {
  if (!held_) return;
  move_pointer(at);
  held_ = false;
  const bool pressed = down_;
  set_down(false);
  if (GetCapture() == window()) ReleaseCapture();
  if (pressed && !sink().covered()) press();
}

// What is typed on a line is meant for the edit that its command brings.
bool PressControl::take_letter(WPARAM letter) {
  if (kind() != Kind::line || letter <= L' ' || is_key_held(VK_CONTROL)) return false;
  return sink().letter_left(id(), static_cast<wchar_t>(letter));
}

LRESULT PressControl::control_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SETTEXT:  // the platform would draw it at once
      return DefWindowProcW(window(), message, wparam, lparam);
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      press_pointer();
      return 0;
    case WM_MOUSEMOVE:
      move_pointer(lparam);
      return 0;
    case WM_LBUTTONUP:
      release_pointer(lparam);
      return 0;
    case WM_CAPTURECHANGED:
      held_ = false;
      set_down(false);
      return 0;
    case WM_KEYDOWN:
      if (wparam == VK_SPACE) space_ = true;
      if (wparam == VK_SPACE) set_down(true);
      if (wparam == VK_RETURN && uses_key(VK_RETURN) && !(HIWORD(lparam) & KF_REPEAT)) press();
      return 0;
    case WM_KEYUP:
      if (wparam != VK_SPACE || !space_) return 0;
      space_ = false;
      set_down(false);
      press();
      return 0;
    case WM_CHAR:
      take_letter(wparam);
      return 0;
    case BM_CLICK:  // a screen reader's
      if (sink().covered()) return 0;
      take_focus();
      press();
      return 0;
    case WM_KILLFOCUS:
      space_ = false;
      down_ = false;
      [[fallthrough]];
    case WM_SETFOCUS:
    case WM_ENABLE:
      invalidate();
      return 0;
    default:
      return by_default(message, wparam, lparam);
  }
}

void PressControl::paint(HDC given) {
  const BufferedPaint paint(window(), given);
  fill_room(paint.dc(), paint.room(), look().colors().ground);
  if (is_choice())
    paint_choice(paint.dc(), paint.room());
  else if (kind() == Kind::line)
    paint_line(paint.dc(), paint.room());
  else
    paint_button(paint.dc(), paint.room());
}

void PressControl::paint_button(HDC dc, const RECT& room) {
  const LookColors& colors = look().colors();
  const bool enabled = IsWindowEnabled(window());
  const bool marked = is_marked() && enabled;
  const bool strong = marked && image_.empty();  // dark pictures need a light ground
  Color ground = strong ? colors.accent : marked ? colors.accent_tint : colors.field;
  if (down_) ground = strong ? colors.accent_down : colors.accent_tint;
  const int line = std::max(1, look().scaled(marked && !strong ? 2 : 1)), round = look().scaled(2);
  paint_round_box(dc, room, ground, marked ? colors.accent : colors.line, line, round);
  if (GetFocus() == window())
    paint_round_edge(dc, shrunk(room, 2 * line, 2 * line),
                     strong ? colors.accent_text : colors.accent, line, round / 2);
  if (!image_.empty()) {
    const int gap = std::max(1, look().scaled(2));
    return paint_picture(dc, shrunk(room, gap, gap), image_, ground, enabled);
  }
  TextPaint how;
  how.font = look().font(kind() == Kind::default_button);
  how.centered = true;
  how.color = !enabled ? colors.dim_text : strong ? colors.accent_text : colors.text;
  paint_text(dc, shrunk(room, 4 * line, 0), text_, how, look());
}

void PressControl::paint_choice(HDC dc, const RECT& room) {
  const LookColors& colors = look().colors();
  const bool enabled = IsWindowEnabled(window());
  const bool round = kind() == Kind::radio_button, rtl = look().right_to_left();
  const int line = std::max(1, look().scaled(1)), side = look().scaled(kMark);
  const LONG top = (room.bottom - side) / 2;
  const RECT box = turned_room({line, top, line + side, top + side}, room.right, rtl);
  const Color ink = enabled ? colors.accent : colors.dim_text;
  paint_round_box(dc, box, down_ ? colors.accent_tint : colors.field,
                  checked_ || down_ ? ink : colors.dim_text, line,
                  round ? side / 2 : look().scaled(2));
  if (checked_ && round) {
    const int dot = side / 4;
    paint_round_box(dc, shrunk(box, dot, dot), ink, ink, 1, side / 4);
  } else if (checked_) {
    paint_tick(dc, box, ink);
  }
  TextPaint how;
  how.font = look().font();
  how.wraps = true;
  how.color = enabled ? colors.text : colors.dim_text;
  const LONG left = line + side + look().scaled(6);
  const RECT words = turned_room({left, 0, room.right, room.bottom}, room.right, rtl);
  paint_text(dc, words, text_, how, look());
  if (GetFocus() != window()) return;
  const Size size = measured_text(how.font, text_);
  const LONG wide = std::min<LONG>(size.width + 4 * line, room.right - left + 2 * line);
  const LONG high = std::min<LONG>(
      room.bottom, wrapped_height(how.font, text_, words.right - words.left) + 2 * line);
  const LONG y = (room.bottom - high) / 2;
  paint_round_edge(
      dc, turned_room({left - 2 * line, y, left - 2 * line + wide, y + high}, room.right, rtl),
      colors.accent, line, 2 * line);
}

void PressControl::paint_line(HDC dc, const RECT& room) {
  const LookColors& colors = look().colors();
  const int line = std::max(1, look().scaled(1)), side = look().scaled(1.5 * kGrid);
  if (down_) fill_room(dc, room, colors.accent_tint);
  fill_room(dc, {0, room.bottom - line, room.right, room.bottom}, colors.line);
  TextPaint how;
  how.font = look().font();
  how.wraps = room.bottom >= 2 * look().line_height();
  how.color = IsWindowEnabled(window()) ? colors.text : colors.dim_text;
  // The text stands where an edit in its place has it.
  paint_text(dc, {side, 0, room.right - side, room.bottom - line}, text_, how, look());
  if (GetFocus() == window()) paint_field_edge(dc, room, look(), true, true);
}

}  // namespace orvello
