#include "app/grid_pointer.h"

namespace orvello {

using Action = GridPointer::Action;

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
  wandered_ = std::max(std::abs(point.x - press_.x), std::abs(point.y - press_.y)) > reach_.slack;
  if (wandered_) return {Action::Kind::stop_hold, 0, {}};
  return {};
}

Action GridPointer::release(Point point, const GridTarget& target) {
  if (!pressed_) return {};
  move(point);
  pressed_ = false;
  if (wandered_) {
    const int pages = reach_.turned_by(point.x - press_.x, point.y - press_.y);
    if (pages != 0) return {Action::Kind::turn, pages, {}};
    return {};
  }
  GridTarget place = target;
  place.item = target_.item;  // another line of the same day is the same place for a tap
  if (place != target_) return {};
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
    case GridTarget::Kind::none:
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
