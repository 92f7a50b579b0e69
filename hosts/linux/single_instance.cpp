#include "hosts/linux/single_instance.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace orvello {
namespace {

constexpr std::size_t kLongestCall = 1 << 20;
constexpr int kCallMilliseconds = 500;
constexpr char kAnswer = '+';

// A name for a socket, which may not be as long as a path.
std::string short_name(const std::string& folder) {
  std::uint64_t hash = 14695981039346656037u;
  for (unsigned char c : folder) hash = (hash ^ c) * 1099511628211u;
  static const char* digits = "0123456789abcdef";
  std::string name;
  for (int shift = 60; shift >= 0; shift -= 4) name += digits[hash >> shift & 15];
  return name;
}

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

bool wait_for(int file, short events) {
  pollfd entry{file, events, 0};
  return ::poll(&entry, 1, kCallMilliseconds) > 0;
}

bool same_user(int channel) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return ::getsockopt(channel, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
         peer.uid == ::getuid();
}

bool send_all(int channel, const std::string& bytes) {
  std::size_t sent = 0;
  while (sent < bytes.size()) {
    const ssize_t count =
        ::send(channel, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count > 0)
      sent += static_cast<std::size_t>(count);
    else if (errno != EAGAIN || !wait_for(channel, POLLOUT))
      return false;
  }
  return true;
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
  listen();
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

bool SingleInstance::hand_over(const std::vector<std::string>& files) const {
  const sockaddr_un address = address_of(socket_path_);
  // The running process may hold the lock and not listen yet.
  for (int attempt = 0; attempt < 20; ++attempt) {
    const int channel = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (channel < 0) return false;
    if (::connect(channel, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        same_user(channel)) {
      std::string call;
      for (const std::string& file : files) call += file + '\0';
      char answer = 0;
      bool good = send_all(channel, call) && ::shutdown(channel, SHUT_WR) == 0;
      for (int wait = 0; good && wait < 4 && !answer; ++wait)
        if (wait_for(channel, POLLIN)) good = ::recv(channel, &answer, 1, 0) == 1;
      ::close(channel);
      return good && answer == kAnswer;
    }
    ::close(channel);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return false;
}

std::optional<std::vector<std::string>> SingleInstance::take_call() {
  if (listening_ < 0) return std::nullopt;
  const int channel = ::accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (channel < 0) return std::nullopt;
  std::string call;
  bool complete = false;
  while (same_user(channel) && call.size() < kLongestCall && wait_for(channel, POLLIN)) {
    char buffer[4096];
    const ssize_t count = ::recv(channel, buffer, sizeof buffer, 0);
    if (count > 0) {
      call.append(buffer, static_cast<std::size_t>(count));
      continue;
    }
    complete = count == 0;
    break;
  }
  if (complete) send_all(channel, std::string(1, kAnswer));
  ::close(channel);
  if (!complete) return std::nullopt;
  std::vector<std::string> files;
  for (std::size_t start = 0; start < call.size();) {
    const std::size_t end = call.find('\0', start);
    files.push_back(call.substr(start, end - start));
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return files;
}

}  // namespace orvello
