#include "views/year_grid.h"

namespace orvello {

YearCell year_cell_of(int day, int first_column, int length) {
  const int place = first_column + day - 1;
  const int left_over = first_column + length - kYearCells;  // days that a sixth row would hold
  YearCell cell{place / kYearColumns, place % kYearColumns};
  if (cell.row == kYearRows) {
    cell.row = kYearRows - 1;
    cell.shared = cell.later = true;
  } else if (cell.row == kYearRows - 1) {
    cell.shared = cell.column < left_over;
  }
  return cell;
}

YearGrid BuildYearGrid(int year, const MonthDayYear& today, int firstdayofweek) {
  YearGrid grid;
  for (int month = 1; month <= 12; ++month) {
    const int first_column = DisplayDayOfWeek(month, 1, year, firstdayofweek);
    const int length = DaysInMonth(month - 1, year);
    auto& cells = grid.months[static_cast<std::size_t>(month - 1)];
    for (int day = 1; day <= length; ++day) {
      const YearCell cell = year_cell_of(day, first_column, length);
      std::int32_t& value = cells[static_cast<std::size_t>(cell.row * kYearColumns + cell.column)];
      // Today loses its sign in a double cell: the drawing asks for the date itself.
      if (cell.shared)
        value = kDoubleCell;
      else
        value = today == MonthDayYear{month, day, year} ? -day : day;
    }
  }
  return grid;
}

}  // namespace orvello
