#include "hosts/win32/window_post.h"

#include <utility>

namespace orvello {
namespace {

constexpr UINT kWake = WM_APP + 1;

}  // namespace

WindowPost::WindowPost(Listener listener) : listener_(std::move(listener)) {
  Creation creation;
  creation.window_class = L"OrvelloPost";
  creation.parent = HWND_MESSAGE;
  create_own(creation);
}

void WindowPost::wake() {
  // It can only fail when the queue is full of what will be taken, and each taking wakes again.
  PostMessageW(window(), kWake, 0, 0);
}

void WindowPost::put(std::function<void()> action) {
  {
    const std::lock_guard lock(lock_);
    waiting_.push_back(std::move(action));
  }
  wake();
}

void WindowPost::post(const Message& message) {
  put([this, message] { listener_.message(message); });
}

void WindowPost::later(std::function<void()> action) { put(std::move(action)); }

void WindowPost::invalidate() {
  if (!invalidated_.exchange(true)) wake();
}

void WindowPost::take() {
  if (invalidated_.exchange(false)) listener_.invalidated();
  std::function<void()> action;
  {
    const std::lock_guard lock(lock_);
    if (waiting_.empty()) return;
    action = std::move(waiting_.front());
    waiting_.pop_front();
    // An action may run a loop of its own, in which the others must arrive too.
    if (!waiting_.empty()) wake();
  }
  action();
}

void WindowPost::take_all() {
  std::size_t count = 0;
  {
    const std::lock_guard lock(lock_);
    count = waiting_.size();
  }
  // What these post in their turn is the answer to them, once.
  for (count *= 2; count > 0; --count) take();
}

void WindowPost::start_timer(int id, int milliseconds) {
  timers_.insert(id);
  SetTimer(window(), static_cast<UINT_PTR>(id), static_cast<UINT>(std::max(1, milliseconds)),
           nullptr);
}

void WindowPost::stop_timer(int id) {
  if (timers_.erase(id) > 0) KillTimer(window(), static_cast<UINT_PTR>(id));
}

void WindowPost::stop_timers() {
  while (!timers_.empty()) stop_timer(*timers_.begin());
}

LRESULT WindowPost::message(UINT id, WPARAM wparam, LPARAM lparam) {
  if (id == kWake) {
    take();
    return 0;
  }
  if (id == WM_TIMER) {
    const int timer = static_cast<int>(wparam);
    if (timers_.contains(timer)) listener_.timer(timer);  // else its last message came late
    return 0;
  }
  return by_default(id, wparam, lparam);
}

}  // namespace orvello
