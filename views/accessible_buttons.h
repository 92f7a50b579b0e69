// What stands beside the days of the Month and the Year view, for a screen reader: the ways to
// other months and years, and to today.
#pragma once

#include "views/accessible_text.h"

namespace orvello {

// Behind the grid's cells. Choosing one is a tap in its middle.
void add_month_buttons(AccessibleGrid& grid, const MonthLayout& layout,
                       const AccessibleWords& words);
void add_year_buttons(AccessibleGrid& grid, const YearLayout& layout, const AccessibleWords& words);

}  // namespace orvello
