#include "editor/recurrence_controls.h"

#include <algorithm>
#include <numeric>

#include "calendar/date_pictures.h"
#include "calendar/date_text.h"
#include "resources/recurrence_ids.h"

namespace orvello {
namespace {

template <typename Numbers>
std::vector<Text> number_rows(const Numbers& numbers) {
  std::vector<Text> rows;
  for (const int number : numbers) rows.push_back(format(u"%d", number));
  return rows;
}

std::vector<Text> days_up_to(int last) {
  std::vector<int> days(static_cast<std::size_t>(last));
  std::iota(days.begin(), days.end(), 1);
  return number_rows(days);
}

template <typename Names>
std::vector<Text> name_rows(const Names& names) {
  return {names.begin(), names.end()};
}

void show_rows(Dialog& dialog, int control, const std::vector<Text>& rows, int selected) {
  dialog.choice(control)->set_rows(rows);
  dialog.choice(control)->select(selected);
}

void show_number(Dialog& dialog, int control, const std::vector<Text>& rows, int value) {
  dialog.choice(control)->set_rows(rows);
  dialog.set_text(control, format(u"%d", value));
}

std::vector<Text> day_kind_rows(const LocaleData& locale) {
  std::vector<Text> rows = name_rows(kDayClassNames);
  for (int day = 0; day < 7; ++day) rows.push_back(DayNameForWeekday(day, false, locale));
  return rows;
}

void show_date(Dialog& dialog, int control, CalendarDate date, const RecurrenceLooks& looks) {
  DateControl* picker = dialog.date(control);
  picker->set_calendar(looks.today, looks.monday_first);
  picker->set_picture(DatePickerPicture(looks.locale));
  picker->set_date(triple_of(date));
}

void show_short_pages(Dialog& dialog, const RecurrenceForm& form) {
  const std::vector<Text> counts = number_rows(kOfferedCounts);
  show_number(dialog, kControlDailyInterval, counts, form.daily_interval);
  dialog.set_checked(form.every_weekday ? kControlEveryWeekday : kControlEveryDays, true);
  show_number(dialog, kControlWeeklyInterval, counts, form.weekly_interval);
  for (int day = 0; day < 7; ++day)
    dialog.set_checked(kControlWeekdays[day], (form.weekdays >> day & 1) != 0);
}

void show_months_page(Dialog& dialog, const RecurrenceForm& form, const LocaleData& locale) {
  const std::vector<Text> months = number_rows(kOfferedMonths);
  show_number(dialog, kControlMonthDay, days_up_to(31), form.month_day);
  show_number(dialog, kControlMonthlyInterval, months, form.monthly_interval);
  show_rows(dialog, kControlMonthInstance, name_rows(kOrdinalWords), form.month_instance);
  show_rows(dialog, kControlMonthKind, day_kind_rows(locale), form.month_kind);
  show_number(dialog, kControlNthInterval, months, form.nth_interval);
  dialog.set_checked(form.month_nth ? kControlMonthNthChoice : kControlMonthDayChoice, true);
}

void show_years_page(Dialog& dialog, const RecurrenceForm& form, const LocaleData& locale) {
  MonthNames names;
  LoadMonthNames(names, locale);
  show_rows(dialog, kControlYearMonth, name_rows(names), form.year_month);
  show_year_days(dialog, form);
  show_rows(dialog, kControlYearInstance, name_rows(kOrdinalWords), form.year_instance);
  show_rows(dialog, kControlYearKind, day_kind_rows(locale), form.year_kind);
  show_rows(dialog, kControlNthMonth, name_rows(names), form.nth_month);
  dialog.set_checked(form.year_nth ? kControlYearNthChoice : kControlYearDayChoice, true);
  show_number(dialog, kControlYearlyInterval, number_rows(kOfferedCounts), form.yearly_interval);
  for (const int control : {kControlEveryYearsLabel, kControlYearlyInterval, kControlYearsLabel})
    dialog.show(control, form.yearly_interval > 1);
}

void show_range_step(Dialog& dialog, const RecurrenceForm& form, const RecurrenceLooks& looks) {
  show_date(dialog, kControlRangeStart, form.start_date, looks);
  show_date(dialog, kControlRangeEnd, form.end_date, looks);
  show_number(dialog, kControlCount, number_rows(kOfferedCounts), form.count);
  dialog.set_checked(form.end == SeriesEnd::none      ? kControlNoEnd
                     : form.end == SeriesEnd::by_date ? kControlEndBy
                                                      : kControlEndAfter,
                     true);
}

int typed_in(const Dialog& dialog, int control) { return typed_count(dialog.text(control)); }

int row_in(Dialog& dialog, int control) { return std::max(0, dialog.choice(control)->selected()); }

}  // namespace

void show_recurrence(Dialog& dialog, const RecurrenceForm& form, const RecurrenceLooks& looks) {
  dialog.list(kControlRecurrenceType)->set_rows(name_rows(kRecurrenceKinds));
  dialog.list(kControlRecurrenceType)->select({form.kind});
  for (const int control : {kControlTimesLabel, kControlStartTimeLabel, kControlEndTimeLabel,
                            kControlRecurrenceStartTime, kControlRecurrenceEndTime})
    dialog.enable(control, !form.all_day);
  show_short_pages(dialog, form);
  show_months_page(dialog, form, looks.locale);
  show_years_page(dialog, form, looks.locale);
  show_range_step(dialog, form, looks);
}

void show_year_days(Dialog& dialog, const RecurrenceForm& form) {
  show_number(dialog, kControlYearDay, days_up_to(longest_month(form.year_month + 1)),
              form.year_day);
}

void read_recurrence(Dialog& dialog, RecurrenceForm& form) {
  const std::vector<int> kind = dialog.list(kControlRecurrenceType)->selected();
  if (!kind.empty()) form.kind = kind.front();
  form.every_weekday = dialog.checked(kControlEveryWeekday);
  form.daily_interval = typed_in(dialog, kControlDailyInterval);
  form.weekly_interval = typed_in(dialog, kControlWeeklyInterval);
  form.month_nth = dialog.checked(kControlMonthNthChoice);
  form.month_day = typed_in(dialog, kControlMonthDay);
  form.monthly_interval = typed_in(dialog, kControlMonthlyInterval);
  form.month_instance = row_in(dialog, kControlMonthInstance);
  form.month_kind = row_in(dialog, kControlMonthKind);
  form.nth_interval = typed_in(dialog, kControlNthInterval);
  form.year_nth = dialog.checked(kControlYearNthChoice);
  form.year_month = row_in(dialog, kControlYearMonth);
  form.year_day = typed_in(dialog, kControlYearDay);
  form.year_instance = row_in(dialog, kControlYearInstance);
  form.year_kind = row_in(dialog, kControlYearKind);
  form.nth_month = row_in(dialog, kControlNthMonth);
  form.yearly_interval = typed_in(dialog, kControlYearlyInterval);
  form.end = dialog.checked(kControlNoEnd)   ? SeriesEnd::none
             : dialog.checked(kControlEndBy) ? SeriesEnd::by_date
                                             : SeriesEnd::by_count;
  form.count = typed_in(dialog, kControlCount);
  form.end_date = calendar_date_of(dialog.date(kControlRangeEnd)->date());
}

int radio_of(int field) {
  switch (field) {
    case kControlDailyInterval:
      return kControlEveryDays;
    case kControlMonthDay:
    case kControlMonthlyInterval:
      return kControlMonthDayChoice;
    case kControlMonthInstance:
    case kControlMonthKind:
    case kControlNthInterval:
      return kControlMonthNthChoice;
    case kControlYearMonth:
    case kControlYearDay:
      return kControlYearDayChoice;
    case kControlYearInstance:
    case kControlYearKind:
    case kControlNthMonth:
      return kControlYearNthChoice;
    case kControlRangeEnd:
      return kControlEndBy;
    case kControlCount:
      return kControlEndAfter;
    default:
      return 0;
  }
}

}  // namespace orvello
