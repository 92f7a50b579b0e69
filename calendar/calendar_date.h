// The calendar date: a double, days since 30 December 1899 with the time of day as its fraction (an
// OLE automation date), and its conversions to and from broken-down time.
#pragma once

#include <cstdint>

#include "calendar/day.h"

namespace orvello {

using CalendarDate = double;

// Before 30 December 1899 the whole days are negative and the fraction still counts forward within
// its day: -1.25 is 29 December 1899, 06:00. Such dates neither compare nor add up as numbers; what
// needs more than a conversion goes through these or through LocalSeconds.
Day whole_day(CalendarDate date);       // the day on which it falls; clamped to +-10^8
double time_of_day(CalendarDate date);  // 0 <= t < 1
CalendarDate joined(Day day, double time_of_day);
bool is_before(CalendarDate date, CalendarDate other);  // to the second

// 1 January 4501: the store's value for "no date".
inline constexpr CalendarDate kNoDate = 949998.0;

// Broken-down time. Fields as a device's system time has them: month 1-12, day_of_week 0 = Sunday.
struct SystemTime {
  int year = 0;
  int month = 0;
  int day_of_week = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int milliseconds = 0;
  friend bool operator==(const SystemTime&, const SystemTime&) = default;
};

// The day of a proleptic Gregorian date. A month outside 1-12 or a day that the
// month lacks rolls into the neighbours (31 April is 1 May). After H. Hinnant's days_from_civil.
Day day_of(int year, int month, int day);

// The fields of a day, with the time zero.
SystemTime civil_of(Day day);

// Never fails: hours, minutes and seconds past their range roll forward too (hour 24 is the next
// midnight). A zero month or day is taken as the platform does for a bare time: 30 December 1899.
bool SystemTimeToVariantTime(const SystemTime& time, CalendarDate& date);

// Rounded to the nearest second, as store dates are whole seconds. False outside years 100 to 9999,
// with `time` untouched.
bool VariantTimeToSystemTime(CalendarDate date, SystemTime& time);

LocalSeconds to_seconds(CalendarDate date);          // nearest second
CalendarDate to_calendar_date(LocalSeconds moment);  // exact to the second
CalendarDate to_calendar_date(Day day);              // its midnight

}  // namespace orvello
