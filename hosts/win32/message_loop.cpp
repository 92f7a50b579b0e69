#include "hosts/win32/message_loop.h"

#include <utility>
#include <vector>

#include "hosts/win32/native_window.h"

namespace orvello {

int MessageLoop::add_filter(Filter filter) {
  filters_.emplace(next_filter_, std::move(filter));
  return next_filter_++;
}

void MessageLoop::remove_filter(int id) { filters_.erase(id); }

int MessageLoop::run() {
  run_until([] { return false; });
  return quit_code_.value_or(0);
}

bool MessageLoop::run_until(const std::function<bool()>& done) {
  while (!quit_code_ && !done())
    if (!take_next()) break;
  return !quit_code_;
}

void MessageLoop::deliver() {
  MSG message;
  while (!quit_code_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) take(message);
}

void MessageLoop::quit(int code) {
  if (!quit_code_) quit_code_ = code;
  PostMessageW(nullptr, WM_NULL, 0, 0);  // wakes a loop that waits
}

bool MessageLoop::take_next() {
  MSG message;
  if (GetMessageW(&message, nullptr, 0, 0) < 0) return false;
  take(message);
  return true;
}

void MessageLoop::take(MSG& message) {
  if (message.message == WM_QUIT) {  // somebody else's
    quit(static_cast<int>(message.wParam));
    return;
  }
  std::vector<int> ids;
  for (auto one = filters_.rbegin(); one != filters_.rend(); ++one) ids.push_back(one->first);
  bool taken = false;
  for (const int id : ids) {
    const auto found = filters_.find(id);
    if (found == filters_.end()) continue;
    const Filter filter = found->second;  // it may remove itself
    guarded([&] { taken = filter(message); });
    if (taken) return;
  }
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

}  // namespace orvello
