#include "hosts/linux/single_instance.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <thread>

#include "base/hash.h"

namespace orvello {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kLongestCall = 16 << 20;     // more than a command line can have
constexpr std::chrono::milliseconds kTaking{500};  // what the first process gives one call
constexpr std::chrono::seconds kJoining{5};
constexpr std::chrono::milliseconds kPause{50};
constexpr char kAnswer = '+';

// A name for a socket, which may not be as long as a path.
std::string short_name(const std::string& folder) { return StableHash().add(folder).text(); }

std::string real_folder(const std::string& folder) {
  char* real = ::realpath(folder.c_str(), nullptr);
  std::string result = real ? real : folder;
  std::free(real);
  return result;
}

sockaddr_un address_of(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
  return address;
}

bool wait_for(int file, short events, Clock::time_point deadline) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
  pollfd entry{file, events, 0};
  return left > 0 && ::poll(&entry, 1, static_cast<int>(left)) > 0;
}

// Closes what it holds.
class Channel {
 public:
  explicit Channel(int number) : number_(number) {}
  ~Channel() {
    if (number_ >= 0) ::close(number_);
  }
  Channel(const Channel&) = delete;
  Channel& operator=(const Channel&) = delete;
  explicit operator bool() const { return number_ >= 0; }
  int number() const { return number_; }

 private:
  int number_;
};

bool same_user(int channel) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return ::getsockopt(channel, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
         peer.uid == ::getuid();
}

bool send_all(int channel, const std::string& bytes, Clock::time_point deadline) {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count =
        ::send(channel, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count > 0)
      sent += static_cast<std::size_t>(count);
    else if (errno != EAGAIN || !wait_for(channel, POLLOUT, deadline))
      return false;
  }
  return true;
}

// All that the other end sends until it has finished; nothing when it does not, or sends too much.
std::optional<std::string> receive_all(int channel, Clock::time_point deadline) {
  std::string bytes;
  while (bytes.size() <= kLongestCall && wait_for(channel, POLLIN, deadline)) {
    char buffer[65536];
    const ssize_t count = ::recv(channel, buffer, sizeof buffer, 0);
    if (count == 0) return bytes;
    if (count > 0) bytes.append(buffer, static_cast<std::size_t>(count));
    if (count < 0 && errno != EAGAIN && errno != EINTR) break;
  }
  return std::nullopt;
}

std::string runtime_folder() {
  const char* folder = std::getenv("XDG_RUNTIME_DIR");
  return folder && *folder == '/' && ::access(folder, W_OK) == 0 ? folder : "/tmp";
}

}  // namespace

SingleInstance::SingleInstance(const std::string& data_folder) {
  const std::string folder = real_folder(data_folder);
  lock_path_ = folder + "/orvello.lock";
  socket_path_ =
      runtime_folder() + "/orvello-" + std::to_string(::getuid()) + "-" + short_name(folder);
}

SingleInstance::~SingleInstance() {
  if (listening_ >= 0) {
    ::unlink(socket_path_.c_str());
    ::close(listening_);
  }
  if (lock_ >= 0) ::close(lock_);
}

bool SingleInstance::become_first() {
  if (lock_ >= 0) return true;
  lock_ = ::open(lock_path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (lock_ < 0) return true;
  if (::flock(lock_, LOCK_EX | LOCK_NB) != 0) {
    const bool taken = errno == EWOULDBLOCK;
    ::close(lock_);
    lock_ = -1;
    if (taken) return false;
    return true;  // a file system without locks
  }
  // Where to call is kept in the lock's file: another start may have another environment.
  if (listen() && ::ftruncate(lock_, 0) == 0)
    (void)!::write(lock_, socket_path_.data(), socket_path_.size());
  return true;
}

bool SingleInstance::listen() {
  // Whatever has this name was left behind: its owner would hold the lock.
  ::unlink(socket_path_.c_str());
  const int channel = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (channel < 0) return false;
  const sockaddr_un address = address_of(socket_path_);
  if (::bind(channel, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::chmod(socket_path_.c_str(), 0600) != 0 || ::listen(channel, 8) != 0) {
    ::close(channel);
    return false;
  }
  listening_ = channel;
  return true;
}

SingleInstance::Joined SingleInstance::join(const std::vector<std::string>& files) {
  std::string names;
  for (const std::string& file : files) names += file + '\0';
  const auto deadline = Clock::now() + kJoining;
  while (!become_first()) {
    if (names.size() > kLongestCall) return Joined::unanswered;
    const Answer answer = call(names, deadline);
    if (answer == Answer::taken) return Joined::handed_over;
    // One that cannot be reached is starting, or ending: then this process becomes the first.
    if (answer == Answer::none || Clock::now() + kPause > deadline) return Joined::unanswered;
    std::this_thread::sleep_for(kPause);
  }
  return Joined::first;
}

SingleInstance::Answer SingleInstance::call(const std::string& files,
                                            Clock::time_point deadline) const {
  std::string path;
  std::getline(std::ifstream(lock_path_), path);
  const sockaddr_un address = address_of(path.empty() ? socket_path_ : path);
  const Channel channel(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  // While too many others call at once this fails as well.
  if (!channel ||
      ::connect(channel.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) !=
          0 ||
      !same_user(channel.number()))
    return Answer::unreachable;
  const bool sent =
      send_all(channel.number(), files, deadline) && ::shutdown(channel.number(), SHUT_WR) == 0;
  char answer = 0;
  const bool spoke = sent && wait_for(channel.number(), POLLIN, deadline);
  // Nobody can answer from here on, so that files which are said not to be opened never are.
  if (!spoke) ::shutdown(channel.number(), SHUT_RDWR);
  const ssize_t count = ::recv(channel.number(), &answer, 1, 0);
  if (count == 1 && answer == kAnswer) return Answer::taken;
  return spoke || (!sent && Clock::now() < deadline) ? Answer::broken_off : Answer::none;
}

std::optional<std::vector<std::string>> SingleInstance::take_call() {
  if (listening_ < 0) return std::nullopt;
  const Channel channel(::accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
  if (!channel || !same_user(channel.number())) return std::nullopt;
  const auto deadline = Clock::now() + kTaking;
  const auto call = receive_all(channel.number(), deadline);
  if (!call || !send_all(channel.number(), std::string(1, kAnswer), deadline)) return std::nullopt;
  std::vector<std::string> files;
  for (std::size_t start = 0; start < call->size();) {
    const std::size_t end = std::min(call->find('\0', start), call->size());
    files.push_back(call->substr(start, end - start));
    start = end + 1;
  }
  return files;
}

}  // namespace orvello
