// Actions that the platform's message loop runs later.
#pragma once

#include <map>
#include <memory>

#include "hosts/shared/program_loop.h"
#include "hosts/win32/native_window.h"

namespace orvello {

class LoopTimers : public NativeWindow {
 public:
  LoopTimers();
  // It does not outlive this. Never waits less than the platform's shortest time.
  std::unique_ptr<LoopTimer> start(int milliseconds, bool once, std::function<void()> action);

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override;

 private:
  class Waiting;
  struct Action {
    bool once = false;
    std::shared_ptr<const std::function<void()>> run;
  };
  std::map<UINT_PTR, Action> actions_;
  UINT_PTR next_ = 1;
};

}  // namespace orvello
