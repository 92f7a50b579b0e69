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
  if (carried_) {  // the keys are not free
    if (message.wparam == kKeyEscape) pointer_.forget(), put_back();
    return true;
  }
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
      return ask_for_day_popup(c_.state.current), true;
    case kKeyMenu:
      return open_menu_by_keys(), true;
    case kKeyF10:
      if ((message.detail & kShiftHeld) == 0) return false;
      return open_menu_by_keys(), true;
    case u'V':
      if ((message.detail & kControlHeld) == 0) return false;
      return run_command(kCommandPaste, {}, selected_spot()), true;
    case u'G':
      if ((message.detail & kControlHeld) == 0) return false;
      if (const auto date = c_.operations.ask_date(c_.state.current, selected_spot().at))
        show_date(*date);
      return true;
    case kKeyEscape:
      if (habits.escape == 0) return false;
      return c_.commands.send_command(habits.escape), true;
    default:
      return false;
  }
}

AppointmentOperations::Spot GridView::selected_spot() const {
  const GridPage* page = standing();
  const Rect cell = page ? page->place_of(c_.state.current) : Rect();
  return {c_.state.current, {cell.x, cell.bottom()}};
}

void GridView::open_menu_by_keys() {
  redraw_selection();  // with the focus on the day that it is about
  const AppointmentOperations::Spot spot = selected_spot();
  open_menu({GridTarget::Kind::day, 0, spot.day, {}}, spot.at);
}

void GridView::show_focus(bool shown) {
  if (std::exchange(focus_visible_, shown) != shown) redraw_selection();
}

GridTarget GridView::hit(Point point) const {
  const GridPage* page = standing();
  return page ? page->hit(point) : GridTarget();
}

bool GridView::on_pointer(const Message& message) {
  if (!page_) return false;
  const int months = page_->habits().months;
  switch (message.id) {
    case kMessageButtonDown:
      press(message);
      break;
    case kMessageMouseMove:
      move(message);
      break;
    case kMessageButtonUp:
      release(message);
      break;
    case kMessageMouseWheel:
      step_months(-months * message.detail);
      break;
    case kMessageMouseSideWheel:
      step_months(months * message.detail);
      break;
    case kMessageContextMenu:
      open_menu(hit(message.point), message.point);
      break;
    default:
      return false;
  }
  return true;
}

void GridView::press(const Message& message) {
  put_back();  // of a press whose end was lost
  if (std::exchange(focus_visible_, false)) redraw_selection();
  hover(message);
  act(pointer_.press(message.point, hit(message.point)));
}

void GridView::move(const Message& message) {
  const bool lost = message.wparam == 0 && pointer_.is_down();
  if (lost) {
    pointer_.forget();
    put_back();
    mark({});
  }
  hover(message);
  act(pointer_.move(message.point));
}

void GridView::release(const Message& message) {
  c_.host.window.stop_timer(kTimerHold);
  hide_label();
  mark({});
  act(pointer_.release(message.point, hit(message.point)));
}

void GridView::on_hold() {
  c_.host.window.stop_timer(kTimerHold);
  act(pointer_.hold(page_ && c_.host.window.pen_is_down() && c_.commands.is_free()));
}

void GridView::slide(Point at) {
  const GridTarget under = hit(at);
  mark(under.kind == GridTarget::Kind::day ? under.date : MonthDayYear());
}

void GridView::act(const GridPointer::Action& action) {
  using Kind = GridPointer::Action::Kind;
  switch (action.kind) {
    case Kind::none:
    case Kind::end_slide:
      break;
    case Kind::start_hold:
      c_.host.window.start_timer(kTimerHold, kHoldMilliseconds);
      if (!page_->habits().hold_opens_day) mark(action.date);
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
    case Kind::drop:
      put_back();
      [[fallthrough]];
    case Kind::turn:
      step_months(page_->habits().months * action.value);
      break;
    case Kind::open_day:
      c_.commands.show_day(action.date, action.item);
      break;
    case Kind::popup:
      ask_for_day_popup(action.date);
      break;
    case Kind::slide:
      slide(action.point);
      break;
    case Kind::carry:
      take(action.item, action.date, action.point);
      break;
    case Kind::carry_on:
      carry_on(action.point);
      break;
    case Kind::let_go:
      if (let_go(action.point)) finish_carrying();
      break;
  }
}

}  // namespace orvello
