// The message loop as the program's own work sees it: things to be done later. User-interface
// thread. What is thrown by an action goes where the host's callbacks send it.
#pragma once

#include <functional>
#include <memory>

namespace orvello {

// An action that waits: dropped with this, at the latest. May go within the action itself.
class LoopTimer {
 public:
  virtual ~LoopTimer() = default;
};

class ProgramLoop {
 public:
  virtual ~ProgramLoop() = default;
  virtual std::unique_ptr<LoopTimer> once(int milliseconds, std::function<void()> action) = 0;
  virtual std::unique_ptr<LoopTimer> every(int milliseconds, std::function<void()> action) = 0;
  // Draws what waits to be drawn, and lets nothing in that a person does.
  virtual void draw_meanwhile() = 0;
};

}  // namespace orvello
