// A list that goes on scrolling after the pen has left it, slower and slower: the motion alone. A
// host calls step() as often as it draws, with the time that went by.
#pragma once

#include <functional>

namespace orvello {

inline constexpr int kGlideStepMilliseconds = 16;

class GlideMotion {
 public:
  // `scroll` takes some pixels downwards and answers false at an end.
  explicit GlideMotion(std::function<bool(double)> scroll) : scroll_(std::move(scroll)) {}

  bool start(double pixels_per_second);  // false: too slow to glide at all; then it has ended
  void end() { goes_ = false; }
  bool goes() const { return goes_; }
  bool step(double seconds);  // false: it has ended

 private:
  std::function<bool(double)> scroll_;
  double speed_ = 0;
  bool goes_ = false;
};

}  // namespace orvello
