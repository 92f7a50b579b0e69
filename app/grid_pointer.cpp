#include "app/grid_pointer.h"

namespace orvello {

using Action = GridPointer::Action;

Action GridPointer::press(Point point, const GridTarget& target) {
  way_ = Way::pressed;
  ripe_ = false;
  press_ = last_ = point;
  target_ = target;
  if (target.kind != GridTarget::Kind::day) return {};
  return {Action::Kind::start_hold, 0, target.date, target.item};
}

Action GridPointer::move(Point point) {
  last_ = point;
  if (way_ == Way::sliding) return {Action::Kind::slide, 0, {}, {}, point};
  if (way_ == Way::carrying) return {Action::Kind::carry_on, 0, {}, {}, point};
  if (way_ != Way::pressed) return {};
  const int far = std::max(std::abs(point.x - press_.x), std::abs(point.y - press_.y));
  if (far <= reach_.slack) return {};
  way_ = target_.item ? Way::carrying : Way::wandered;
  if (target_.item) return {Action::Kind::carry, 0, target_.date, target_.item, point};
  // Until the hold time has passed nobody knows whether it slides or turns the page.
  return {slides_ ? Action::Kind::none : Action::Kind::stop_hold};
}

Action GridPointer::release(Point point, const GridTarget& target) {
  if (way_ == Way::pressed && move(point).kind == Action::Kind::carry) way_ = Way::wandered;
  const Way way = way_;
  way_ = Way::up;
  const int pages = reach_.turned_by(point.x - press_.x, point.y - press_.y);
  switch (way) {
    case Way::up:
      break;
    case Way::pressed:
      // On the same day and another line of it, say.
      if (target.kind == target_.kind && target.month == target_.month &&
          target.date == target_.date)
        return tap(target_);
      break;
    case Way::wandered:
      if (pages != 0) return {Action::Kind::turn, pages};
      break;
    case Way::sliding:
      return target.kind == GridTarget::Kind::day ? tap(target) : Action{Action::Kind::end_slide};
    case Way::carrying:
      if (!ripe_) return {Action::Kind::drop, pages};
      return {Action::Kind::let_go, 0, {}, {}, point};
  }
  return {};
}

Action GridPointer::tap(const GridTarget& target) const {
  switch (target.kind) {
    case GridTarget::Kind::month:
      return {Action::Kind::show_month, target.month};
    case GridTarget::Kind::previous_year:
      return {Action::Kind::step_year, -1};
    case GridTarget::Kind::next_year:
      return {Action::Kind::step_year, 1};
    case GridTarget::Kind::title:
      return {Action::Kind::show_today};
    case GridTarget::Kind::day:
      return {Action::Kind::open_day, 0, target.date, target.item};
    case GridTarget::Kind::none:
      break;
  }
  return {};
}

Action GridPointer::hold(bool pen_is_down) {
  ripe_ = true;
  if (!pen_is_down || target_.kind != GridTarget::Kind::day) return {};
  if (slides_) {
    // A swipe has come far by now.
    const bool slow = way_ == Way::wandered && std::abs(last_.x - press_.x) < reach_.turn;
    if (way_ != Way::pressed && !slow) return {};
    way_ = Way::sliding;
    return {Action::Kind::slide, 0, {}, {}, last_};
  }
  if (way_ != Way::pressed) return {};
  way_ = Way::up;  // the release that follows is no tap
  return {Action::Kind::popup, 0, target_.date};
}

}  // namespace orvello
