#include "hosts/win32/program/loop_timers.h"

#include <algorithm>

namespace orvello {

class LoopTimers::Waiting : public LoopTimer {
 public:
  Waiting(LoopTimers& timers, UINT_PTR id) : timers_(timers), id_(id) {}
  ~Waiting() override {
    KillTimer(timers_.window(), id_);
    timers_.actions_.erase(id_);
  }
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;

 private:
  LoopTimers& timers_;
  UINT_PTR id_;
};

LoopTimers::LoopTimers() {
  Creation creation;
  creation.window_class = L"OrvelloTimers";
  creation.parent = HWND_MESSAGE;
  create_own(creation);
}

std::unique_ptr<LoopTimer> LoopTimers::start(int milliseconds, bool once,
                                             std::function<void()> action) {
  const UINT_PTR id = next_++;
  actions_[id] = {once, std::make_shared<const std::function<void()>>(std::move(action))};
  SetTimer(window(), id, static_cast<UINT>(std::max(milliseconds, 0)), nullptr);
  return std::make_unique<Waiting>(*this, id);
}

LRESULT LoopTimers::message(UINT id, WPARAM wparam, LPARAM lparam) {
  if (id != WM_TIMER) return by_default(id, wparam, lparam);
  const auto action = actions_.find(wparam);
  if (action == actions_.end()) return 0;  // one that was waiting in the queue as it went
  if (action->second.once) KillTimer(window(), wparam);
  const auto run = action->second.run;  // it may let go of its timer
  (*run)();
  return 0;
}

}  // namespace orvello
