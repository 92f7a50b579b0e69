// Days, weekdays and months: arithmetic on month/day/year triples.
#pragma once

#include "base/text.h"
#include "calendar/calendar_date.h"

namespace orvello {

// Always in this order: month 1-12, day 1-31, four-digit year.
struct MonthDayYear {
  int month = 0;
  int day = 0;
  int year = 0;
  friend bool operator==(const MonthDayYear&, const MonthDayYear&) = default;
};

// The four-year rule alone, deliberately without the century exception: 1900 and 2100 are leap
// years here and in everything built on DaysInMonth.
bool IsLeapYear(int year);

// `month_index` is 0-11; any other index has 0 days.
int DaysInMonth(int month_index, int year);

// 0 Sunday .. 6 Saturday, Gregorian.
int DayOfWeek(int month, int day, int year);

// The column 0-6 of a grid whose weeks start on Sunday (firstdayofweek 0) or Monday (any other).
int DisplayDayOfWeek(int month, int day, int year, int firstdayofweek);

int JulianDayNumber(int month, int day, int year);

// 0 for 1 January; Gregorian leap years, unlike IsLeapYear.
int DayOfYear(int month, int day, int year);

// The triple's calendar date as a whole number.
int WholeDayNumber(int month, int day, int year);

// Two digits of the year and three of the day of the year, 1 January being 001.
Text JulianDateText(const SystemTime& time);

// Moves the triple by a signed number of days. The form with `now` steps the day shown and starts
// from the current time of day; the other starts from midnight. Both end on the same day.
void AddDays(int& month, int& day, int& year, int days, const SystemTime& now);
void AddDays(int& month, int& day, int& year, int days);

MonthDayYear TodayTriple(const SystemTime& now);
int TodayDayOfMonth(const SystemTime& now);

// An integer that orders triples by date.
int DateKey(int month, int day, int year);

Day day_of(const MonthDayYear& triple);
MonthDayYear triple_of(Day day);
// The triple's midnight, and the triple of a date (the time of day is dropped).
CalendarDate calendar_date_of(const MonthDayYear& triple);
MonthDayYear triple_of(CalendarDate date);

}  // namespace orvello
