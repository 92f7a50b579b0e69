// One window for one data folder. The first process holds a lock that the system drops when it ends
// in whatever way, so that nothing stale can keep a later one out; the others reach it through a
// local socket.
#pragma once

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

  // Asks the running one to come forward and to open these files (absolute paths). False when it
  // does not answer within two seconds.
  bool hand_over(const std::vector<std::string>& files) const;

  // For the first process: readable when another one calls; -1 otherwise.
  int listening_socket() const { return listening_; }
  // Takes one call; nothing when there was none, or it came from another user.
  std::optional<std::vector<std::string>> take_call();

 private:
  bool listen();

  std::string lock_path_;
  std::string socket_path_;
  int lock_ = -1;
  int listening_ = -1;
};

}  // namespace orvello
