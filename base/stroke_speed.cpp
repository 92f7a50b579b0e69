#include "base/stroke_speed.h"

#include <algorithm>
#include <cstdlib>

namespace orvello {
namespace {

constexpr std::uint64_t kMoment = 100;          // milliseconds
constexpr int kSlowest = 120, kFastest = 6000;  // pixels a second

}  // namespace

void StrokeSpeed::begin(int y, std::uint64_t time) { places_ = {{y, time}}; }

void StrokeSpeed::move(int y, std::uint64_t time) {
  places_.push_back({y, time});
  while (places_.size() > 2 && places_[1].time + kMoment < time) places_.pop_front();
}

int StrokeSpeed::at_release(std::uint64_t time) const {
  if (places_.size() < 2 || time == 0) return 0;
  const Place &from = places_.front(), &to = places_.back();
  // What lasted longer than the moment was a rest, in the middle or at the end.
  if (from.time == 0 || to.time <= from.time || to.time - from.time > 2 * kMoment ||
      to.time + kMoment / 2 < time)
    return 0;
  const long speed = (to.y - from.y) * 1000L / static_cast<long>(to.time - from.time);
  if (std::abs(speed) < kSlowest) return 0;
  return static_cast<int>(std::clamp<long>(speed, -kFastest, kFastest));
}

}  // namespace orvello
