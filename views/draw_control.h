// How a drawing in progress is told to give up, and how it shows what it has so far.
#pragma once

#include <atomic>
#include <functional>
#include <utility>

#include "ports/canvas.h"

namespace orvello {

// The draw state word. 100 makes the drawing under way stale; the word rests at 102.
inline constexpr int kDrawRequested = 100;
inline constexpr int kDrawing = 101;
inline constexpr int kDrawFinished = 102;

// Draws one view; false when it gave up because the word went back to 100. `progress` is called
// between items and shows what there is so far, now and then.
using ViewDrawing = std::function<bool(Canvas& canvas, const std::atomic<int>& draw_state,
                                       const std::function<void()>& progress)>;

// One drawing's view of the draw state word and of the worker that runs it.
class DrawControl {
 public:
  // `progress` may be empty; it may be called often and decides itself when to show something.
  DrawControl(const std::atomic<int>& draw_state, const std::function<void()>& progress)
      : draw_state_(draw_state), progress_(progress) {}

  bool stopped() const { return draw_state_.load(std::memory_order_relaxed) == kDrawRequested; }
  void progress() const {
    if (progress_) progress_();
  }

 private:
  const std::atomic<int>& draw_state_;
  const std::function<void()>& progress_;
};

}  // namespace orvello
