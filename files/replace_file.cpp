#include "files/replace_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "files/descriptor.h"
#include "files/file_reasons.h"

namespace orvello {
namespace {

constexpr std::string_view kPrefix = ".orvello-", kSuffix = ".part";
constexpr std::size_t kRandomLetters = 6;
constexpr std::time_t kLeftBehind = 3600;  // seconds

// Also what a database in the making had beside it.
bool is_ours(std::string_view name) {
  constexpr std::string_view kJournal = "-journal";
  if (name.ends_with(kJournal)) name.remove_suffix(kJournal.size());
  return name.size() == kPrefix.size() + kRandomLetters + kSuffix.size() &&
         name.starts_with(kPrefix) && name.ends_with(kSuffix);
}

// The name, the owner and the age say that it is one of this program's, and the lock that the
// process which made it is gone.
void remove_left_behind(const std::string& folder) {
  DIR* listing = ::opendir(folder.c_str());
  if (!listing) return;
  while (const dirent* entry = ::readdir(listing)) {
    if (!is_ours(entry->d_name)) continue;
    const std::string path = folder + "/" + entry->d_name;
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat info {};
    if (!file || ::fstat(file.number(), &info) != 0 || !S_ISREG(info.st_mode) ||
        info.st_uid != ::geteuid() || info.st_nlink != 1 ||
        std::time(nullptr) - info.st_mtime < kLeftBehind)
      continue;
    if (::flock(file.number(), LOCK_EX | LOCK_NB) == 0) ::unlink(path.c_str());
  }
  ::closedir(listing);
}

// The file itself where the path is a link to it; empty with `errno` for one that leads nowhere.
std::string followed(const std::string& path) {
  char* real = ::realpath(path.c_str(), nullptr);
  if (!real) return {};
  std::string result(real);
  std::free(real);
  return result;
}

// An existing target's mode, and its owner where this process may give it away.
bool take_over_mode(int file, const struct stat& target) {
  if (target.st_uid != ::geteuid() || target.st_gid != ::getegid()) {
    const int given = ::fchown(file, target.st_uid, target.st_gid);
    // Not ours to give: the file is the writer's from now on, for the same people.
    if (given != 0 && ::fchown(file, static_cast<uid_t>(-1), target.st_gid) != 0)
      return ::fchmod(file, target.st_mode & 0700) == 0;
  }
  return ::fchmod(file, target.st_mode & 0777) == 0;
}

Result<std::size_t> write_plainly(const std::string& path, std::string_view content) {
  const auto failure = [&path](int error) {
    return Result<std::size_t>::failure(cannot_be_written(path, error));
  };
  Descriptor file(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file && errno == ENXIO)
    return Result<std::size_t>::failure(path + " cannot be written: nobody reads from it.");
  if (!file) return failure(errno);
  ::fcntl(file.number(), F_SETFL, 0);  // now that it is open, slow readers are waited for
  if (!write_all(file.number(), content) || !file.close()) return failure(errno);
  return content.size();
}

}  // namespace

std::string folder_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

bool sync_folder(const std::string& folder) {
  const Descriptor file(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!file) return false;
  // Some file systems have nothing to sync in a folder, and say so in this way.
  return ::fsync(file.number()) == 0 || errno == EINVAL || errno == ENOTSUP;
}

FileInTheMaking::FileInTheMaking(const std::string& target)
    : target_(target),
      path_(folder_of(target) + "/" + std::string(kPrefix) + "XXXXXX" + std::string(kSuffix)) {
  remove_left_behind(folder_of(target));
  // Creates with O_EXCL and 0600, and so follows no link.
  file_ = ::mkostemps(path_.data(), static_cast<int>(kSuffix.size()), O_CLOEXEC);
  if (file_ >= 0) ::flock(file_, LOCK_EX | LOCK_NB);
}

FileInTheMaking::~FileInTheMaking() {
  const int error = errno;
  if (!path_.empty() && file_ >= 0) ::unlink(path_.c_str());
  if (file_ >= 0) ::close(file_);
  errno = error;
}

bool FileInTheMaking::put_in_place(Taken taken) {
  if (file_ < 0 || ::fsync(file_) != 0) return false;
  if (taken == Taken::replace) {
    if (::rename(path_.c_str(), target_.c_str()) != 0) return false;
  } else if (::renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, target_.c_str(), RENAME_NOREPLACE) !=
             0) {
    if (errno != EINVAL && errno != ENOSYS) return false;
    // A file system that cannot do so: the name is taken with an empty file first.
    Descriptor claim(::open(target_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!claim || ::rename(path_.c_str(), target_.c_str()) != 0) return false;
  }
  path_.clear();
  return true;
}

Result<std::size_t> replace_file(const std::string& path, std::string_view content) {
  const auto failure = [&path](int error) {
    return Result<std::size_t>::failure(cannot_be_written(path, error));
  };
  struct stat info {};
  const bool exists = ::lstat(path.c_str(), &info) == 0;
  if (!exists && errno != ENOENT) return failure(errno);
  const bool link = exists && S_ISLNK(info.st_mode);
  if (link && ::stat(path.c_str(), &info) != 0)
    return Result<std::size_t>::failure(path + " cannot be written: it is a link that leads to " +
                                        "no file.");
  if (exists && S_ISDIR(info.st_mode)) return failure(EISDIR);
  if (exists && (S_ISFIFO(info.st_mode) || S_ISCHR(info.st_mode)))
    return write_plainly(path, content);
  if (exists && !S_ISREG(info.st_mode))
    return Result<std::size_t>::failure(path + " cannot be written: it is no file.");
  // Replacing needs the folder's permission only; a file that is write-protected is meant to stay.
  if (exists && ::access(path.c_str(), W_OK) != 0) return failure(errno);
  const std::string target = link ? followed(path) : path;
  if (target.empty()) return failure(errno);
  FileInTheMaking made(target);
  if (!made.exists() || (exists && !take_over_mode(made.descriptor(), info)) ||
      !write_all(made.descriptor(), content) || !made.put_in_place(FileInTheMaking::Taken::replace))
    return failure(errno);
  if (!sync_folder(folder_of(target)))
    return Result<std::size_t>::failure(
        path + " was written, but its folder could not be synced: " + reason_of(errno) + ".");
  return content.size();
}

Result<bool> create_whole_file(const std::string& path, std::string_view content) {
  struct stat info {};
  if (::lstat(path.c_str(), &info) == 0) return false;
  FileInTheMaking made(path);
  if (made.exists() && write_all(made.descriptor(), content) &&
      made.put_in_place(FileInTheMaking::Taken::keep) && sync_folder(folder_of(path)))
    return true;
  if (errno == EEXIST) return false;
  return Result<bool>::failure(cannot_be_written(path, errno));
}

}  // namespace orvello
