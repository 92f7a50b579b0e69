#include "hosts/qt/glide.h"

#include <cmath>

#include "hosts/qt/callbacks.h"

namespace orvello {
namespace {

constexpr int kStepMilliseconds = 16;
constexpr double kDecaySeconds = 0.33;  // in which it loses two thirds of its speed
constexpr double kSlowestSpeed = 25;

}  // namespace

Glide::Glide(QObject* owner, std::function<bool(double)> scroll) : scroll_(std::move(scroll)) {
  timer_.setTimerType(Qt::PreciseTimer);
  on_signal(&timer_, &QTimer::timeout, owner, [this] { step(); });
}

void Glide::start(double pixels_per_second) {
  end();
  if (std::abs(pixels_per_second) < kSlowestSpeed) return;
  speed_ = pixels_per_second;
  goes_ = true;
  since_step_.start();
  timer_.start(kStepMilliseconds);
}

void Glide::end() {
  timer_.stop();
  goes_ = false;
}

void Glide::step() {
  const double seconds = static_cast<double>(since_step_.restart()) / 1000;
  const double before = speed_;
  speed_ *= std::exp(-seconds / kDecaySeconds);
  const bool at_end = !scroll_((before - speed_) * kDecaySeconds);
  if (at_end || std::abs(speed_) < kSlowestSpeed) end();
}

}  // namespace orvello
