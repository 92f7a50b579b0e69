// How a page of notes lies in its view.
#include <algorithm>
#include <cmath>

#include "hosts/win32/ink_overlay.h"
#include "hosts/win32/notes_window.h"
#include "hosts/win32/painting.h"

namespace orvello {
namespace {

constexpr int kPageEdge = 2 * kGrid;  // design units, as the following
constexpr int kNotesWheelLine = 5 * kGrid;

}  // namespace

void NotesWindow::put(const Rect& place) {
  FormControl::put(place);
  lay_out();
}

void NotesWindow::show(bool shown) {
  if (!shown) drawing_.reset();
  FormControl::show(shown);
}

Rect NotesWindow::room() const {
  RECT client{};
  GetClientRect(window(), &client);
  const int edge = std::max(1, look().scaled(2));
  return Rect{0, 0, static_cast<int>(client.right), static_cast<int>(client.bottom)}.inset(edge,
                                                                                           edge);
}

int NotesWindow::text_height() const {
  const int first = edit_.place_of(0).y, last = edit_.place_of(text_.size()).y;
  TEXTMETRICW metrics{};
  const MeasuringDc measuring(look().font(letters().height, false));
  GetTextMetricsW(measuring.dc(), &metrics);
  return last - first + static_cast<int>(metrics.tmHeight);
}

// Text wraps at the view's width, or at that of the page; what goes farther, to the right or down,
// can be scrolled to. The bar takes its room before the first stroke: text must not wrap anew under
// it.
void NotesWindow::lay_out() {
  if (!edit_.window()) return;
  const Rect all = room();
  const double unit = look().unit();
  const PagePoint extent = extent_of(*now_.ink);
  const int edge = look().scaled(kPageEdge), bar = look().scaled(kScrollBarWidth);
  const bool drawn = tool_ != NotesTool::text || now_.width > 0;
  const bool was_setting = std::exchange(setting_, true);
  for (int pass = 0; pass < 2; ++pass) {
    const int width = std::max(1, all.width - (bar_ || drawn ? bar : 0));
    wrap_ = now_.width > 0 ? look().scaled(now_.width) : width;
    page_.width = std::max({width, wrap_, static_cast<int>(extent.x * unit) + edge});
    const int below = page_.width > width ? bar : 0;
    view_size_ = {width, std::max(1, all.height - below)};
    SetWindowPos(edit_.window(), nullptr, 0, 0, std::max(1, wrap_ - 2 * edge), view_size_.height,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    const int room_to_go_on = tool_ == NotesTool::pen ? view_size_.height / 2 : 0;
    const int ink = static_cast<int>(extent.y * unit) + room_to_go_on;
    page_.height = std::max(edge + text_height(), ink) + edge;
    const bool wanted = page_.height > view_size_.height;
    if (wanted == bar_) break;
    bar_ = wanted;
    if (drawn) break;
  }
  setting_ = was_setting;
  SetWindowPos(view_.window(), nullptr, all.x, all.y, view_size_.width, view_size_.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
  scroll_to(left_, top_);
}

void NotesWindow::scroll_to(int left, int top) {
  left_ = std::clamp(left, 0, std::max(0, page_.width - view_size_.width));
  top_ = std::clamp(top, 0, std::max(0, page_.height - view_size_.height));
  place_page();
}

// The edit scrolls its text as far as that goes; before and behind that it is moved as a whole.
void NotesWindow::place_page() {
  const int edge = look().scaled(kPageEdge);
  const int most = std::max(0, text_height() - view_size_.height);
  const int inside = std::clamp(top_ - edge, 0, most);
  const bool was_setting = std::exchange(setting_, true);
  edit_.scroll_to(inside);
  setting_ = was_setting;
  SetWindowPos(edit_.window(), nullptr, edge - left_, edge - top_ + inside, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
  const Rect all = room();
  const int bar = look().scaled(kScrollBarWidth);
  down_.put({all.x + view_size_.width, all.y, bar, view_size_.height}, page_.height,
            view_size_.height, top_);
  sideways_.put({all.x, all.y + view_size_.height, view_size_.width, bar}, page_.width,
                view_size_.width, left_);
  RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

// After the edit may have scrolled to its caret, or the caret stands where the edit is moved away.
void NotesWindow::follow_edit() {
  const int edge = look().scaled(kPageEdge);
  int top = top_, left = left_;
  const int most = std::max(0, text_height() - view_size_.height);
  const int inside = edit_.scrolled();
  if (inside != std::clamp(top_ - edge, 0, most)) top = inside == 0 ? 0 : inside + edge;
  const Point caret = edit_.place_of(edit_.selection().end);
  const int y = edge + caret.y + inside, line = letters().height * 3 / 2, x = edge + caret.x;
  if (y < top) top = y;
  if (y + line > top + view_size_.height) top = y + line - view_size_.height;
  if (x < left) left = x;
  if (x > left + view_size_.width - edge) left = x - view_size_.width + edge;
  if (top != top_ || left != left_) scroll_to(left, top);
}

bool NotesWindow::turn_wheel(int delta, bool sideways) {
  if (sink().covered()) return false;
  const int pixels = -delta * 3 * look().scaled(kNotesWheelLine) / WHEEL_DELTA;
  if (sideways) return scroll_to(left_ - pixels, top_), true;
  if (page_.height <= view_size_.height) return sink().scroll_form(pixels), false;
  scroll_to(left_, top_ + pixels);
  return true;
}

void NotesWindow::paint_edge() {
  PAINTSTRUCT painting{};
  const HDC screen = BeginPaint(window(), &painting);
  RECT client{};
  GetClientRect(window(), &client);
  const LookColors& colors = look().colors();
  const bool focused = GetFocus() == edit_.window();
  FillRect(screen, &client, look().brush(IsWindowEnabled(window()) ? colors.field : colors.ground));
  const HBRUSH brush = look().brush(focused ? colors.accent : colors.edge);
  const int width = focused ? room().x : std::max(1, look().scaled(1));
  for (int i = 0; i < width; ++i) {
    FrameRect(screen, &client, brush);
    InflateRect(&client, -1, -1);
  }
  EndPaint(window(), &painting);
}

PagePoint NotesWindow::on_page(HWND from, POINT at) const {
  MapWindowPoints(from, view_.window(), &at, 1);
  return {(static_cast<double>(at.x) + left_) / look().unit(),
          (static_cast<double>(at.y) + top_) / look().unit()};
}

void NotesWindow::draw_ink(HWND on, HRGN region) const {
  if (now_.ink->empty() && !drawing_) return;
  POINT corner{-left_, -top_};
  MapWindowPoints(view_.window(), on, &corner, 1);
  draw_over(on, region,
            {*now_.ink,
             drawing_ ? &*drawing_ : nullptr,
             {static_cast<double>(corner.x), static_cast<double>(corner.y)},
             look().unit(),
             look().colors().field});
}

}  // namespace orvello
