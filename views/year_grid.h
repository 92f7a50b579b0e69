// The twelve small grids of a year: which day stands in which cell.
#pragma once

#include <array>
#include <cstdint>

#include "calendar/dates.h"

namespace orvello {

inline constexpr int kYearRows = 5;
inline constexpr int kYearColumns = 7;
inline constexpr int kYearCells = kYearRows * kYearColumns;
// A cell of the fifth row that holds its own day and the one a week later.
inline constexpr std::int32_t kDoubleCell = -100;

struct YearGrid {
  // By month and cell: 0 outside the month, the day, today's day negated, or kDoubleCell.
  std::array<std::array<std::int32_t, kYearCells>, 12> months{};
  friend bool operator==(const YearGrid&, const YearGrid&) = default;
};
YearGrid BuildYearGrid(int year, const MonthDayYear& today, int firstdayofweek);

// Where a day stands in its month's grid.
struct YearCell {
  int row = 0;
  int column = 0;
  bool shared = false;  // one of the two days of a double cell
  bool later = false;   // the second of them
  friend bool operator==(const YearCell&, const YearCell&) = default;
};
// `first_column` is the column of day 1, `length` the month's.
YearCell year_cell_of(int day, int first_column, int length);

}  // namespace orvello
