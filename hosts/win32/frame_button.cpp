#include "hosts/win32/frame_button.h"

#include <algorithm>

#include "hosts/win32/form_paint.h"
#include "hosts/win32/wide_text.h"

namespace orvello {

bool FrameButton::create(HWND parent) {
  Creation creation;
  creation.window_class = L"BUTTON";
  creation.title = wide(text_);
  creation.style = WS_CHILD | (face_ == Face::strong ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON);
  if (takes_focus()) creation.style |= WS_TABSTOP;
  creation.place = {0, 0, 0, 0};
  creation.parent = parent;
  return create_control(creation) != nullptr;
}

void FrameButton::put(const Rect& place, bool shown) {
  SetWindowPos(window(), nullptr, place.x, place.y, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE | (shown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
}

void FrameButton::set_down(bool down) {
  down_ = down;
  InvalidateRect(window(), nullptr, FALSE);
  UpdateWindow(window());
}

void FrameButton::release(LPARAM at) {
  if (!held_) return;
  held_ = false;
  RECT room{};
  GetClientRect(window(), &room);
  const bool inside =
      PtInRect(&room, {static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))});
  set_down(false);
  if (GetCapture() == window()) ReleaseCapture();
  if (inside && pressed) pressed();
}

bool FrameButton::take_key(UINT key) {
  if (key == VK_RETURN || key == VK_SPACE) {
    if (pressed) pressed();
    return true;
  }
  return key_left && key_left(key);
}

LRESULT FrameButton::message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      held_ = true;
      SetCapture(window());
      set_down(true);
      return 0;
    case WM_MOUSEMOVE:
      return 0;
    case WM_LBUTTONUP:
      release(lparam);
      return 0;
    case WM_CAPTURECHANGED:
      held_ = false;
      set_down(false);
      return 0;
    case BM_CLICK:
      if (pressed) pressed();
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
      take_key(static_cast<UINT>(wparam));
      return 0;
    case WM_KEYUP:
    case WM_CHAR:
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    default:
      return by_default(message, wparam, lparam);
  }
}

void FrameButton::paint_glyph(HDC dc, const RECT& room) {
  const LookColors& colors = look_.colors();
  const LONG x = (room.left + room.right) / 2, y = (room.top + room.bottom) / 2;
  const LONG half = look_.scaled(4);
  const int thick = std::max(2, look_.scaled(1.6));
  const Color ink = IsWindowEnabled(window()) ? colors.accent : colors.line;
  if (face_ == Face::cross) {
    const POINT down[] = {{x - half, y - half}, {x + half, y + half}};
    const POINT up[] = {{x - half, y + half}, {x + half, y - half}};
    paint_strokes(dc, down, 2, colors.text, thick);
    paint_strokes(dc, up, 2, colors.text, thick);
    return;
  }
  const LONG depth = face_ == Face::forward ? half / 2 : -half / 2;
  const POINT arrow[] = {{x - depth, y - half}, {x + depth, y}, {x - depth, y + half}};
  paint_strokes(dc, arrow, 3, ink, thick);
}

void FrameButton::paint(HDC given) {
  const BufferedPaint paint(window(), given);
  const LookColors& colors = look_.colors();
  const RECT room = paint.room();
  const int line = std::max(1, look_.scaled(1));
  const bool arrow = face_ == Face::back || face_ == Face::forward;
  fill_room(paint.dc(), room, down_ ? colors.accent_tint : arrow ? colors.ground : colors.field);
  if (arrow) fill_room(paint.dc(), {0, room.bottom - line, room.right, room.bottom}, colors.line);
  if (!takes_focus()) return paint_glyph(paint.dc(), room);
  const bool strong = face_ == Face::strong;
  const Color ground = strong  ? down_ ? colors.accent_down : colors.accent
                       : down_ ? colors.accent_tint
                               : colors.field;
  fill_room(paint.dc(), room, colors.ground);
  paint_round_box(paint.dc(), room, ground, strong ? colors.accent : colors.line, line,
                  look_.scaled(2));
  if (GetFocus() == window())
    paint_round_edge(paint.dc(), shrunk(room, 2 * line, 2 * line),
                     strong ? colors.accent_text : colors.accent, line, 1);
  TextPaint how;
  how.font = look_.font(strong);
  how.centered = true;
  how.color = strong ? colors.accent_text : colors.text;
  paint_text(paint.dc(), shrunk(room, 4 * line, 0), text_, how, look_);
}

}  // namespace orvello
