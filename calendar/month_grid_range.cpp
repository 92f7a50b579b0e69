#include "calendar/month_grid_range.h"

#include "calendar/dates.h"

namespace orvello {

MonthGrid MonthGridRange(int month, int year, int showdays, int firstdayofweek) {
  MonthGrid grid;
  const int column = DisplayDayOfWeek(month, 1, year, firstdayofweek);
  const int length = DaysInMonth(month - 1, year);
  grid.first_column = column;
  grid.month_start = WholeDayNumber(month, 1, year);
  grid.month_end = WholeDayNumber(month, length, year);
  if (column == 0) {
    grid.grid_start = grid.month_start;
  } else if (month == 1) {
    grid.grid_start = WholeDayNumber(12, 31 - column + 1, year - 1);
  } else {
    const int previous_length = DaysInMonth(month - 2, year);
    grid.grid_start = WholeDayNumber(month - 1, previous_length - column + 1, year);
  }
  if (showdays == 1) {
    grid.rows = 6;
  } else {
    // Single precision and a seventh rounded up: 28 days from column 0 come to exactly 4.
    const float weeks = static_cast<float>(length + column) * 0.14285715f;
    grid.rows = weeks > 5 ? 6 : weeks > 4 ? 5 : 4;
  }
  grid.grid_end = grid.grid_start + 7 * grid.rows - 1;
  return grid;
}

}  // namespace orvello
