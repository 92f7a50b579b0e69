#include "hosts/win32/sheet_tab_bar.h"

#include <commctrl.h>

#include <algorithm>

#include "draw/mirrored.h"
#include "hosts/win32/form_paint.h"
#include "hosts/win32/wide_text.h"

namespace orvello {

bool SheetTabControl::create(HWND parent) {
  INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TAB_CLASSES};
  InitCommonControlsEx(&classes);
  Creation creation;
  creation.window_class = WC_TABCONTROLW;
  creation.style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | TCS_FIXEDWIDTH | TCS_FOCUSNEVER;
  creation.place = {0, 0, 0, 0};
  creation.parent = parent;
  return create_control(creation) != nullptr;
}

LRESULT SheetTabControl::message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_NCHITTEST:
      // The platform's tabs end before the drawn ones, and it lets presses behind them through.
      return HTCLIENT;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
      const int page =
          bar_.tab_at({static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))});
      if (page >= 0 && page != bar_.shown() && bar_.wanted) bar_.wanted(page);
      return 0;
    }
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE:
    case WM_CHAR:
    case WM_KEYUP:
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTALLKEYS;
    case WM_KEYDOWN: {
      const auto pressed = static_cast<std::uint32_t>(wparam);
      const std::uint32_t key = look_.right_to_left() ? mirrored_key(pressed) : pressed;
      const int page = bar_.shown() + (key == VK_RIGHT ? 1 : key == VK_LEFT ? -1 : 0);
      if (page != bar_.shown()) {
        if (page >= 0 && page < bar_.count() && bar_.wanted) bar_.wanted(page);
      } else if (bar_.key_left) {
        bar_.key_left(static_cast<UINT>(wparam));
      }
      return 0;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    default:
      return by_default(message, wparam, lparam);
  }
}

void SheetTabControl::paint(HDC given) {
  const BufferedPaint paint(window(), given);
  const LookColors& colors = look_.colors();
  const RECT whole = paint.room();
  const int line = std::max(1, look_.scaled(1)), thick = std::max(2, look_.scaled(3));
  fill_room(paint.dc(), whole, colors.ground);
  fill_room(paint.dc(), {0, whole.bottom - line, whole.right, whole.bottom}, colors.line);
  for (int page = 0; page < bar_.count(); ++page) {
    const RECT tab = bar_.tab_place(page);
    const bool shown = page == bar_.shown();
    if (shown) {
      fill_room(paint.dc(), tab, colors.field);
      fill_room(paint.dc(), {tab.left, tab.bottom - thick, tab.right, tab.bottom}, colors.accent);
    }
    TextPaint how;
    how.font = look_.font(shown);
    how.centered = true;
    how.color = shown ? colors.accent : colors.text;
    paint_text(paint.dc(), tab, bar_.title(page), how, look_);
    if (!shown || GetFocus() != window()) continue;
    RECT edge = shrunk(tab, 2 * line, 2 * line);
    edge.bottom -= thick;
    paint_round_edge(paint.dc(), edge, colors.accent, line, 1);
  }
}

SheetTabBar::SheetTabBar(const FormLook& look)
    : look_(look),
      tabs_(*this, look),
      // They point to where the tabs go on.
      back_(look, FrameButton::Face::back, u"Previous tabs"),
      forward_(look, FrameButton::Face::forward, u"Next tabs") {}

bool SheetTabBar::create(HWND parent, const std::vector<Text>& titles) {
  titles_ = titles;
  Creation creation;
  creation.window_class = L"OrvelloSheetTabs";
  creation.style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN;
  creation.place = {0, 0, 0, 0};
  creation.parent = parent;
  if (!create_own(creation) || !back_.create(window()) || !forward_.create(window()) ||
      !tabs_.create(window()))
    return false;
  for (int page = 0; page < count(); ++page) {
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = const_cast<wchar_t*>(wide(titles_[static_cast<std::size_t>(page)]));
    SendMessageW(tabs_.window(), TCM_INSERTITEMW, static_cast<WPARAM>(page),
                 reinterpret_cast<LPARAM>(&item));
  }
  const auto page_by = [this](int by) {
    RECT room{};
    GetClientRect(window(), &room);
    move_to(left_ + by * room.right * 2 / 3);
  };
  const int on = look_.right_to_left() ? -1 : 1;
  back_.pressed = [page_by, on] { page_by(-on); };
  forward_.pressed = [page_by, on] { page_by(on); };
  return true;
}

