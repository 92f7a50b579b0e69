// Whole notches of a wheel or a touchpad, which turns by less than one at a time.
#pragma once

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
  bool sideways_ = false;
};

}  // namespace orvello
