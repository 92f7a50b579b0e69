#include "files/file_lock.h"

#include <cerrno>
#include <chrono>
#include <thread>

namespace orvello {
namespace {

constexpr int kLockTries = 20;
constexpr std::chrono::milliseconds kLockPause{20};  // 400 in all

}  // namespace

FileLock::FileLock(const std::string& path, Kind kind)
    : file_(open_or_make_file(path, FileLinks::look_at)) {
  if (!file_) file_ = Descriptor(open_file_to_read(path, FileLinks::look_at));
  if (!file_) {
    granted_ = kind == Kind::shared;
    return;
  }
  for (int i = 0; i < kLockTries && !granted_; ++i) {
    if (i > 0) std::this_thread::sleep_for(kLockPause);
    granted_ = hold_file(file_.number(), kind);
    if (!granted_ && errno != EWOULDBLOCK) granted_ = kind == Kind::shared;
  }
}

}  // namespace orvello
