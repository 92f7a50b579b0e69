#include "app/grid_pointer.h"

#include <algorithm>
#include <cstdlib>

namespace orvello {

using Action = GridPointer::Action;

void GridPointer::set_view(int width, int dpi) {
  slack_ = std::max(6, dpi / 16);
  drag_ = std::clamp(width / 6, 3 * slack_, 2 * dpi);
}

Action GridPointer::press(Point point, const GridTarget& target) {
  pressed_ = true;
  wandered_ = false;
  press_ = point;
  target_ = target;
  if (target.kind == GridTarget::Kind::day) return {Action::Kind::start_hold, 0, target.date};
  return {};
}

Action GridPointer::move(Point point) {
  if (!pressed_ || wandered_) return {};
  wandered_ = std::abs(point.x - press_.x) > slack_ || std::abs(point.y - press_.y) > slack_;
  if (wandered_) return {Action::Kind::stop_hold, 0, {}};
  return {};
}

Action GridPointer::release(Point point, const GridTarget& target) {
  if (!pressed_) return {};
  move(point);
  pressed_ = false;
  if (wandered_) {
    const int dx = point.x - press_.x, dy = point.y - press_.y;
    if (std::abs(dx) >= drag_ && std::abs(dx) > 2 * std::abs(dy))
      return {Action::Kind::turn, dx < 0 ? 1 : -1, {}};
    return {};
  }
  if (target != target_) return {};
  switch (target.kind) {
    case GridTarget::Kind::month:
      return {Action::Kind::show_month, target.month, {}};
    case GridTarget::Kind::previous_year:
      return {Action::Kind::step_year, -1, {}};
    case GridTarget::Kind::next_year:
      return {Action::Kind::step_year, 1, {}};
    case GridTarget::Kind::title:
      return {Action::Kind::show_today, 0, {}};
    case GridTarget::Kind::day:
      return {Action::Kind::open_day, 0, target.date};
    case GridTarget::Kind::nothing:
      break;
  }
  return {};
}

Action GridPointer::hold(bool pen_is_down) {
  if (!pressed_ || wandered_ || !pen_is_down || target_.kind != GridTarget::Kind::day) return {};
  pressed_ = false;  // the release that follows is no tap
  return {Action::Kind::popup, 0, target_.date};
}

}  // namespace orvello
