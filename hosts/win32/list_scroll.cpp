#include "hosts/win32/list_scroll.h"

#include <algorithm>

#include "hosts/win32/form_paint.h"

namespace orvello {
namespace {

constexpr int kWheelRows = 3;  // a notch

bool is_outside(UINT message) {
  return message == WM_NCLBUTTONDOWN || message == WM_NCLBUTTONDBLCLK ||
         message == WM_NCMOUSEMOVE || message == WM_NCLBUTTONUP;
}

bool is_press_on_bar(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK || message == WM_NCLBUTTONDOWN ||
         message == WM_NCLBUTTONDBLCLK;
}

}  // namespace

void ListScroll::show(HWND list, bool shown) {
  first_ = height_ = -1;
  if (shown == shown_) return shown ? follow(list) : void();
  shown_ = shown;
  track_.let_go();
  SetWindowPos(list, nullptr, 0, 0, 0, 0,
               SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT ListScroll::room(HWND list) const {
  RECT rows{};
  GetClientRect(list, &rows);
  if (look_.right_to_left()) return {-width(), 0, 0, rows.bottom};
  return {rows.right, 0, rows.right + width(), rows.bottom};
}

LRESULT ListScroll::take(HWND list, UINT message, WPARAM wparam, LPARAM lparam) {
  if (!shown_) return rest_(message, wparam, lparam);
  POINT at{static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
  switch (message) {
    case WM_NCHITTEST: {
      ScreenToClient(list, &at);
      const RECT bar = room(list);
      return PtInRect(&bar, at) ? HTBORDER : rest_(message, wparam, lparam);
    }
    case WM_NCMOUSEMOVE:
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
    case WM_NCLBUTTONUP:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_MOUSEMOVE:
    case WM_LBUTTONUP:
      if (is_outside(message)) ScreenToClient(list, &at);
      if (take_pointer(list, message, at, is_outside(message))) return 0;
      break;
    case WM_CAPTURECHANGED:
      track_.let_go();
      break;
    default:
      break;
  }
  const LRESULT answer = rest_(message, wparam, lparam);
  if (message == WM_NCCALCSIZE) {
    RECT& inside = *reinterpret_cast<RECT*>(lparam);  // both shapes of it begin so
    const LONG wide = std::min<LONG>(width(), std::max(0L, inside.right - inside.left));
    (look_.right_to_left() ? inside.left : inside.right) += look_.right_to_left() ? wide : -wide;
  } else if (message == WM_NCPAINT) {
    paint(list);
  } else if (message != WM_NCDESTROY && message != WM_DESTROY) {
    follow(list);  // whatever it was may have scrolled
  }
  return answer;
}

// A list that is dropped down may hold the pointer, and hears of all presses then.
bool ListScroll::take_pointer(HWND list, UINT message, POINT client, bool outside) {
  const RECT bar = room(list);
  if (track_.is_held()) {
    if (message == WM_MOUSEMOVE) {
      if (const auto position = track_.drag(bar, client)) scroll_to(*position);
    } else if (message == WM_LBUTTONUP) {
      track_.let_go();
      if (std::exchange(captures_, false)) ReleaseCapture();
    }
    paint(list);
    return true;
  }
  if (!PtInRect(&bar, client)) return outside;
  if (!is_press_on_bar(message)) return true;
  captures_ = GetCapture() != list;
  if (captures_) SetCapture(list);
  if (const auto position = track_.press(bar, client)) scroll_to(*position);
  paint(list);
  return true;
}

// To the first row that begins at a place among all rows or behind it: at the end all of the last
// one is seen.
void ListScroll::scroll_to(int position) {
  const int rows = count();
  int row = 0;
  for (int top = 0; row < rows - 1 && top < position; ++row) top += height_of(row);
  rest_(LB_SETTOPINDEX, static_cast<WPARAM>(row), 0);
}

void ListScroll::turn_wheel(HWND list, int delta) {
  const int notches = delta / WHEEL_DELTA;
  const auto first = static_cast<int>(rest_(LB_GETTOPINDEX, 0, 0));
  const int wanted = std::clamp(first - notches * kWheelRows, 0, std::max(0, count() - 1));
  rest_(LB_SETTOPINDEX, static_cast<WPARAM>(wanted), 0);
  follow(list);
}

void ListScroll::follow(HWND list) {
  if (!shown_ || track_.is_held()) return;
  RECT rows{};
  GetClientRect(list, &rows);
  const auto first = static_cast<int>(rest_(LB_GETTOPINDEX, 0, 0));
  if (first != first_ || rows.bottom != height_) paint(list);
}

void ListScroll::paint(HWND list) {
  if (!shown_) return;
  const RECT place = room(list);
  first_ = static_cast<int>(rest_(LB_GETTOPINDEX, 0, 0));
  height_ = static_cast<int>(place.bottom);
  if (!track_.is_held()) {
    int whole = 0, above = 0;
    for (int row = 0, rows = count(); row < rows; ++row) {
      if (row == first_) above = whole;
      whole += height_of(row);
    }
    track_.set(whole, height_, above);
  }
  RECT outline{};
  GetWindowRect(list, &outline);
  POINT corner{place.left, place.top};
  ClientToScreen(list, &corner);
  const HDC dc = GetWindowDC(list);
  const int x = static_cast<int>(corner.x - outline.left),
            y = static_cast<int>(corner.y - outline.top);
  track_.paint(dc, {x, y, x + width(), y + height_});
  ReleaseDC(list, dc);
}

}  // namespace orvello
