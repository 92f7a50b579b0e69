// The one place that takes messages from the platform's queue: the program's own loop, and loops
// inside of it that something modal runs. User-interface thread.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <optional>

namespace orvello {

class MessageLoop {
 public:
  // Looks at a message before its window gets it; true: it has been dealt with. Windows that are
  // gone by then are no fault.
  using Filter = std::function<bool(MSG& message)>;

  MessageLoop() = default;
  MessageLoop(const MessageLoop&) = delete;
  MessageLoop& operator=(const MessageLoop&) = delete;

  // The newest is asked first. A filter may add and remove others, and itself.
  int add_filter(Filter filter);
  void remove_filter(int id);

  // Until `quit`; its code.
  int run();
  // A loop inside of another: until `done`, which is asked after every message and must not throw.
  // False: the program ends, and whoever waited gives up as if a person had closed it.
  bool run_until(const std::function<bool()>& done);
  // What has come so far, painting included; nothing is waited for. For what takes long.
  void deliver();

  void quit(int code);  // ends all loops, also one that has yet to begin
  std::optional<int> quit_code() const { return quit_code_; }

 private:
  bool take_next();
  void take(MSG& message);

  std::map<int, Filter> filters_;
  int next_filter_ = 1;
  std::optional<int> quit_code_;
};

}  // namespace orvello
