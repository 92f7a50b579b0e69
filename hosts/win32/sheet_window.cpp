#include "hosts/win32/sheet_window.h"

#include <algorithm>
#include <utility>

#include "draw/mirrored.h"
#include "hosts/win32/form_paint.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

constexpr int kOkWidth = 44, kButtonWidth = 72, kSheetHeading = 12;  // design units

}  // namespace

SheetWindow::SheetWindow(const FormLook& look, Text title)
    : look_(look),
      title_(std::move(title)),
      tabs_(look),
      ok_(look, FrameButton::Face::strong, u"OK"),
      cancel_(look, FrameButton::Face::plain, u"Cancel"),
      close_(look, FrameButton::Face::cross, u"Close") {}

bool SheetWindow::create(HWND parent, const std::vector<Text>& titles) {
  Creation creation;
  creation.window_class = L"OrvelloSheet";
  creation.title = wide(title_);
  creation.style = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
  creation.extended_style = WS_EX_CONTROLPARENT;
  creation.place = {0, 0, 0, 0};
  creation.parent = parent;
  if (!create_own(creation) || !tabs_.create(window(), titles) || !ok_.create(window()) ||
      !cancel_.create(window()) || !close_.create(window()))
    return false;
  tabs_.wanted = [this](int page) { page_wanted(page); };
  ok_.pressed = [this] { ok_wanted(); };
  cancel_.pressed = close_.pressed = [this] { cancel_wanted(); };
  tabs_.key_left = [this](UINT key) { return take_key(tabs_.tabs(), key); };
  ok_.key_left = [this](UINT key) { return take_key(ok_.window(), key); };
  cancel_.key_left = [this](UINT key) { return take_key(cancel_.window(), key); };
  return true;
}

void SheetWindow::add_page(std::shared_ptr<FormWindow> page) { pages_.push_back(std::move(page)); }

void SheetWindow::show_page(int page) {
  tabs_.show_tab(page);
  for (std::size_t i = 0; i < pages_.size(); ++i)
    if (static_cast<int>(i) != page) pages_[i]->hide();
  pages_[static_cast<std::size_t>(page)]->show();
}

void SheetWindow::turn(int by) {
  const int count = tabs_.count();
  if (count > 1) page_wanted((tabs_.shown() + by + count) % count);
}

bool SheetWindow::take_key(HWND from, UINT key) {
  const bool control_held = is_key_held(VK_CONTROL), shift_held = is_key_held(VK_SHIFT);
  if (control_held && (key == VK_TAB || key == VK_PRIOR || key == VK_NEXT)) {
    turn(key == VK_PRIOR || (key == VK_TAB && shift_held) ? -1 : 1);
    return true;
  }
  if (key == VK_TAB) move_focus(from, shift_held);
  if (key == VK_ESCAPE) cancel_wanted();
  if (key == VK_RETURN) {
    FormWindow& page = *pages_[static_cast<std::size_t>(tabs_.shown())];
    if (!page.press_default()) ok_wanted();
  }
  return key == VK_TAB || key == VK_ESCAPE || key == VK_RETURN;
}

// From the tabs to OK, Cancel and the page, and round; null: from the page.
void SheetWindow::move_focus(HWND from, bool back) {
  std::vector<HWND> ring{tabs_.tabs(), ok_.window()};
  if (roomy_) ring.push_back(cancel_.window());
  ring.push_back(nullptr);
  const auto at = std::find(ring.begin(), ring.end(), from) - ring.begin();
  const auto count = static_cast<std::ptrdiff_t>(ring.size());
  for (std::ptrdiff_t step = 1; step <= count; ++step) {
    const HWND next = ring[static_cast<std::size_t>((at + (back ? count - step : step)) % count)];
    if (next) {
      SetFocus(next);
      return;
    }
    if (pages_[static_cast<std::size_t>(tabs_.shown())]->focus_end(back)) return;
  }
}

bool SheetWindow::leave_page(bool back) {
  // A control that the focus leaves is told so: nothing of the page has it any more.
  pages_[static_cast<std::size_t>(tabs_.shown())]->focus(0);
  move_focus(nullptr, back);
  return true;
}

int SheetWindow::frame_height(bool roomy) const {
  return title_height() + tabs_.height() + (roomy ? buttons_height() : 0);
}

void SheetWindow::put(const Rect& place, bool roomy, bool framed) {
  roomy_ = roomy;
  framed_ = framed;
  size_ = {place.width, place.height};
  SetWindowPos(window(), nullptr, place.x, place.y, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
  lay_out();
  InvalidateRect(window(), nullptr, TRUE);
}

Rect SheetWindow::turned(const Rect& place) const {
  return look_.right_to_left() ? mirrored(place, size_.width) : place;
}

void SheetWindow::lay_out() {
  const int top = title_height(), tall = tabs_.height(), rim = edge();
  const int line = std::max(1, look_.scaled(1)), grid = look_.scaled(kGrid);
  const int width = size_.width, height = size_.height - rim;
  const int bottom = roomy_ ? height - buttons_height() : height;
  const int inner = std::max(0, top - line - rim);
  close_.put(turned({width - top, rim, top - rim, inner}), true);
  tabs_.put({rim, top, width - 2 * rim, tall});
  const int touch = look_.scaled(kTouchHeight), button = look_.scaled(kButtonWidth);
  if (roomy_) {
    const int y = bottom + (height - bottom - touch) / 2, x = width - 2 * grid - button;
    cancel_.put(turned({x, y, button, touch}), true);
    ok_.put(turned({x - 2 * grid - button, y, button, touch}), true);
  } else {
    const int wide = look_.scaled(kOkWidth);
    ok_.put(turned({width - top - wide, rim, wide, inner}), true);
    cancel_.put({}, false);
  }
  for (const auto& page : pages_)
    page->put({rim, top + tall, width - 2 * rim, std::max(0, bottom - top - tall)}, false);
}

void SheetWindow::paint(HDC given) {
  const BufferedPaint paint(window(), given);
  const LookColors& colors = look_.colors();
  const RECT whole = paint.room();
  const int line = std::max(1, look_.scaled(1)), side = look_.scaled(2 * kGrid), rim = edge();
  const int top = title_height();
  fill_room(paint.dc(), whole, rim > 0 ? colors.dim_text : colors.ground);
  fill_room(paint.dc(), shrunk(whole, rim, rim), colors.ground);
  fill_room(paint.dc(), {rim, rim, whole.right - rim, top}, colors.field);
  fill_room(paint.dc(), {rim, top - line, whole.right - rim, top}, colors.accent);
  TextPaint how;
  how.font = look_.font(static_cast<int>(kSheetHeading * look_.unit()), true);
  how.color = colors.accent;
  const int taken = top + (roomy_ ? 0 : look_.scaled(kOkWidth) + look_.scaled(kGrid));
  const RECT room{side, rim, whole.right - taken, top - line};
  paint_text(paint.dc(), turned_room(room, whole.right, look_.right_to_left()), title_, how, look_);
  if (!roomy_) return;
  const LONG y = whole.bottom - rim - buttons_height();
  fill_room(paint.dc(), {rim, y, whole.right - rim, y + line}, colors.line);
}

LRESULT SheetWindow::message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SETFOCUS:
      if (!pages_.empty()) SetFocus(pages_[static_cast<std::size_t>(tabs_.shown())]->window());
      return 0;
    default:
      return by_default(message, wparam, lparam);
  }
}

}  // namespace orvello
