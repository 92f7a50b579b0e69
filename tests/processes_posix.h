// Work in a process of its own: to be killed, or to be short of room.
#pragma once

#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <string>
#include <utility>

namespace orvello {

// Ends with the value that `work` returns.
template <typename Work>
pid_t start_process(Work work) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(static_cast<int>(work()));
  return child;
}

// The value of its work; -1 when it was killed.
inline int end_of(pid_t child) {
  int status = 0;
  if (child <= 0 || ::waitpid(child, &status, 0) != child) return -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

inline void kill_process(pid_t child) {
  ::kill(child, SIGKILL);
  end_of(child);
}

// Work that has a name, so that it can be done where a process cannot be divided either.
#define PROCESS_WORK(name) static int name(const std::string& argument)
using NamedWork = int (*)(const std::string& argument);
using ChildProcess = pid_t;
#define start_work(work, argument) start_named_work(#work, work, argument)
inline ChildProcess start_named_work(const char*, NamedWork work, const std::string& argument) {
  return start_process([&] { return work(argument); });
}

// `delay` counts from when the work has begun.
#define killed_after(delay, work, argument) kill_after(delay, start_work(work, argument))
inline void kill_after(int microseconds, ChildProcess child) {
  ::usleep(static_cast<useconds_t>(microseconds));
  kill_process(child);
}

// From now on no file of this process grows beyond that: the disk is full.
inline void limit_files(std::uintmax_t bytes) {
  ::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{bytes, bytes};
  ::setrlimit(RLIMIT_FSIZE, &limit);
}

// Whether `check` holds where the disk has so much room.
template <typename Check>
bool with_room(std::uintmax_t bytes, Check check) {
  return end_of(start_process([&] { return limit_files(bytes), check() ? 0 : 1; })) == 0;
}

// A process that says when it has come so far.
class ToldProcess {
 public:
  // `work(tell)` calls `tell()` as often as there is something to say.
  template <typename Work>
  explicit ToldProcess(Work work) {
    int ends[2];
    if (::pipe(ends) != 0) return;
    id_ = start_process([&] { return work([&] { return ::write(ends[1], "x", 1) == 1; }); });
    ::close(ends[1]);
    read_ = ends[0];
  }
  ~ToldProcess() {
    kill();
    ::close(read_);
  }
  ToldProcess(const ToldProcess&) = delete;
  ToldProcess& operator=(const ToldProcess&) = delete;
  // Waits for the next word; false when it ended without one.
  bool told() {
    char word = 0;
    return ::read(read_, &word, 1) == 1;
  }
  int end() { return end_of(std::exchange(id_, 0)); }
  void kill() {
    if (id_ > 0) kill_process(std::exchange(id_, 0));
  }

 private:
  pid_t id_ = 0;
  int read_ = -1;
};

}  // namespace orvello
