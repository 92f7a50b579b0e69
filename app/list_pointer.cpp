#include "app/list_pointer.h"

namespace orvello {

using Action = ListPointer::Action;

Action ListPointer::press(Point point, int row, std::uint64_t time, Grip grip) {
  pressed_ = true;
  grip_ = grip;
  way_ = grip == Grip::list ? Way::along : Way::undecided;
  press_ = last_ = point;
  row_ = row;
  speed_.begin(point.y, time);
  if (grip == Grip::list) return {};
  return {Action::Kind::select, row, 0, point};
}

Action ListPointer::move(Point point, std::uint64_t time) {
  if (!pressed_) return {};
  speed_.move(point.y, time);
  const int dx = std::abs(point.x - press_.x), dy = std::abs(point.y - press_.y);
  if (way_ == Way::undecided && std::max(dx, dy) > reach_.slack) {
    way_ = dx > dy ? Way::aside : grip_ == Grip::item ? Way::lifted : Way::along;
    last_ = point;  // the list does not jump by the slack
  }
  if (way_ == Way::lifted) return {Action::Kind::lift, row_, point.y - press_.y, point};
  if (way_ != Way::along) return {};
  const int up = last_.y - point.y;
  last_ = point;
  if (up == 0) return {};
  return {Action::Kind::scroll, row_, up, point};
}

Action ListPointer::release(Point point, std::uint64_t time) {
  if (!pressed_) return {};
  if (!(point == last_)) move(point, time);
  pressed_ = false;
  switch (way_) {
    case Way::undecided:
      return {Action::Kind::tap, row_, 0, point};
    case Way::lifted:
      return {Action::Kind::drop, row_, point.y - press_.y, point};
    case Way::along:
      if (const int down = speed_.at_release(time))
        return {Action::Kind::glide, row_, -down, point};
      return {};
    case Way::aside:
      break;
  }
  const int days = reach_.turned_by(point.x - press_.x, point.y - press_.y);
  if (days != 0) return {Action::Kind::turn, -1, days, point};
  return {};
}

Action ListPointer::hold() {
  if (!pressed_ || way_ != Way::undecided) return {};
  pressed_ = false;  // the release that follows is no tap
  return {Action::Kind::menu, row_, 0, press_};
}

}  // namespace orvello
