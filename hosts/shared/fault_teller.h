// Where a fault of the program's own ends up that nothing else has caught: it is written to
// standard error and to the log and told to the person, each fault once, and the calendar goes on.
// Without memory it ends when that has been told. User-interface thread.
#pragma once

#include <functional>
#include <set>
#include <string>

namespace orvello {

// What to tell a person about what is being caught; `ends`: and the program cannot go on.
std::string caught_sentence(bool ends);

class FaultTeller {
 public:
  std::function<void(const std::string& sentence)> log;
  // From the message loop, once the events that are under way have returned.
  std::function<void(const std::string& sentence, bool ends)> tell;
  std::function<void(std::function<void()>)> later;  // from the loop; what it throws comes here
  std::function<void()> give_up;                     // not even that was possible: end now

  // Does something from outside the message loop. False when something came out of it: that has
  // been told by then, as the end of the program.
  bool guard(const std::function<void()>& action);
  // In a catch block.
  void take_caught() noexcept;

 private:
  bool note(const std::string& sentence);  // false for what is known already
  void tell_now(const std::string& sentence, bool ends);
  std::set<std::string> known_;
  bool telling_ = false, ending_ = false;
};

}  // namespace orvello
