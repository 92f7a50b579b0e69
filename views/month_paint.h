// Drawing the Month view. Called by the drawing worker with the draw state at 101; the snapshot is
// all that is read. False: given up, because the draw state has gone back to 100.
#pragma once

#include "views/draw_control.h"
#include "views/month_snapshot.h"

namespace orvello {

// `progress` is called now and then while the surface fills; it may be empty.
bool DrawMonthView(const MonthSnapshot& snapshot, Canvas& canvas,
                   const std::atomic<int>& draw_state, const std::function<void()>& progress);

// The grid with its numbers, and then the pass that marks appointments.
bool DrawMonthGrid(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas,
                   const DrawControl& control);

// What stands above the grid: month strip, title band and day names.
void draw_month_header(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas);

}  // namespace orvello
