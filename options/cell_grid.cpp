#include "options/cell_grid.h"

#include <algorithm>
#include <cstdlib>

#include "ports/messages.h"

namespace orvello {

using Event = DialogEvent::Kind;

void CellGrid::set_count(int count) {
  count_ = std::max(0, count);
  chosen_ = std::clamp(chosen_, 0, std::max(0, count_ - 1));
}

void CellGrid::choose(int cell) {
  if (cell < 0 || cell >= count_) return;
  chosen_ = cell;
  const int row = cell / columns_ * cell_.height;
  scroll_to(std::clamp(top_, row + cell_.height - size_.height, row));
}

void CellGrid::lay_out(Size size, int side, bool wide) {
  size_ = size;
  const int most = std::max(1, size.width / std::max(1, side));
  const int rows_seen = std::max(1, size.height / std::max(1, side));
  columns_ = wide ? std::clamp((count_ + rows_seen - 1) / rows_seen, 1, most) : most;
  const int height = rows() == 0 ? side : size.height / rows();
  cell_ = {std::max(1, size.width / columns_), std::clamp(height, std::max(1, side), 2 * side)};
  scroll_to(top_);
}

Rect CellGrid::place(int cell) const {
  return {cell % columns_ * cell_.width, cell / columns_ * cell_.height - top_, cell_.width,
          cell_.height};
}

int CellGrid::cell_at(Point point) const {
  const int column = point.x / cell_.width, row = (point.y + top_) / cell_.height;
  if (point.x < 0 || point.y < 0 || point.y >= size_.height || column >= columns_) return -1;
  const int cell = row * columns_ + column;
  return cell < count_ ? cell : -1;
}

void CellGrid::scroll_to(int top) {
  top_ = std::clamp(top, 0, std::max(0, length() - size_.height));
}

CellGrid::Act CellGrid::handle(const DialogEvent& event, int tremble) {
  return event.kind == Event::key ? key(event.key) : pen(event, tremble);
}

CellGrid::Act CellGrid::pen(const DialogEvent& event, int tremble) {
  switch (event.kind) {
    case Event::double_tap:
      if (cell_at(event.point) == chosen_) return Act::opened;
      [[fallthrough]];
    case Event::pointer_down:
      pen_ = event.point;
      scrolls_ = false;
      return Act::nothing;
    case Event::pointer_move: {
      if (!pen_) return Act::nothing;
      const int by = pen_->y - event.point.y;
      if (!scrolls_ && std::abs(by) <= tremble) return Act::nothing;
      scrolls_ = true;
      pen_ = event.point;
      scroll_to(top_ + by);
      return Act::moved;
    }
    case Event::pointer_up: {
      const bool tapped = pen_.has_value() && !scrolls_;
      const int cell = tapped ? cell_at(*pen_) : -1;
      pen_.reset();
      if (cell < 0) return Act::nothing;
      choose(cell);
      return Act::chosen;
    }
    default:
      return Act::nothing;
  }
}

CellGrid::Act CellGrid::key(std::uint32_t key) {
  const int page = std::max(1, size_.height / cell_.height - 1) * columns_;
  const auto to = [&](int cell) {
    if (cell < 0 || cell >= count_ || cell == chosen_) return Act::nothing;
    choose(cell);
    return Act::chosen;
  };
  switch (key) {
    case kKeyLeft:
      return to(chosen_ - 1);
    case kKeyRight:
      return to(chosen_ + 1);
    case kKeyUp:
      return to(chosen_ - columns_);
    case kKeyDown:
      return to(chosen_ + columns_);
    case kKeyPageUp:
      return to(std::max(chosen_ - page, chosen_ % columns_));
    case kKeyPageDown:
      return to(std::min(chosen_ + page, count_ - 1));
    case kKeyHome:
      return to(0);
    case kKeyEnd:
      return to(count_ - 1);
    case kKeySpace:
    case kKeyReturn:
      return count_ > 0 ? Act::opened : Act::nothing;
    default:
      return Act::nothing;
  }
}

}  // namespace orvello
