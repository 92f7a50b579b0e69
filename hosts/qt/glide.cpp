#include "hosts/qt/glide.h"

#include "hosts/qt/callbacks.h"

namespace orvello {

Glide::Glide(QObject* owner, std::function<bool(double)> scroll) : motion_(std::move(scroll)) {
  timer_.setTimerType(Qt::PreciseTimer);
  on_signal(&timer_, &QTimer::timeout, owner, [this] { step(); });
}

void Glide::start(double pixels_per_second) {
  end();
  if (!motion_.start(pixels_per_second)) return;
  since_step_.start();
  timer_.start(kGlideStepMilliseconds);
}

void Glide::end() {
  timer_.stop();
  motion_.end();
}

void Glide::step() {
  if (!motion_.step(static_cast<double>(since_step_.restart()) / 1000)) end();
}

}  // namespace orvello
