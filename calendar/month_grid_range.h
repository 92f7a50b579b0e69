// The span of days that a month's grid shows.
#pragma once

#include "calendar/calendar_date.h"

namespace orvello {

// Dates are midnights.
struct MonthGrid {
  CalendarDate grid_start = 0;   // the first cell
  CalendarDate month_start = 0;  // day 1
  CalendarDate month_end = 0;    // the month's last day
  CalendarDate grid_end = 0;     // the last cell
  int rows = 0;
  int first_column = 0;  // of day 1
};

// With showdays 1 the grid always has six rows, filled with the neighbouring months' days.
MonthGrid MonthGridRange(int month, int year, int showdays, int firstdayofweek);

}  // namespace orvello
