// The way in from other threads, and for what happens later: a window that nobody sees, with a
// queue. Timers are its own, so that they need no other window.
#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <mutex>
#include <set>

#include "hosts/win32/native_window.h"
#include "ports/main_window.h"

namespace orvello {

class WindowPost : public NativeWindow {
 public:
  struct Listener {
    std::function<void(const Message&)> message;
    std::function<void()> invalidated;
    std::function<void(int id)> timer;
  };
  explicit WindowPost(Listener listener);

  // Any thread.
  void post(const Message& message);
  void invalidate();
  void later(std::function<void()> action);
  // What waits now, at once: there may be no later. Of the user-interface thread.
  void take_all();

  void start_timer(int id, int milliseconds);
  void stop_timer(int id);
  void stop_timers();

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override;

 private:
  void put(std::function<void()> action);
  void wake();
  void take();

  Listener listener_;
  std::mutex lock_;
  std::deque<std::function<void()>> waiting_;
  std::atomic<bool> invalidated_{false};
  std::set<int> timers_;
};

}  // namespace orvello
