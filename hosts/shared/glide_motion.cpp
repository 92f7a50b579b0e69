#include "hosts/shared/glide_motion.h"

#include <cmath>

namespace orvello {
namespace {

constexpr double kDecaySeconds = 0.33;  // in which it loses two thirds of its speed
constexpr double kSlowestSpeed = 25;

}  // namespace

bool GlideMotion::start(double pixels_per_second) {
  goes_ = std::abs(pixels_per_second) >= kSlowestSpeed;
  speed_ = pixels_per_second;
  return goes_;
}

bool GlideMotion::step(double seconds) {
  if (!goes_) return false;
  const double before = speed_;
  speed_ *= std::exp(-seconds / kDecaySeconds);
  const bool at_end = !scroll_((before - speed_) * kDecaySeconds);
  if (at_end || std::abs(speed_) < kSlowestSpeed) end();
  return goes_;
}

}  // namespace orvello