int SheetTabBar::tab_width(int page) const {
  const int text = measured_text(look_.font(true), title(page)).width;
  return std::max(look_.scaled(44), text + look_.scaled(4 * kGrid));
}

int SheetTabBar::width() const {
  int all = 0;
  for (int page = 0; page < count(); ++page) all += tab_width(page);
  return all;
}

RECT SheetTabBar::tab_place(int page) const {
  RECT room{};
  GetClientRect(tabs_.window(), &room);
  LONG left = 0;
  for (int before = 0; before < page; ++before) left += tab_width(before);
  const RECT place{left, 0, left + tab_width(page), room.bottom};
  return turned_room(place, room.right, look_.right_to_left());
}

int SheetTabBar::tab_at(POINT point) const {
  for (int page = 0; page < count(); ++page) {
    const RECT place = tab_place(page);
    if (PtInRect(&place, point)) return page;
  }
  return -1;
}

void SheetTabBar::set_title(int page, const Text& title) {
  titles_[static_cast<std::size_t>(page)] = title;
  TCITEMW item{};
  item.mask = TCIF_TEXT;
  item.pszText = const_cast<wchar_t*>(wide(titles_[static_cast<std::size_t>(page)]));
  SendMessageW(tabs_.window(), TCM_SETITEMW, static_cast<WPARAM>(page),
               reinterpret_cast<LPARAM>(&item));
  bring_in_sight(shown_);
}

void SheetTabBar::show_tab(int page) {
  shown_ = page;
  SendMessageW(tabs_.window(), TCM_SETCURSEL, static_cast<WPARAM>(page), 0);
  InvalidateRect(tabs_.window(), nullptr, FALSE);
  bring_in_sight(page);
}

void SheetTabBar::put(const Rect& place) {
  SetWindowPos(window(), nullptr, place.x, place.y, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
  bring_in_sight(shown_);
}

// Counted from where lines begin; the arrows stand above the tabs that move below them.
void SheetTabBar::move_to(int left) {
  RECT room{};
  GetClientRect(window(), &room);
  const int all = width(), arrow = look_.scaled(kTouchHeight);
  const bool moves = all > room.right;
  const int gap = moves ? std::max<int>(0, room.right - 2 * arrow) : room.right;
  left_ = std::clamp(left, 0, std::max(0, all - gap));
  const int wide = moves ? all : static_cast<int>(room.right), begin = moves ? arrow - left_ : 0;
  const int x = look_.right_to_left() ? room.right - begin - wide : begin;
  SetWindowPos(tabs_.window(), HWND_BOTTOM, x, 0, wide, room.bottom, SWP_NOACTIVATE);
  // Narrow enough for the platform to have no arrows of its own; what is drawn is as wide as it is.
  const int least = count() > 0 ? std::max(1, wide / count() - look_.scaled(kGrid)) : 1;
  SendMessageW(tabs_.window(), TCM_SETITEMSIZE, 0, MAKELPARAM(least, room.bottom));
  back_.put({0, 0, arrow, static_cast<int>(room.bottom)}, moves);
  forward_.put({static_cast<int>(room.right) - arrow, 0, arrow, static_cast<int>(room.bottom)},
               moves);
  const bool rtl = look_.right_to_left();
  EnableWindow(back_.window(), rtl ? left_ < all - gap : left_ > 0);
  EnableWindow(forward_.window(), rtl ? left_ > 0 : left_ < all - gap);
  InvalidateRect(tabs_.window(), nullptr, FALSE);
}

void SheetTabBar::bring_in_sight(int page) {
  if (count() == 0) return;
  RECT room{};
  GetClientRect(window(), &room);
  const int gap = room.right - 2 * look_.scaled(kTouchHeight);
  int begin = 0;
  for (int before = 0; before < page; ++before) begin += tab_width(before);
  const int end = begin + tab_width(page);
  int left = left_;
  if (end > left + gap) left = end - gap;
  if (begin < left) left = begin;
  move_to(left);
}

LRESULT SheetTabBar::message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_ERASEBKGND || message == WM_PRINTCLIENT) {
    RECT room{};
    GetClientRect(window(), &room);
    fill_room(reinterpret_cast<HDC>(wparam), room, look_.colors().ground);
    return 1;
  }
  if (message == WM_MOUSEWHEEL) {  // it moves the tabs, and shows no other page
    move_to(left_ - static_cast<short>(HIWORD(wparam)) / 2);
    return 0;
  }
  return by_default(message, wparam, lparam);
}

}  // namespace orvello
