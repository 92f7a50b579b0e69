// Week numbers, as the setting weeknumberformat selects them.
#pragma once

#include "calendar/dates.h"

namespace orvello {

// ISO 8601 with firstdayofweek 1; with 0 the same arithmetic on weeks that start on Sunday.
int IsoWeekNumber(int month, int day, int year, int firstdayofweek);

// Week 1 is the week that holds the start month and day. 0 is possible for a day that lies just
// before that week and yet not far enough before it to belong to the year before. A 53rd week turns
// into week 1 six days before the next start, even in mid-week.
int UsWeekNumber(int month, int day, int year, int firstdayofweek, int weekstartmonth,
                 int weekstartday);

struct WeekNumberSettings {
  int weeknumberformat = 0;  // 0 none, 1 ISO, 2 US
  int firstdayofweek = 0;
  int weekstartmonth = 1;
  int weekstartday = 1;
};

// By the selected format; 0 when none is selected.
int week_number(const MonthDayYear& date, const WeekNumberSettings& settings);

// The number printed beside row 0-5 of a month's grid: of the row's first day that belongs to the
// month, or of its first cell when that lies in the next month.
int row_week_number(int row, int month, int year, const WeekNumberSettings& settings);

}  // namespace orvello
