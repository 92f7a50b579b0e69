#include "hosts/win32/report_window.h"

#include <oleacc.h>

#include <cmath>

#include "draw/mirrored.h"
#include "hosts/shared/spoken_names.h"
#include "hosts/win32/form_paint.h"

namespace orvello {
namespace {

constexpr wchar_t kReportClass[] = L"OrvelloReport";
constexpr UINT_PTR kGlideTimer = 1;
constexpr UINT kPressRow = WM_APP + 1;  // a screen reader's, posted
constexpr int kReportMark = 14;         // design units
constexpr int kWheelLine = 5 * kGrid;

// What a turn of the wheel scrolls by, in lines; negative: by pages.
int wheel_lines(bool sideways) {
  UINT lines = 3;
  SystemParametersInfoW(sideways ? SPI_GETWHEELSCROLLCHARS : SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
  return lines == WHEEL_PAGESCROLL ? -1 : static_cast<int>(lines);
}

}  // namespace

ReportWindow::ReportWindow(ControlTemplate made, const FormLook& look, const ControlSink& sink)
    : PointedControl(std::move(made), look, sink),
      down_(look),
      sideways_(look, false),
      motion_([this](double pixels) { return scroll_on(pixels); }) {}

bool ReportWindow::create(HWND parent) {
  Creation creation;
  creation.window_class = kReportClass;
  creation.style = WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
  creation.place = {};
  creation.parent = parent;
  creation.id = id();
  if (!create_own(creation) || !down_.create(window()) || !sideways_.create(window())) return false;
  down_.moved = [this](int position) {
    end_glide();
    scroll_to(position);
  };
  sideways_.moved = [this](int position) {
    pane_.set_left(look().right_to_left() ? pane_.farthest() - position : position);
    place_bars();
    invalidate();
  };
  look_changed();
  return true;
}

void ReportWindow::put(const Rect& place) {
  FormControl::put(place);
  lay_out();
}

void ReportWindow::look_changed() {
  const LookColors& colors = look().colors();
  pane_.set_look({look().scaled(kScrollBarWidth), look().scaled(kReportMark),
                  look().scaled(1.5 * kGrid), look().scaled(kGrid), std::max(1, look().scaled(1)),
                  colors.ground, colors.dim_text, colors.line});
  surface_.reset();
  lay_out();
}

// One that stands at the form's edge has no edge of its own.
int ReportWindow::border() const {
  return made().place.x <= 0 ? 0 : std::max(1, look().scaled(kFieldEdge));
}

Rect ReportWindow::room() const {
  const Size size = client_size();
  return Rect{0, 0, size.width, size.height}.inset(border(), border());
}

Rect ReportWindow::turned(const Rect& rect) const {
  const Rect all = room();
  return (look().right_to_left() ? mirrored(rect, all.width) : rect).moved(all.x, all.y);
}

Canvas& ReportWindow::measuring() {
  const Rect all = room();
  const Size wanted{std::max(0, all.width), std::max(0, all.height)};
  if (!surface_ || surface_size_ != wanted) {
    surface_ =
        std::make_unique<Win32Surface>(look().canvas_fonts(), wanted, look().right_to_left());
    surface_size_ = wanted;
  }
  return surface_->canvas();
}

void ReportWindow::lay_out() {
  const Rect all = room();
  pane_.set_room({std::max(0, all.width), std::max(0, all.height)});
  place_bars();
  invalidate();
}

void ReportWindow::place_bars() {
  if (!down_.window() || !sideways_.window()) return;
  const Rect rows = pane_.view(), all = room();
  const Rect beside{rows.right(), 0, all.width - rows.width, rows.bottom()};
  const Rect below{0, rows.bottom(), rows.width, all.height - rows.bottom()};
  down_.put(beside.empty() ? Rect{} : turned(beside), pane_.rows_height(), rows.height,
            pane_.top());
  const int left = look().right_to_left() ? pane_.farthest() - pane_.left() : pane_.left();
  sideways_.put(below.empty() || !pane_.scrolls_sideways() ? Rect{} : turned(below),
                pane_.whole_width(), rows.width, left);
}

void ReportWindow::set_content(ReportContent content) {
  end_glide();
  selected_.clear();
  scroll_rest_ = 0;
  pane_.set_content(std::move(content), measuring());
  lay_out();
  AccessibleWindow::tell(window(), EVENT_OBJECT_REORDER);
}

ReportPlace ReportWindow::place() const {
  return {client_size(), look().scaled(kScrollBarWidth), border()};
}

void ReportWindow::select(const std::vector<int>& rows) {
  pane_.select(rows);
  selected_.clear();
  for (const int row : rows)
    if (pane_.has_row(row)) selected_.push_back(row);
  invalidate();
  if (GetFocus() == window() && !selected_.empty())
    AccessibleWindow::tell(window(), EVENT_OBJECT_FOCUS, selected_.front());
}

void ReportWindow::set_mark(int row, ReportMark mark) {
  pane_.set_mark(row, mark);
  invalidate();
  if (pane_.has_row(row)) AccessibleWindow::tell(window(), EVENT_OBJECT_STATECHANGE, row);
}

Rect ReportWindow::row_place(int row) const {
  const Rect rect = pane_.row_place(row);
  if (rect.empty()) return {};
  return place_in_main_window(window(), turned(rect), look().right_to_left());
}

int ReportWindow::row_at(Point point) const {
  return pane_.row_at({point.x - border(), point.y - border()});
}

void ReportWindow::scroll_to(int top) {
  pane_.set_top(top);
  place_bars();
  invalidate();
}

bool ReportWindow::scroll_on(double pixels) {
  scroll_rest_ += pixels;
  const double whole = std::trunc(scroll_rest_);
  scroll_rest_ -= whole;
  const bool went = pane_.set_top(pane_.top() + static_cast<int>(whole));
  place_bars();
  invalidate();
  return went;
}

void ReportWindow::scroll_by(int pixels) {
  end_glide();
  scroll_on(pixels);
}

void ReportWindow::show_row(int row) {
  end_glide();
  scroll_to(pane_.top_for(row));
}

void ReportWindow::glide(int pixels_per_second) {
  end_glide();
  if (!motion_.start(pixels_per_second)) return;
  last_step_ = GetTickCount64();
  SetTimer(window(), kGlideTimer, kGlideStepMilliseconds, nullptr);
}

void ReportWindow::end_glide() {
  motion_.end();
  KillTimer(window(), kGlideTimer);
}

void ReportWindow::glide_on() {
  const ULONGLONG now = GetTickCount64();
  const double seconds = static_cast<double>(now - last_step_) / 1000;
  last_step_ = now;
  if (!motion_.step(seconds)) end_glide();
}

bool ReportWindow::takes_press(Point client) const {
  Point inside{client.x - border(), client.y - border()};
  if (look().right_to_left()) inside = mirrored(inside, room().width);
  return pane_.view().contains(inside);
}

// It stands, and has ended only when the press has been told.
void ReportWindow::before_press() {
  use_keys(false);
  KillTimer(window(), kGlideTimer);
}

void ReportWindow::after_press() { end_glide(); }

bool ReportWindow::scrolls_with(int delta, bool sideways) {
  const int most = sideways ? pane_.farthest() : pane_.lowest();
  if (most == 0) return false;
  end_glide();
  const int lines = wheel_lines(sideways);
  const int notch = lines < 0 ? pane_.view().height : lines * look().scaled(kWheelLine);
  const double pixels = static_cast<double>(delta) * notch / WHEEL_DELTA;
  if (!sideways) return scroll_on(-pixels), true;
  pane_.set_left(pane_.left() + static_cast<int>(look().right_to_left() ? -pixels : pixels));
  place_bars();
  invalidate();
  return true;
}

// A list with an edge of its own shows the focus there; a pen needs no frame.
void ReportWindow::use_keys(bool keys) {
  if (keys_used_ == keys) return;
  keys_used_ = keys;
  invalidate();
}

void ReportWindow::paint_edge(HDC screen) const {
  const bool focused = GetFocus() == window();
  if (border() == 0 && !(focused && keys_used_)) return;
  const Size size = client_size();
  const LookColors& colors = look().colors();
  const auto ring = [&](int width, Color color) {
    const RECT edges[] = {{0, 0, size.width, width},
                          {0, size.height - width, size.width, size.height},
                          {0, 0, width, size.height},
                          {size.width - width, 0, size.width, size.height}};
    for (const RECT& edge : edges) FillRect(screen, &edge, look().brush(color));
  };
  if (focused) return ring(std::max(1, look().scaled(kFieldEdge)), colors.accent);
  ring(border(), colors.field);
  ring(std::max(1, look().scaled(1)), colors.edge);
}

void ReportWindow::paint() {
  PAINTSTRUCT painting{};
  const HDC screen = BeginPaint(window(), &painting);
  const Rect all = room();
  Canvas& canvas = measuring();
  canvas.set_clip(std::nullopt);
  canvas.fill_rect({0, 0, all.width, all.height}, look().colors().ground);  // the bars' corner
  pane_.paint(canvas);
  surface_->publish();
  surface_->paint(screen, {all.width, all.height}, {all.x, all.y});
  paint_edge(screen);
  EndPaint(window(), &painting);
}

LRESULT ReportWindow::control_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SIZE:
      lay_out();
      return 0;
    case WM_TIMER:
      if (wparam == kGlideTimer) glide_on();
      return 0;
    case WM_SETFOCUS:
      use_keys(keys_used_ || is_key_held(VK_TAB));
      AccessibleWindow::tell(window(), EVENT_OBJECT_FOCUS, pane_.first_selected());
      [[fallthrough]];
    case WM_KILLFOCUS:
      invalidate();
      return 0;
    case WM_GETOBJECT:
      if (const auto answer = accessible_.answer(window(), wparam, lparam)) return *answer;
      break;
    case kPressRow: {
      const auto row = static_cast<int>(wparam);
      if (!pane_.has_row(row)) return 0;
      show_row(row);
      const Rect seen = intersection(pane_.row_place(row), pane_.view());
      tap(seen.moved(border(), border()).center());
      return 0;
    }
    default:
      break;
  }
  if (const auto taken = take_input(message, wparam, lparam)) return *taken;
  return by_default(message, wparam, lparam);
}

