// One window for one data folder. The first process holds a lock that the system drops when it ends
// in whatever way, so that nothing stale can keep a later one out; the others reach it through a
// local socket.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace orvello {

class SingleInstance {
 public:
  explicit SingleInstance(const std::string& data_folder);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // True when this process has become, or already is, the one that shows the window. A folder in
  // which no lock can be made makes every process the first.
  bool become_first();

  enum class Joined { first, handed_over, unanswered };
  // Becomes the first, or asks the running one to come forward and to open these files (absolute
  // paths). `handed_over`: it has them. `unanswered`: it does not have them and will not, because
  // it hangs or they are too many; known after five seconds at most.
  Joined join(const std::vector<std::string>& files);

  // For the first process: readable when another one calls; -1 otherwise.
  int listening_socket() const { return listening_; }
  // Takes one call and acknowledges it: the caller must keep the files from then on. Nothing when
  // there was none, it came from another user, or who called has given up.
  std::optional<std::vector<std::string>> take_call();

 private:
  bool listen();
  enum class Answer { taken, unreachable, broken_off, none };
  Answer call(const std::string& files, std::chrono::steady_clock::time_point deadline) const;

  std::string lock_path_;
  std::string socket_path_;
  int lock_ = -1;
  int listening_ = -1;
};

}  // namespace orvello
