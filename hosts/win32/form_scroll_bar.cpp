#include "hosts/win32/form_scroll_bar.h"

#include <algorithm>

#include "hosts/win32/form_paint.h"

namespace orvello {

bool FormScrollBar::create(HWND parent) {
  Creation creation;
  creation.window_class = L"OrvelloFormScrollBar";
  creation.style = WS_CHILD;
  creation.place = {0, 0, 0, 0};
  creation.parent = parent;
  return create_own(creation) != nullptr;
}

void FormScrollBar::set(int whole, int page, int position) {
  whole_ = std::max(1, whole);
  page_ = std::clamp(page, 1, whole_);
  position_ = std::clamp(position, 0, whole_ - page_);
  InvalidateRect(window(), nullptr, FALSE);
}

RECT FormScrollBar::thumb() const {
  RECT room{};
  GetClientRect(window(), &room);
  const int least = std::min<int>(look_.scaled(kTouchHeight), room.bottom);
  const int high = std::max(least, MulDiv(room.bottom, page_, whole_));
  const int top = whole_ > page_ ? MulDiv(room.bottom - high, position_, whole_ - page_) : 0;
  return {0, top, room.right, top + high};
}

void FormScrollBar::press(int y) {
  const RECT held = thumb();
  SetCapture(window());
  grip_ = y >= held.top && y < held.bottom ? y - held.top : (held.bottom - held.top) / 2;
  drag(y);
}

void FormScrollBar::drag(int y) {
  if (grip_ < 0) return;
  RECT room{};
  GetClientRect(window(), &room);
  const RECT held = thumb();
  const int way = std::max(1L, room.bottom - (held.bottom - held.top));
  const int position = std::clamp(MulDiv(y - grip_, whole_ - page_, way), 0, whole_ - page_);
  if (position == position_) return;
  set(whole_, page_, position);
  if (moved) moved(position);
}

LRESULT FormScrollBar::message(UINT message, WPARAM wparam, LPARAM lparam) {
  const int y = static_cast<short>(HIWORD(lparam));
  switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
      press(y);
      return 0;
    case WM_MOUSEMOVE:
      drag(y);
      return 0;
    case WM_LBUTTONUP:
      if (GetCapture() == window()) ReleaseCapture();
      return 0;
    case WM_CAPTURECHANGED:
      grip_ = -1;
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    default:
      return by_default(message, wparam, lparam);
  }
}

void FormScrollBar::paint(HDC given) {
  const BufferedPaint paint(window(), given);
  const LookColors& colors = look_.colors();
  fill_room(paint.dc(), paint.room(), colors.ground);
  const int gap = std::max(1, look_.scaled(2));
  const Color color = grip_ >= 0 ? colors.accent : colors.edge;
  paint_round_box(paint.dc(), shrunk(thumb(), gap, gap), color, color, 1, gap);
}

}  // namespace orvello
