// What is told to the procedures of one dialog or sheet, one after the other from the message loop.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <utility>

namespace orvello {

class EventQueue : public std::enable_shared_from_this<EventQueue> {
 public:
  using Action = std::function<void()>;
  // `post` runs an action from the message loop as soon as what is under way has returned.
  explicit EventQueue(std::function<void(Action)> post) : post_(std::move(post)) {}

  // Runs the action from the message loop when those before it have returned, also while one of
  // them runs a box, a menu or another dialog.
  void add(Action action) {
    if (stopped_) return;
    actions_.push_back(std::move(action));
    if (!running_) post();
  }
  // For what the message loop calls: runs what waits at once, unless something is running.
  void flush();
  // Drops what waits and everything that comes.
  void stop() {
    stopped_ = true;
    actions_.clear();
  }

 private:
  // While an action runs. One that fails goes up through here: the others are still to come.
  struct Running {
    explicit Running(EventQueue& running) : queue(running) { queue.running_ = true; }
    ~Running() {
      queue.running_ = false;
      if (!queue.actions_.empty()) queue.post();
    }
    EventQueue& queue;
  };

  void post() {
    post_([waiting = weak_from_this()] {
      if (const auto queue = waiting.lock()) queue->flush();
    });
  }

  std::function<void(Action)> post_;
  std::deque<Action> actions_;
  bool running_ = false;
  bool stopped_ = false;
};

inline void EventQueue::flush() {
  if (running_) return;
  const auto alive = shared_from_this();  // an action may end its dialog
  const Running running(*this);
  while (!actions_.empty()) {
    const Action action = std::move(actions_.front());
    actions_.pop_front();
    action();
  }
}

}  // namespace orvello
