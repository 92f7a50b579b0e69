// Drawing the Year view. Called by the drawing worker with the draw state at 101; the snapshot is
// all that is read. False: given up, because the draw state has gone back to 100.
#pragma once

#include "views/draw_control.h"
#include "views/year_snapshot.h"

namespace orvello {

// `progress` is called after each month; it may be empty.
bool DrawYearView(const YearSnapshot& snapshot, Canvas& canvas, const std::atomic<int>& draw_state,
                  const std::function<void()>& progress);

}  // namespace orvello
