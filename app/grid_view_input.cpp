// The pen and the keys on the Month and Year views.

#include <algorithm>
#include <utility>

#include "app/grid_view.h"
#include "app/own_messages.h"
#include "ports/messages.h"
#include "resources/ids.h"

namespace orvello {

// Only what is selected changes as long as the same page shows the day.
void GridView::show_date(const MonthDayYear& date) {
  if (date.year < kFirstYear || date.year > kLastYear) return;
  const bool same_page = page_->same_page(c_.state.current, date);
  c_.commands.set_current_date(date);
  hide_label();
  if (same_page)
    redraw_selection();
  else
    request_redraw();
}

void GridView::step_days(int days) {
  MonthDayYear date = c_.state.current;
  AddDays(date.month, date.day, date.year, days);
  show_date(date);
}

void GridView::step_months(int months) {
  const MonthDayYear& shown = c_.state.current;
  int index = shown.year * 12 + shown.month - 1 + months;
  index = std::clamp(index, kFirstYear * 12, kLastYear * 12 + 11);
  MonthDayYear date{index % 12 + 1, shown.day, index / 12};
  // The four-year rule may give February a day more than it has; the first of March is not wanted.
  date.day = std::min(date.day, DaysInMonth(date.month - 1, date.year));
  if (date != shown) show_date(date);
}

bool GridView::on_key(const Message& message) {
  if (!page_) return false;
  const bool was_visible = std::exchange(focus_visible_, true);
  if (key(message)) return true;
  focus_visible_ = was_visible;
  return false;
}

bool GridView::key(const Message& message) {
  const GridHabits& habits = page_->habits();
  const int page = message.detail != 0 ? 12 : habits.months;
  switch (message.wparam) {
    case kKeyLeft:
      return step_days(-1), true;
    case kKeyRight:
      return step_days(1), true;
    case kKeyUp:
      return step_days(-7), true;
    case kKeyDown:
      return step_days(7), true;
    case kKeyPageUp:
      return step_months(-page), true;
    case kKeyPageDown:
      return step_months(page), true;
    case kKeyHome:
      return show_date(c_.state.today), true;
    case kKeyReturn:
      return c_.commands.show_day(c_.state.current), true;
    case kKeySpace:
    case kKeyMenu:
      return ask_for_day_popup(c_.state.current), true;
    case kKeyEscape:
      if (habits.escape == 0) return false;
      return c_.commands.send_command(habits.escape), true;
    default:
      return false;
  }
}

GridTarget GridView::hit(Point point) const {
  const GridPage* page = standing();
  return page ? page->hit(point) : GridTarget();
}

bool GridView::on_pointer(const Message& message) {
  if (!page_) return false;
  switch (message.id) {
    case kMessageButtonDown:
      if (std::exchange(focus_visible_, false)) redraw_selection();
      hover(message);
      act(pointer_.press(message.point, hit(message.point)));
      break;
    case kMessageMouseMove:
      hover(message);
      act(pointer_.move(message.point));
      break;
    case kMessageButtonUp:
      c_.host.window.stop_timer(kTimerHold);
      hide_label();
      act(pointer_.release(message.point, hit(message.point)));
      break;
    case kMessageMouseWheel:
      step_months(-page_->habits().months * message.detail);
      break;
    default:
      return false;
  }
  return true;
}

void GridView::on_hold() {
  c_.host.window.stop_timer(kTimerHold);
  act(pointer_.hold(page_ && c_.host.window.pen_is_down() && c_.commands.is_free()));
}

void GridView::act(const GridPointer::Action& action) {
  using Kind = GridPointer::Action::Kind;
  switch (action.kind) {
    case Kind::none:
      break;
    case Kind::start_hold:
      if (page_->habits().hold_opens_day) c_.host.window.start_timer(kTimerHold, kHoldMilliseconds);
      break;
    case Kind::stop_hold:
      c_.host.window.stop_timer(kTimerHold);
      break;
    case Kind::show_month:
      step_months(action.value - c_.state.current.month);
      c_.commands.send_command(kCommandMonthView);
      break;
    case Kind::step_year:
      step_months(12 * action.value);
      break;
    case Kind::show_today:
      show_date(c_.state.today);
      break;
    case Kind::turn:
      step_months(page_->habits().months * action.value);
      break;
    case Kind::open_day:
      c_.commands.show_day(action.date);
      break;
    case Kind::popup:
      ask_for_day_popup(action.date);
      break;
  }
}

}  // namespace orvello
