#include "calendar/next_dates.h"

#include "calendar/dates.h"

namespace orvello {
namespace {

CalendarDate converted(const SystemTime& time) {
  CalendarDate date = 0;
  SystemTimeToVariantTime(time, date);
  return date;
}

bool fits(const SystemTime& time, int day_class) {
  const int weekday = DayOfWeek(time.month, time.day, time.year);
  const bool weekend = weekday == 0 || weekday == 6;
  switch (day_class) {
    case kAnyDay:
      return true;
    case kWeekday:
      return !weekend;
    case kWeekendDay:
      return weekend;
    default:
      return weekday == day_class - kNamedDay;
  }
}

// Moves to the instance-th fitting day of the month.
bool walk_forward(SystemTime& time, int instance, int day_class) {
  const int length = DaysInMonth(time.month - 1, time.year);
  int count = 0;
  for (time.day = 1; time.day <= length; ++time.day)
    if (fits(time, day_class) && ++count == instance) return true;
  return false;
}

// Moves back from the day given to the first fitting one.
bool walk_backward(SystemTime& time, int day_class) {
  for (int steps = DaysInMonth(time.month - 1, time.year); steps > 0; --steps, --time.day)
    if (fits(time, day_class)) return true;
  return false;
}

CalendarDate nth_day(CalendarDate date, SystemTime time, int instance, int day_class, int month) {
  const int year = time.year;
  if (time.month > month) ++time.year;
  time.month = month;
  if (!walk_forward(time, instance, day_class)) return NoDateSentinel;
  if (!is_before(converted(time), date)) return converted(time);
  time.year = year + 1;
  return walk_forward(time, instance, day_class) ? converted(time) : NoDateSentinel;
}

// The month searched is the date's own, deliberately not the one asked for; and a second search
// starts from the day last found, not from the end of the next year's month.
CalendarDate last_day(CalendarDate date, SystemTime time, int day_class, int month) {
  if (time.month > month) ++time.year;
  time.day = DaysInMonth(time.month - 1, time.year);
  if (day_class == kAnyDay) return converted(time);
  if (!walk_backward(time, day_class)) return NoDateSentinel;
  if (!is_before(converted(time), date)) return converted(time);
  ++time.year;
  return walk_backward(time, day_class) ? converted(time) : NoDateSentinel;
}

}  // namespace

CalendarDate NextYearlyDate(int kind, CalendarDate date, int instance, int day_class, int month,
                            int day_of_month) {
  SystemTime time;
  if (!VariantTimeToSystemTime(date, time)) return NoDateSentinel;
  if (kind == 1) {
    // A day earlier in the date's own month stays in this year.
    if (time.month > month) ++time.year;
    time.month = month;
    time.day = day_of_month;
    return converted(time);
  }
  if (kind != 2) return NoDateSentinel;
  if (instance == 5) return last_day(date, time, day_class, month);
  if (instance < 1 || instance > 4) return NoDateSentinel;
  return nth_day(date, time, instance, day_class, month);
}

CalendarDate NextMonthlyDate(int kind, CalendarDate date, int interval, int day_of_month) {
  SystemTime time;
  if (kind != 1 || !VariantTimeToSystemTime(date, time)) return NoDateSentinel;
  time.day = day_of_month;
  if (is_before(converted(time), date)) {
    time.month += interval;
    // One wrap only; the conversion rolls what is left over.
    if (time.month > 12) {
      time.month -= 12;
      ++time.year;
    }
  }
  return converted(time);
}

CalendarDate NextWeeklyDate(CalendarDate date, int interval, int mask) {
  SystemTime time;
  if (!VariantTimeToSystemTime(date, time)) return NoDateSentinel;
  const int start = DayOfWeek(time.month, time.day, time.year);
  const LocalSeconds from = to_seconds(date);
  const auto day = [from](std::int64_t days) {
    return to_calendar_date(from + days * kSecondsPerDay);
  };
  for (int weekday = start; weekday < 7; ++weekday)
    if (mask >> weekday & 1) return day(weekday - start);
  // From the Sunday of the later week, yet only as many days as were left of the first one. Further
  // jumps would look at the same weekdays again.
  for (int weekday = 0; weekday < 7 - start; ++weekday)
    if (mask >> weekday & 1) return day(weekday - start + std::int64_t{7} * interval);
  return NoDateSentinel;
}

}  // namespace orvello
