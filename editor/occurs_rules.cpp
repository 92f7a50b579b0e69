#include "editor/occurs_rules.h"

#include <bit>

#include "calendar/date_text.h"
#include "calendar/dates.h"

namespace orvello {
namespace {

bool is_one_day(std::int32_t mask) { return std::has_single_bit(static_cast<unsigned>(mask)); }

// What its row says of the start's day, so that no row says what is not so.
bool keeps_to(const RecurrencePattern& pattern, Occurs row) {
  const RecurrencePattern said = fresh_pattern(pattern.pattern_start_date);
  const bool day = pattern.day_of_month == said.day_of_month;
  if (row == Occurs::weekly) return pattern.day_of_week_mask == said.day_of_week_mask;
  return row == Occurs::monthly ? day : day && pattern.month_of_year == said.month_of_year;
}

Occurs row_of(const RecurrencePattern& pattern) {
  switch (pattern.type) {
    case RecurrenceType::daily:
      return is_one_day(pattern.day_of_week_mask) ? Occurs::once : Occurs::pattern;
    case RecurrenceType::weekly:
      return pattern.interval == 1 ? Occurs::weekly : Occurs::pattern;
    case RecurrenceType::monthly:
      return pattern.interval <= 1 ? Occurs::monthly : Occurs::pattern;
    case RecurrenceType::yearly:
      return pattern.interval <= 1 ? Occurs::yearly : Occurs::pattern;
    default:
      return Occurs::pattern;
  }
}

}  // namespace

std::vector<Text> occurs_rows(CalendarDate start_date, const LocaleData& locale) {
  const auto texts = recurrence_choice_texts(start_date, locale);
  std::vector<Text> rows(texts.begin(), texts.end());
  rows.emplace_back(kEditPattern);
  return rows;
}

Occurs shown_occurs(const AppointmentForm& form) {
  if (!form.recurring) return Occurs::once;
  if (!form.rules.empty() || !form.pattern.no_end_date) return Occurs::pattern;
  const Occurs row = row_of(form.pattern);
  const bool says = row == Occurs::once || row == Occurs::pattern || keeps_to(form.pattern, row);
  return says ? row : Occurs::pattern;
}

CalendarDate occurs_date(const AppointmentForm& form) {
  const bool own = form.recurring && form.rules.empty();
  return own ? form.pattern.pattern_start_date : form.start_date;
}

void take_days(RecurrencePattern& pattern, CalendarDate start_date) {
  const MonthDayYear date = triple_of(start_date);
  pattern.day_of_week_mask = 1 << weekday_of(whole_day(start_date));
  pattern.day_of_month = date.day;
  pattern.month_of_year = date.month;
}

RecurrencePattern fresh_pattern(CalendarDate start_date) {
  RecurrencePattern pattern;
  pattern.pattern_start_date = start_date;
  take_days(pattern, start_date);
  return pattern;
}

RecurrencePattern simple_pattern(Occurs row, const RecurrencePattern& before,
                                 CalendarDate start_date) {
  RecurrencePattern pattern = before;
  pattern.pattern_start_date = start_date;
  pattern.pattern_end_date = kNoDate;
  pattern.no_end_date = true;
  pattern.occurrences = -1;
  pattern.interval = 1;
  take_days(pattern, start_date);
  if (row == Occurs::weekly) {
    pattern.type = RecurrenceType::weekly;
  } else {
    pattern.type = row == Occurs::monthly ? RecurrenceType::monthly : RecurrenceType::yearly;
    pattern.day_of_week_mask = 0;
    if (row == Occurs::yearly) pattern.instance = 0;
  }
  return pattern;
}

}  // namespace orvello
