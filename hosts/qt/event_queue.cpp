#include "hosts/qt/event_queue.h"

#include <QCoreApplication>

#include "hosts/qt/callbacks.h"

namespace orvello {

void EventQueue::add(Action action) {
  if (stopped_) return;
  actions_.push_back(std::move(action));
  if (!running_) post();
}

void EventQueue::post() {
  const auto run = [waiting = weak_from_this()] {
    if (const auto queue = waiting.lock()) queue->flush();
  };
  later(QCoreApplication::instance(), run);
}

void EventQueue::flush() {
  if (running_) return;
  const auto alive = shared_from_this();  // an action may end its dialog
  // An action that fails goes up through here: the others are still to come.
  struct Running {
    explicit Running(EventQueue& running) : queue(running) { queue.running_ = true; }
    ~Running() {
      queue.running_ = false;
      if (!queue.actions_.empty()) queue.post();
    }
    EventQueue& queue;
  } running(*this);
  while (!actions_.empty()) {
    const Action action = std::move(actions_.front());
    actions_.pop_front();
    action();
  }
}

void EventQueue::stop() {
  stopped_ = true;
  actions_.clear();
}

}  // namespace orvello
