// Snapshots for the drawing worker, and the pen and keys of the Month view.

#include <algorithm>

#include "app/application.h"
#include "app/messages.h"
#include "calendar/month_grid_range.h"
#include "resources/ids.h"
#include "views/month_paint.h"
#include "views/month_snapshot.h"

namespace orvello {
namespace {

// The device's calendar dates; a person who holds Page Down stops there.
constexpr int kFirstYear = 1601, kLastYear = 4499;

}  // namespace

void Application::request_redraw() {
  if (!started_) return;
  ++redraw_requests_;
  host_.window.show_wait_cursor();
  if (state_.view_mode == ViewMode::month) {
    worker_.request(month_drawing());
  } else if (state_.view_mode == ViewMode::year) {
    worker_.request(year_drawing());
  }
  host_.window.hide_wait_cursor();
}

ViewDrawing Application::month_drawing() {
  auto snapshot = std::make_shared<const MonthSnapshot>(
      take_month_snapshot(session_, settings_, state_.layout, state_.current.month,
                          state_.current.year, state_.today, state_.platform_generation));
  month_layout_ = MonthLayout(*snapshot);
  month_pointer_.set_view(state_.layout.work.width, state_.dpi_x);
  return [snapshot](Canvas& canvas, const std::atomic<int>& draw_state,
                    const std::function<void()>& progress) {
    return DrawMonthView(*snapshot, canvas, draw_state, progress);
  };
}

// The year and a line that says what is to come.
ViewDrawing Application::year_drawing() {
  const ScreenLayout layout = state_.layout;
  const int year = state_.current.year;
  const ItemColors colors = settings_.item_colors;
  const Text line = load_string(StringId::year_view_empty, language());
  return [=](Canvas& canvas, const std::atomic<int>&, const std::function<void()>&) {
    const auto color = [&](ColorSlot slot) { return colors[static_cast<std::size_t>(slot)]; };
    const int band = layout.fonts.bold11.height * 23 / 20 + 6 * layout.scale;
    const Rect all{0, 0, layout.work.width, layout.work.height};
    canvas.fill_rect(all, kWhite);
    const Rect header{0, 0, all.width, band};
    canvas.fill_rect(header, color(ColorSlot::year_header_background));
    canvas.draw_text(format(u"%d", year), header,
                     {layout.fonts.bold11, color(ColorSlot::year_header_text), Align::center});
    TextStyle style{layout.fonts.normal9, color(ColorSlot::year_day_text), Align::center};
    style.word_break = true;
    canvas.draw_text(line, Rect{0, band, all.width, all.height - band}.inset(8 * layout.scale, 0),
                     style);
    return true;
  };
}

void Application::step_months(int months) {
  int index = state_.current.year * 12 + state_.current.month - 1 + months;
  index = std::clamp(index, kFirstYear * 12, kLastYear * 12 + 11);
  MonthDayYear date{index % 12 + 1, state_.current.day, index / 12};
  // The four-year rule may give February a day more than it has; the first of March is not wanted.
  date.day = std::min(date.day, DaysInMonth(date.month - 1, date.year));
  if (date == state_.current) return;
  set_current_date(date);
  request_redraw();
}

bool Application::on_key_down(const Message& message) {
  if (state_.view_mode != ViewMode::month && state_.view_mode != ViewMode::year) return false;
  const bool year = state_.view_mode == ViewMode::year;
  switch (message.wparam) {
    case kKeyLeft:
    case kKeyPageUp:
      step_months(year ? -12 : -1);
      return true;
    case kKeyRight:
    case kKeyPageDown:
      step_months(year ? 12 : 1);
      return true;
    case kKeyUp:
      step_months(-12);
      return true;
    case kKeyDown:
      step_months(12);
      return true;
    case kKeyHome:
      set_current_date(state_.today);
      request_redraw();
      return true;
    default:
      return false;
  }
}

MonthTarget Application::month_target(Point point) const {
  const MonthHit hit = hit_month(month_layout_, point);
  using Kind = MonthTarget::Kind;
  switch (hit.kind) {
    case MonthHit::Kind::month:
      return {Kind::strip_month, hit.month, {}};
    case MonthHit::Kind::previous_year:
      return {Kind::previous_year, 0, {}};
    case MonthHit::Kind::next_year:
      return {Kind::next_year, 0, {}};
    case MonthHit::Kind::title:
      return {Kind::title, 0, {}};
    case MonthHit::Kind::day:
      return {Kind::day, 0, hit.date};
    case MonthHit::Kind::none:
      break;
  }
  return {};
}

bool Application::on_pointer(const Message& message) {
  if (state_.view_mode == ViewMode::year && message.id == kMessageMouseWheel) {
    step_months(-12 * message.detail);
    return true;
  }
  if (state_.view_mode != ViewMode::month) return false;
  switch (message.id) {
    case kMessageButtonDown:
      month_action(month_pointer_.press(message.point, month_target(message.point)));
      break;
    case kMessageMouseMove:
      month_action(month_pointer_.move(message.point));
      break;
    case kMessageButtonUp:
      host_.window.stop_timer(kTimerHold);
      month_action(month_pointer_.release(message.point, month_target(message.point)));
      break;
    case kMessageMouseWheel:
      step_months(-message.detail);
      break;
    default:
      return false;
  }
  return true;
}

void Application::month_action(const MonthPointer::Action& action) {
  using Kind = MonthPointer::Action::Kind;
  switch (action.kind) {
    case Kind::none:
      break;
    case Kind::start_hold:
      host_.window.start_timer(kTimerHold, kHoldMilliseconds);
      break;
    case Kind::stop_hold:
      host_.window.stop_timer(kTimerHold);
      break;
    case Kind::show_month:
      step_months(action.value - state_.current.month);
      break;
    case Kind::step_year:
      step_months(12 * action.value);
      break;
    case Kind::show_today:
      set_current_date(state_.today);
      request_redraw();
      break;
    case Kind::turn:
      step_months(action.value);
      break;
    case Kind::open_day:
      open_day(day_parameter(action.date, state_.current.month));
      break;
    case Kind::popup:
      ask_for_day_popup(action.date);
      break;
  }
}

}  // namespace orvello
