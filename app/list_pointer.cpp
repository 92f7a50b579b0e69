#include "app/list_pointer.h"

namespace orvello {

using Action = ListPointer::Action;

Action ListPointer::press(Point point, int row) {
  pressed_ = true;
  way_ = Way::undecided;
  press_ = last_ = point;
  row_ = row;
  return {Action::Kind::select, row, 0, point};
}

Action ListPointer::move(Point point) {
  if (!pressed_) return {};
  const int dx = std::abs(point.x - press_.x), dy = std::abs(point.y - press_.y);
  if (way_ == Way::undecided && std::max(dx, dy) > reach_.slack) {
    way_ = dx > dy ? Way::aside : Way::along;
    last_ = point;  // the list does not jump by the slack
  }
  if (way_ != Way::along) return {};
  const int up = last_.y - point.y;
  last_ = point;
  if (up == 0) return {};
  return {Action::Kind::scroll, row_, up, point};
}

Action ListPointer::release(Point point) {
  if (!pressed_) return {};
  move(point);
  pressed_ = false;
  if (way_ == Way::undecided) return {Action::Kind::tap, row_, 0, point};
  const int days =
      way_ == Way::aside ? reach_.turned_by(point.x - press_.x, point.y - press_.y) : 0;
  if (days != 0) return {Action::Kind::turn, -1, days, point};
  return {};
}

Action ListPointer::hold() {
  if (!pressed_ || way_ != Way::undecided) return {};
  pressed_ = false;  // the release that follows is no tap
  return {Action::Kind::menu, row_, 0, press_};
}

}  // namespace orvello
