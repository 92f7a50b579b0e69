// What a pen does on a list of a settings page: a tap takes a row, a stroke scrolls, and a quick
// one leaves the list gliding.
#pragma once

#include <optional>

#include "base/stroke_speed.h"
#include "ports/dialog.h"

namespace orvello {

class ReportPen {
 public:
  // The row that was tapped, when the event ends a tap; -1: none. `dpi` of the screen.
  int tapped(ReportList& list, const DialogEvent& event, int dpi);

 private:
  std::optional<Point> pen_;
  int row_ = -1;
  StrokeSpeed speed_;
};

// Where a key that walks a list's rows leads from `row`; nothing for other keys.
std::optional<int> walked_row(std::uint32_t key, int row, int rows, int rows_in_sight);

}  // namespace orvello
