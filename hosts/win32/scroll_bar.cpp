#include "hosts/win32/scroll_bar.h"

#include <algorithm>

namespace orvello {

bool ScrollBar::create(HWND parent, bool vertical) {
  Creation creation;
  creation.window_class = L"SCROLLBAR";
  creation.style = WS_CHILD | static_cast<DWORD>(vertical ? SBS_VERT : SBS_HORZ);
  creation.place = {};
  creation.parent = parent;
  return create_control(creation) != nullptr;
}

void ScrollBar::put(const Rect& place, int whole, int page, int position, int line) {
  line_ = std::max(1, line);
  page_ = std::max(1, page);
  const bool seen = !place.empty() && whole > page;
  if (seen) {
    RECT now{};
    GetWindowRect(window(), &now);
    MapWindowPoints(nullptr, GetParent(window()), reinterpret_cast<POINT*>(&now), 2);
    const RECT wanted{place.x, place.y, place.right(), place.bottom()};
    if (!EqualRect(&now, &wanted))
      SetWindowPos(window(), HWND_TOP, place.x, place.y, place.width, place.height, SWP_NOACTIVATE);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = whole - 1;
    info.nPage = static_cast<UINT>(page);
    info.nPos = position;
    SetScrollInfo(window(), SB_CTL, &info, TRUE);
  }
  if (seen == seen_) return;
  seen_ = seen;
  ShowWindow(window(), seen ? SW_SHOWNA : SW_HIDE);
}

bool ScrollBar::take(WPARAM wparam, LPARAM lparam) {
  if (!window() || reinterpret_cast<HWND>(lparam) != window()) return false;
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  GetScrollInfo(window(), SB_CTL, &info);
  int position = info.nPos;
  switch (LOWORD(wparam)) {
    case SB_LINEUP:
      position -= line_;
      break;
    case SB_LINEDOWN:
      position += line_;
      break;
    case SB_PAGEUP:
      position -= page_;
      break;
    case SB_PAGEDOWN:
      position += page_;
      break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      position = info.nTrackPos;  // the message's own has 16 bits
      break;
    case SB_TOP:
      position = info.nMin;
      break;
    case SB_BOTTOM:
      position = info.nMax;
      break;
    default:
      return true;
  }
  const int last = std::max(info.nMin, info.nMax + 1 - static_cast<int>(info.nPage));
  if (moved) moved(std::clamp(position, info.nMin, last));
  return true;
}

// Keys and the focus stay with what it scrolls.
LRESULT ScrollBar::message(UINT id, WPARAM wparam, LPARAM lparam) {
  if (id == WM_SETFOCUS) {
    SetFocus(GetParent(window()));
    return 0;
  }
  return by_default(id, wparam, lparam);
}

}  // namespace orvello
