#include "calendar/shifted_pattern.h"

#include <algorithm>

#include "calendar/rule_days.h"

namespace orvello {
namespace {

constexpr int kDaysOfWeek = 7;
constexpr int kShortestMonth = 28;

CalendarDate shifted_time(CalendarDate time, std::int64_t seconds) {
  return to_calendar_date(LocalSeconds(second_of_day(to_seconds(time) + seconds)));
}

// Weeks begin on Monday: with a longer interval no day may leave the week of the others.
bool shift_weekdays(RecurrencePattern& pattern, int days) {
  int mask = 0;
  std::optional<std::int64_t> week;
  for (int from_monday = 0; from_monday < kDaysOfWeek; ++from_monday) {
    if (!(pattern.day_of_week_mask >> (from_monday + 1) % kDaysOfWeek & 1)) continue;
    const std::int64_t shifted = from_monday + days;
    mask |= 1 << floor_mod(shifted + 1, kDaysOfWeek);
    const std::int64_t in_week = floor_div(shifted, kDaysOfWeek);
    if (pattern.interval > 1 && week.value_or(in_week) != in_week) return false;
    week = in_week;
  }
  pattern.day_of_week_mask = mask;
  return true;
}

// Only within the days that every month has.
bool shift_month_day(RecurrencePattern& pattern, int days) {
  const int day = pattern.day_of_month + days;
  if (std::max(day, pattern.day_of_month) > kShortestMonth || day < 1) return false;
  pattern.day_of_month = day;
  return true;
}

// Not over the end of February, which lies on either side of the 29th.
bool shift_year_day(RecurrencePattern& pattern, int days) {
  constexpr int kCommonYear = 2001, kFebruary = 2;
  const int month = std::clamp(pattern.month_of_year, 1, 12);
  const auto month_end = day_of(kCommonYear, month + 1, 1) - 1;
  const auto day =
      std::min(day_of(kCommonYear, month, std::clamp(pattern.day_of_month, 1, 31)), month_end);
  const auto march = day_of(kCommonYear, kFebruary + 1, 1);
  const bool leap_day = month == kFebruary && pattern.day_of_month > kShortestMonth;
  if (leap_day || (day < march) != (day + days < march)) return false;
  const SystemTime date = civil_of(day + days);
  pattern.month_of_year = date.month;
  pattern.day_of_month = date.day;
  return true;
}

}  // namespace

std::optional<RecurrencePattern> shifted_pattern(const RecurrencePattern& given,
                                                 std::int64_t seconds) {
  RecurrencePattern pattern = given;
  pattern.start_time = shifted_time(given.start_time, seconds);
  pattern.end_time = shifted_time(given.end_time, seconds);
  // Counted from the first occurrence, which may lie after the first day.
  const auto first = pattern_start(given);
  const auto day = day_of(first + seconds);
  const auto days = static_cast<int>(day - day_of(first));
  if (days == 0) return pattern;
  pattern.pattern_start_date = to_calendar_date(day);
  if (!given.no_end_date && given.pattern_end_date != 0 && given.pattern_end_date < kNoDate)
    pattern.pattern_end_date = to_calendar_date(whole_day(given.pattern_end_date) + days);
  bool kept = true;
  if (given.type == RecurrenceType::weekly) {
    if ((given.day_of_week_mask & 127) == 0)
      pattern.day_of_week_mask = 1 << weekday_of(day_of(first));
    kept = shift_weekdays(pattern, days);
  } else if (given.type == RecurrenceType::monthly) {
    kept = shift_month_day(pattern, days);
  } else if (given.type == RecurrenceType::yearly) {
    kept = shift_year_day(pattern, days);
  } else if (given.type != RecurrenceType::daily) {
    kept = false;
  }
  return kept ? std::optional(pattern) : std::nullopt;
}

}  // namespace orvello
