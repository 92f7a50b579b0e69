#include "calendar/dates.h"

#include <cmath>

namespace orvello {

bool IsLeapYear(int year) {
  return static_cast<int>(std::fmod(static_cast<double>(year), 4.0)) == 0;
}

int DaysInMonth(int month_index, int year) {
  static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month_index < 0 || month_index > 11) return 0;
  return month_index == 1 && IsLeapYear(year) ? 29 : kDays[month_index];
}

int DayOfWeek(int month, int day, int year) {
  const int a = (14 - month) / 12;
  const int y = year - a;
  const int m = month + 12 * a - 2;
  const int sum = day + y + y / 4 - y / 100 + y / 400 + 31 * m / 12;
  return static_cast<int>(std::fmod(static_cast<double>(sum), 7.0));
}

int DisplayDayOfWeek(int month, int day, int year, int firstdayofweek) {
  const int weekday = DayOfWeek(month, day, year);
  return firstdayofweek != 0 ? (weekday + 6) % 7 : weekday;
}

int JulianDayNumber(int month, int day, int year) {
  const int a = (14 - month) / 12;
  const int y = year + 4800 - a;
  const int m = month + 12 * a - 3;
  return day + (153 * m + 2) / 5 + 365 * y + y / 4 - y / 100 + y / 400 - 32045;
}

int DayOfYear(int month, int day, int year) {
  return JulianDayNumber(month, day, year) - JulianDayNumber(1, 1, year);
}

int WholeDayNumber(int month, int day, int year) { return day_of(year, month, day).number(); }

Text JulianDateText(const SystemTime& time) {
  CalendarDate date = 0;
  SystemTimeToVariantTime(time, date);
  const int days = whole_day(date) - day_of(time.year, 1, 1);
  return format(u"%.2d%.3d", time.year % 100, days + 1);
}

void AddDays(int& month, int& day, int& year, int days, const SystemTime& now) {
  SystemTime time = now;
  time.month = month;
  time.day = day;
  time.year = year;
  CalendarDate date = 0;
  SystemTimeToVariantTime(time, date);
  // Added in seconds, because a date before 1900 and one after it do not add up as doubles.
  const LocalSeconds moved = to_seconds(date) + days * kSecondsPerDay;
  if (!VariantTimeToSystemTime(to_calendar_date(moved), time)) return;
  month = time.month;
  day = time.day;
  year = time.year;
}

void AddDays(int& month, int& day, int& year, int days) {
  AddDays(month, day, year, days, SystemTime{});
}

MonthDayYear TodayTriple(const SystemTime& now) { return {now.month, now.day, now.year}; }

int TodayDayOfMonth(const SystemTime& now) { return now.day; }

int DateKey(int month, int day, int year) { return (year * 100 + month) * 1000 + day; }

Day day_of(const MonthDayYear& triple) { return day_of(triple.year, triple.month, triple.day); }

MonthDayYear triple_of(Day day) {
  const SystemTime time = civil_of(day);
  return {time.month, time.day, time.year};
}

CalendarDate calendar_date_of(const MonthDayYear& triple) {
  return to_calendar_date(day_of(triple));
}

MonthDayYear triple_of(CalendarDate date) { return triple_of(whole_day(date)); }

}  // namespace orvello