Rect ReportWindow::row_on_screen(int row) const {
  return place_on_screen(window(), turned(pane_.row_place(row)));
}

AccessiblePart ReportWindow::accessible_self() {
  AccessiblePart self;
  self.name = name();
  const Size size = client_size();
  self.place = place_on_screen(window(), {0, 0, size.width, size.height});
  self.role = ROLE_SYSTEM_LIST;
  self.state = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_MULTISELECTABLE;
  if (GetFocus() == window()) self.state |= STATE_SYSTEM_FOCUSED;
  if (!IsWindowEnabled(window())) self.state |= STATE_SYSTEM_UNAVAILABLE;
  return self;
}

AccessiblePart ReportWindow::accessible_part(int part) {
  const ReportRow& row = pane_.content().rows[static_cast<std::size_t>(part)];
  AccessiblePart told;
  told.name = spoken_row(row);
  told.place = row_on_screen(part);
  told.role = row.mark == ReportMark::none ? ROLE_SYSTEM_LISTITEM : ROLE_SYSTEM_CHECKBUTTON;
  told.state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
  if (row.mark == ReportMark::set) told.state |= STATE_SYSTEM_CHECKED;
  if (pane_.is_selected(part)) told.state |= STATE_SYSTEM_SELECTED;
  if (part == pane_.first_selected() && GetFocus() == window()) told.state |= STATE_SYSTEM_FOCUSED;
  if (intersection(pane_.row_place(part), pane_.view()).empty())
    told.state |= STATE_SYSTEM_OFFSCREEN;
  told.action = u"Press";
  return told;
}

int ReportWindow::accessible_at(Point screen) {
  const Rect all = place_on_screen(window(), room());
  Point inside{screen.x - all.x, screen.y - all.y};
  if (look().right_to_left()) inside = mirrored(inside, all.width);
  return pane_.row_at(inside);
}

void ReportWindow::press_accessible(int part) {
  if (IsWindowEnabled(window())) PostMessageW(window(), kPressRow, static_cast<WPARAM>(part), 0);
}

}  // namespace orvello
