// An action that the toolkit's message loop runs later.
#pragma once

#include <QTimer>

#include "hosts/qt/callbacks.h"
#include "hosts/shared/program_loop.h"

namespace orvello {

class QtLoopTimer : public LoopTimer {
 public:
  QtLoopTimer(int milliseconds, bool once, std::function<void()> action)
      : timer_(std::make_unique<QTimer>()) {
    timer_->setSingleShot(once);
    on_signal(timer_.get(), &QTimer::timeout, timer_.get(), [action = std::move(action)] {
      const auto kept = action;  // it may let go of this timer
      kept();
    });
    timer_->start(milliseconds);
  }
  ~QtLoopTimer() override {
    timer_->stop();
    // Its signal may be under way; and where no loop runs any more, it goes with the application.
    if (!QCoreApplication::instance()) return;
    timer_->setParent(QCoreApplication::instance());
    timer_.release()->deleteLater();
  }
  QtLoopTimer(const QtLoopTimer&) = delete;
  QtLoopTimer& operator=(const QtLoopTimer&) = delete;

 private:
  std::unique_ptr<QTimer> timer_;
};

}  // namespace orvello
