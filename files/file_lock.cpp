#include "files/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>

namespace orvello {
namespace {

constexpr int kTries = 20;
constexpr useconds_t kPause = 20000;  // microseconds: 400 ms in all

}  // namespace

FileLock::FileLock(const std::string& path, Kind kind) {
  constexpr int kFlags = O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW;
  file_ = Descriptor(::open(path.c_str(), O_RDWR | O_CREAT | kFlags, 0600));
  if (!file_) file_ = Descriptor(::open(path.c_str(), O_RDONLY | kFlags));
  if (!file_) {
    granted_ = kind == Kind::shared;
    return;
  }
  for (int i = 0; i < kTries && !granted_; ++i) {
    if (i > 0) ::usleep(kPause);
    granted_ = ::flock(file_.number(), (kind == Kind::alone ? LOCK_EX : LOCK_SH) | LOCK_NB) == 0;
    if (!granted_ && errno != EWOULDBLOCK && errno != EINTR) granted_ = kind == Kind::shared;
  }
}

}  // namespace orvello
