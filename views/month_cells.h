// The cells of the Month view: backgrounds, lines, day numbers and week numbers.
#pragma once

#include "views/month_snapshot.h"

namespace orvello {

Color cell_background(const MonthSnapshot& snapshot, const MonthCell& cell);
void draw_month_cells(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas);
void draw_week_numbers(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas);
// What the digits of a day number cover.
Rect drawn_number_box(const MonthSnapshot& snapshot, const MonthLayout& layout,
                      const MonthCell& cell, Canvas& canvas);

}  // namespace orvello
