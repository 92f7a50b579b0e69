#include "hosts/win32/form_scroll_bar.h"

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

void FormScrollBar::put(const Rect& place, int whole, int page, int position) {
  track_.set(whole, page, position);
  const bool seen = !place.empty() && track_.scrolls();
  if (seen != seen_ || (seen && place != place_))
    SetWindowPos(window(), HWND_TOP, place.x, place.y, place.width, place.height,
                 SWP_NOACTIVATE | (seen ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
  seen_ = seen;
  place_ = place;
  InvalidateRect(window(), nullptr, FALSE);
}

RECT FormScrollBar::room() const {
  RECT room{};
  GetClientRect(window(), &room);
  return room;
}

void FormScrollBar::go_on(std::optional<int> position) {
  InvalidateRect(window(), nullptr, FALSE);
  if (position && moved) moved(*position);
}

LRESULT FormScrollBar::message(UINT message, WPARAM wparam, LPARAM lparam) {
  const POINT at{static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
  switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT: {
      const BufferedPaint paint(window(), reinterpret_cast<HDC>(wparam));
      track_.paint(paint.dc(), paint.room());
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      SetCapture(window());
      go_on(track_.press(room(), at));
      return 0;
    case WM_MOUSEMOVE:
      if (track_.is_held()) go_on(track_.drag(room(), at));
      return 0;
    case WM_LBUTTONUP:
      if (GetCapture() == window()) ReleaseCapture();
      return 0;
    case WM_CAPTURECHANGED:
      track_.let_go();
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    default:
      return by_default(message, wparam, lparam);
  }
}

}  // namespace orvello
