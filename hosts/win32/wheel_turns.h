// Whole notches of a wheel, which may turn by less than one at a time.
#pragma once

namespace orvello {

class WheelTurns {
 public:
  // What a wheel message says of its turn; the notches that became whole, 0: none yet.
  int take(int turned, bool sideways) {
    constexpr int kNotch = 120;
    // What is left of a turn in another direction is dropped, or its first notch would be lost.
    if ((turned > 0) != (rest_ > 0) || sideways != sideways_) rest_ = 0;
    sideways_ = sideways;
    rest_ += turned;
    const int notches = rest_ / kNotch;
    rest_ %= kNotch;
    return notches;
  }

 private:
  int rest_ = 0;
  bool sideways_ = false;
};

}  // namespace orvello
