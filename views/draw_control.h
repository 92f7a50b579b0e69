// How a drawing in progress is told to give up, and how it shows what it has so far.
#pragma once

#include <atomic>
#include <functional>
#include <utility>

namespace orvello {

// The draw state's value that makes the drawing under way stale.
inline constexpr int kRedrawRequested = 100;

// One drawing's view of the draw state word and of the worker that runs it.
class DrawControl {
 public:
  // `progress` may be empty; it may be called often and decides itself when to show something.
  DrawControl(const std::atomic<int>& draw_state, const std::function<void()>& progress)
      : draw_state_(draw_state), progress_(progress) {}

  bool stopped() const { return draw_state_.load(std::memory_order_relaxed) == kRedrawRequested; }
  void progress() const {
    if (progress_) progress_();
  }

 private:
  const std::atomic<int>& draw_state_;
  const std::function<void()>& progress_;
};

}  // namespace orvello
