#include "hosts/qt/wheel_notches.h"

#include <QPointingDevice>
#include <QWheelEvent>
#include <cstdlib>

#include "hosts/qt/direction.h"

namespace orvello {
namespace {

constexpr int kNotch = 120;
constexpr quint64 kPause = 250;  // milliseconds between two swipes that nothing else parts

bool is_swiped(const QWheelEvent& event) {
  const QInputDevice* device = event.device();
  return event.phase() != Qt::NoScrollPhase ||
         (device && device->type() == QInputDevice::DeviceType::TouchPad);
}

}  // namespace

WheelNotches::Turn WheelNotches::take(const QWheelEvent& event) {
  const QPoint delta = event.angleDelta();
  const bool sideways = std::abs(delta.x()) > std::abs(delta.y());
  const int aside = is_right_to_left() ? -delta.x() : delta.x();
  const int turned = sideways ? aside : delta.y();
  const bool begins = event.phase() == Qt::ScrollBegin || event.timestamp() > last_ + kPause;
  last_ = event.timestamp();
  if (begins) spent_ = false;
  if (turned == 0) return {0, sideways};
  // What is left of a turn in another direction is dropped, or its first notch would be lost.
  const bool turns_back = (turned > 0) != (rest_ > 0) || sideways != sideways_;
  if (begins || turns_back) rest_ = 0;
  sideways_ = sideways;
  rest_ += turned;
  int notches = rest_ / kNotch;
  rest_ %= kNotch;
  if (!is_swiped(event)) return {notches, sideways};
  if (spent_) notches = 0;
  if (notches == 0) return {0, sideways};
  // However far a swipe goes, and glides on, it is one.
  spent_ = true;
  return {notches > 0 ? 1 : -1, sideways};
}

}  // namespace orvello
