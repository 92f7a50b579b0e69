#include "hosts/qt/wheel_notches.h"

#include <QWheelEvent>
#include <cstdlib>

#include "hosts/qt/direction.h"

namespace orvello {

WheelNotches::Turn WheelNotches::take(const QWheelEvent& event) {
  constexpr int kNotch = 120;
  const QPoint delta = event.angleDelta();
  const bool sideways = std::abs(delta.x()) > std::abs(delta.y());
  const int aside = is_right_to_left() ? -delta.x() : delta.x();
  const int turned = sideways ? aside : delta.y();
  if (turned == 0) return {0, sideways};
  // What is left of a turn in another direction is dropped, or its first notch would be lost.
  if ((turned > 0) != (rest_ > 0) || sideways != sideways_) rest_ = 0;
  sideways_ = sideways;
  rest_ += turned;
  const int notches = rest_ / kNotch;
  rest_ %= kNotch;
  return {notches, sideways};
}

}  // namespace orvello
