// The application's side of the day list and the day popup.

#include "app/application.h"
#include "app/messages.h"
#include "calendar/date_pictures.h"
#include "resources/dialogs.h"
#include "settings/profiles.h"

namespace orvello {

void Application::open_day_dialog() {
  day_view_ = nullptr;
  day_view_ = host_.dialogs.open_modeless(day_view_dialog(language()), day_procedure_);
}

void Application::close_day_dialog() { day_view_ = nullptr; }

void Application::show_day() {
  if (day_view_) show_day_content(*day_view_, day_content());
}

DayContent Application::day_content() { return content_of(state_.current); }

DayContent Application::content_of(const MonthDayYear& date) {
  DayContent content;
  Text picture;
  LongDatePicture(settings_.dayviewheaderformat, picture);
  const std::int32_t day = day_number(date.year, date.month, date.day);
  content.date = cut(FormatDatePicture(picture, civil_from_day_number(day), settings_.locale), 150);
  const auto items = session_.CalendarItems();
  content.rows = compact_agenda(
      items.get(), day, settings_.timeformat != 0,
      [this](TextView categories) { return profileAllowsCategory(settings_, categories); });
  return content;
}

void Application::step_days(int days) {
  MonthDayYear date = state_.current;
  AddDays(date.month, date.day, date.year, days);
  set_current_date(date);
  show_day();
}

void Application::go_to_today() {
  set_current_date(TodayTriple(host_.clock.local_time()));
  show_day();
}

void Application::ask_for_day_popup(const MonthDayYear& date) {
  DayPopupProcedure procedure(content_of(date));
  host_.dialogs.run_modal(day_popup_dialog(language()), procedure);
}

}  // namespace orvello
