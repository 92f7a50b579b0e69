#include "options/report_pen.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "ports/messages.h"

namespace orvello {

int ReportPen::tapped(ReportList& list, const DialogEvent& event, int dpi) {
  using Kind = DialogEvent::Kind;
  constexpr int kSlip = 6;  // how far a pen may slip on a row, at 96 dpi
  if (event.kind == Kind::pointer_down || event.kind == Kind::double_tap) {
    pen_ = event.point;
    row_ = list.gliding() ? -1 : list.row_at(event.point);  // what stops it takes no row
    speed_.begin(event.point.y, event.time);
  } else if (event.kind == Kind::pointer_move && pen_) {
    speed_.move(event.point.y, event.time);
    const int moved = event.point.y - pen_->y;
    if (row_ >= 0 && std::abs(moved) <= kSlip * dpi / 96) return -1;
    row_ = -1;
    list.scroll_by(-moved);
    pen_ = event.point;
  } else if (event.kind == Kind::pointer_up) {
    if (pen_ && row_ < 0) list.glide(-speed_.at_release(event.time));
    pen_.reset();
    return std::exchange(row_, -1);
  }
  return -1;
}

std::optional<int> walked_row(std::uint32_t key, int row, int rows, int rows_in_sight) {
  const int last = std::max(0, rows - 1), page = std::max(1, rows_in_sight - 1);
  const auto within = [last](int to) { return std::clamp(to, 0, last); };
  switch (key) {
    case kKeyUp:
      return within(row - 1);
    case kKeyDown:
      return within(row + 1);
    case kKeyPageUp:
      return within(row - page);
    case kKeyPageDown:
      return within(row + page);
    case kKeyHome:
      return 0;
    case kKeyEnd:
      return last;
    default:
      return std::nullopt;
  }
}

}  // namespace orvello
