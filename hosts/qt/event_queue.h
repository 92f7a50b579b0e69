// What is told to the procedures of one dialog or sheet, one after the other from the message loop.
#pragma once

#include <deque>
#include <functional>
#include <memory>

namespace orvello {

class EventQueue : public std::enable_shared_from_this<EventQueue> {
 public:
  using Action = std::function<void()>;

  // Runs the action from the message loop when those before it have returned, also while one of
  // them runs a box, a menu or another dialog.
  void add(Action action);
  // For what the message loop calls: runs what waits at once, unless something is running.
  void flush();
  // Drops what waits and everything that comes.
  void stop();

 private:
  void post();

  std::deque<Action> actions_;
  bool running_ = false;
  bool stopped_ = false;
};

}  // namespace orvello
