// Whole notches of a wheel, which may turn by less than one at a time; a touchpad's swipe is one.
#pragma once

#include <QtGlobal>

class QWheelEvent;

namespace orvello {

class WheelNotches {
 public:
  struct Turn {
    int notches = 0;  // up, or towards where lines begin, is above 0
    bool sideways = false;
  };
  // 0 notches: they are not whole yet.
  Turn take(const QWheelEvent& event);

 private:
  int rest_ = 0;
  quint64 last_ = 0;    // when it was turned
  bool spent_ = false;  // the swipe that goes on has been told
  bool sideways_ = false;
};

}  // namespace orvello
