// The pen and the keys on the Month and Year views.

#include <algorithm>

#include "app/application.h"
#include "app/day_popups.h"
#include "app/own_messages.h"
#include "ports/messages.h"
#include "resources/dialog_templates.h"
#include "resources/ids.h"

namespace orvello {
namespace {

// A MonthHit or a YearHit: both views have the same kinds of targets.
template <typename Hit>
GridTarget target_of(const Hit& hit) {
  using Kind = GridTarget::Kind;
  switch (hit.kind) {
    case Hit::Kind::month:
      return {Kind::month, hit.month, {}};
    case Hit::Kind::previous_year:
      return {Kind::previous_year, 0, {}};
    case Hit::Kind::next_year:
      return {Kind::next_year, 0, {}};
    case Hit::Kind::title:
      return {Kind::title, 0, {}};
    case Hit::Kind::day:
      return {Kind::day, 0, hit.date};
    case Hit::Kind::none:
      break;
  }
  return {};
}

}  // namespace

void Application::set_current_date(const MonthDayYear& date) {
  state_.current = date;
  settings_.shown = date;
}

// Only what is selected changes as long as the same page shows the day.
void Application::show_date(const MonthDayYear& date) {
  if (date.year < kFirstYear || date.year > kLastYear) return;
  const MonthDayYear before = state_.current;
  set_current_date(date);
  const bool same_page = date.year == before.year &&
                         (state_.view_mode == ViewMode::year || date.month == before.month);
  hide_hover_label();
  if (same_page)
    redraw_selection();
  else
    request_redraw();
}

void Application::step_days(int days) {
  MonthDayYear date = state_.current;
  AddDays(date.month, date.day, date.year, days);
  show_date(date);
}

void Application::step_months(int months) {
  int index = state_.current.year * 12 + state_.current.month - 1 + months;
  index = std::clamp(index, kFirstYear * 12, kLastYear * 12 + 11);
  MonthDayYear date{index % 12 + 1, state_.current.day, index / 12};
  // The four-year rule may give February a day more than it has; the first of March is not wanted.
  date.day = std::min(date.day, DaysInMonth(date.month - 1, date.year));
  if (date != state_.current) show_date(date);
}

bool Application::on_key_down(const Message& message) {
  const bool held = (message.detail & kControlHeld) != 0;
  if (held && message.wparam >= u'1' && message.wparam <= u'3')
    return enter_view(static_cast<int>(message.wparam - u'1'));
  if (state_.view_mode != ViewMode::month && state_.view_mode != ViewMode::year) return false;
  const bool was_visible = focus_visible_;
  focus_visible_ = true;
  if (grid_key(message)) return true;
  focus_visible_ = was_visible;
  return false;
}

bool Application::grid_key(const Message& message) {
  const bool year = state_.view_mode == ViewMode::year;
  const int page = year || message.detail != 0 ? 12 : 1;
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
      return show_date(state_.today), true;
    case kKeyReturn:
      return show_day(state_.current), true;
    case kKeySpace:
    case kKeyMenu:
      return ask_for_day_popup(state_.current), true;
    case kKeyEscape:
      if (!year) return false;
      return month_view(), true;
    default:
      return false;
  }
}

GridTarget Application::grid_target(Point point) const {
  return state_.view_mode == ViewMode::year ? target_of(hit_year(year_layout_, point))
                                            : target_of(hit_month(month_layout_, point));
}

bool Application::on_pointer(const Message& message) {
  const bool year = state_.view_mode == ViewMode::year;
  if (!year && state_.view_mode != ViewMode::month) return false;
  switch (message.id) {
    case kMessageButtonDown:
      if (std::exchange(focus_visible_, false)) redraw_selection();
      hover(message);
      grid_action(grid_pointer_.press(message.point, grid_target(message.point)));
      break;
    case kMessageMouseMove:
      hover(message);
      grid_action(grid_pointer_.move(message.point));
      break;
    case kMessageButtonUp:
      host_.window.stop_timer(kTimerHold);
      hide_hover_label();
      grid_action(grid_pointer_.release(message.point, grid_target(message.point)));
      break;
    case kMessageMouseWheel:
      step_months(year ? -12 * message.detail : -message.detail);
      break;
    default:
      return false;
  }
  return true;
}

void Application::grid_action(const GridPointer::Action& action) {
  using Kind = GridPointer::Action::Kind;
  const bool year = state_.view_mode == ViewMode::year;
  switch (action.kind) {
    case Kind::none:
      break;
    case Kind::start_hold:
      if (!year) host_.window.start_timer(kTimerHold, kHoldMilliseconds);
      break;
    case Kind::stop_hold:
      host_.window.stop_timer(kTimerHold);
      break;
    case Kind::show_month:
      step_months(action.value - state_.current.month);
      if (year) send_command(kCommandMonthView);
      break;
    case Kind::step_year:
      step_months(12 * action.value);
      break;
    case Kind::show_today:
      show_date(state_.today);
      break;
    case Kind::turn:
      step_months(year ? 12 * action.value : action.value);
      break;
    case Kind::open_day:
      if (year)
        show_day(action.date);
      else
        open_day(day_parameter(action.date, state_.current.month));
      break;
    case Kind::popup:
      ask_for_day_popup(action.date);
      break;
  }
}

// A day that cannot be read has one row that says so.
std::vector<CompactRow> Application::compact_rows(const MonthDayYear& date) {
  const auto items = session_.CalendarItems();
  auto rows = compact_agenda(items.get(), WholeDayNumber(date.month, date.day, date.year),
                             settings_.timeformat != 0,
                             [this](TextView categories) { return passes_profile(categories); });
  if (rows) return std::move(*rows);
  note_read(ReadOutcome::kept);
  return {{load_string(StringId::unreadable, language()), {}, kUnreadableRow}};
}

Rect Application::day_place(const MonthDayYear& date) const {
  if (state_.view_mode == ViewMode::year) return cell_place(year_layout_, date);
  for (const MonthCell& cell : month_layout_.cells)
    if (cell.drawn && cell.date == date) return cell.box;
  return {};
}

void Application::ask_for_day_popup(const MonthDayYear& date) {
  hide_hover_label();
  DayPopupProcedure procedure({date_text(date, settings_.showdaylabel), compact_rows(date),
                               settings_, state_.layout, measuring_canvas()});
  DialogTemplate dialog = day_popup_dialog(language());
  dialog.place = procedure.place(day_place(date));
  if (host_.dialogs.run_modal(dialog, procedure) == kPopupOpenDay) show_day(date);
}

}  // namespace orvello
