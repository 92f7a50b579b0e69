#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "files/descriptor.h"
#include "files/system_files.h"

namespace orvello {
namespace {

constexpr FileTime kSecond = 1'000'000'000;

FileKind kind_of(mode_t mode) {
  if (S_ISREG(mode)) return FileKind::file;
  if (S_ISDIR(mode)) return FileKind::folder;
  return S_ISFIFO(mode) || S_ISCHR(mode) ? FileKind::channel : FileKind::other;
}

FileStatus status_from(const struct stat& info) {
  FileStatus status;
  status.kind = kind_of(info.st_mode);
  status.is_link = S_ISLNK(info.st_mode);
  status.is_own = info.st_uid == ::geteuid();
  status.names = static_cast<unsigned>(info.st_nlink);
  status.size = static_cast<std::uint64_t>(info.st_size);
  status.changed = FileTime{info.st_mtim.tv_sec} * kSecond + info.st_mtim.tv_nsec;
  status.disk = info.st_dev, status.number = info.st_ino;
  return status;
}

int no_link(FileLinks links) { return links == FileLinks::look_at ? O_NOFOLLOW : 0; }

}  // namespace

std::optional<FileStatus> status_of_file(const std::string& path, FileLinks links) {
  struct stat info {};
  const int result =
      links == FileLinks::follow ? ::stat(path.c_str(), &info) : ::lstat(path.c_str(), &info);
  return result == 0 ? std::optional(status_from(info)) : std::nullopt;
}

std::optional<FileStatus> status_of_file(int file) {
  struct stat info {};
  return ::fstat(file, &info) == 0 ? std::optional(status_from(info)) : std::nullopt;
}

bool may_read_file(const std::string& path) { return ::access(path.c_str(), R_OK) == 0; }
bool may_write_file(const std::string& path) { return ::access(path.c_str(), W_OK) == 0; }

int open_file_to_read(const std::string& path, FileLinks links) {
  return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | no_link(links));
}

int open_or_make_file(const std::string& path, FileLinks links) {
  return ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | no_link(links), 0600);
}

int make_new_file(const std::string& path) {
  return ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
}

int open_file_to_append(const std::string& path) {
  return ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK, 0600);
}

int open_channel_to_write(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (file >= 0) ::fcntl(file, F_SETFL, 0);
  return file;
}

bool close_descriptor(int file) { return ::close(file) == 0; }

std::int64_t read_bytes(int file, char* bytes, std::size_t count) {
  ssize_t got = 0;
  do got = ::read(file, bytes, count);
  while (got < 0 && errno == EINTR);
  return got;
}

std::int64_t read_bytes_at(int file, void* bytes, std::size_t count, std::uint64_t offset) {
  ssize_t got = 0;
  do got = ::pread(file, bytes, count, static_cast<off_t>(offset));
  while (got < 0 && errno == EINTR);
  return got;
}

bool write_all(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(file, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

bool hold_file(int file, FileHold hold) {
  int result = 0;
  do result = ::flock(file, (hold == FileHold::alone ? LOCK_EX : LOCK_SH) | LOCK_NB);
  while (result != 0 && errno == EINTR);
  return result == 0;
}

bool sync_file(int file) { return ::fsync(file) == 0; }

bool sync_folder(const std::string& folder) {
  const Descriptor file(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!file) return false;
  // Some file systems have nothing to sync in a folder, and say so in this way.
  return ::fsync(file.number()) == 0 || errno == EINVAL || errno == ENOTSUP;
}

bool set_time_of_change(int file, FileTime time) {
  const timespec moment{static_cast<time_t>(time / kSecond), static_cast<long>(time % kSecond)};
  const timespec times[2] = {moment, moment};
  return ::futimens(file, times) == 0;
}

bool take_over_rights(int file, const std::string& existing) {
  struct stat target {};
  if (::stat(existing.c_str(), &target) != 0) return false;
  if (target.st_uid != ::geteuid() || target.st_gid != ::getegid()) {
    const int given = ::fchown(file, target.st_uid, target.st_gid);
    // Not ours to give: the file is the writer's from now on, for the same people.
    if (given != 0 && ::fchown(file, static_cast<uid_t>(-1), target.st_gid) != 0)
      return ::fchmod(file, target.st_mode & 0700) == 0;
  }
  return ::fchmod(file, target.st_mode & 0777) == 0;
}

bool remove_file(const std::string& path) { return ::unlink(path.c_str()) == 0; }

bool rename_file(const std::string& from, const std::string& to, TakenName taken) {
  if (taken == TakenName::replace) return ::rename(from.c_str(), to.c_str()) == 0;
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // A file system that cannot do so: the name is taken with an empty file first.
  const Descriptor claim(make_new_file(to));
  return claim && ::rename(from.c_str(), to.c_str()) == 0;
}

bool name_file_twice(const std::string& path, const std::string& other) {
  return ::link(path.c_str(), other.c_str()) == 0;
}

bool make_folder(const std::string& path) { return ::mkdir(path.c_str(), 0700) == 0; }

std::optional<std::vector<std::string>> names_in_folder(const std::string& folder) {
  DIR* listing = ::opendir(folder.c_str());
  if (!listing) return std::nullopt;
  std::vector<std::string> names;
  const auto next = [listing] {
    errno = 0;
    return ::readdir(listing);
  };
  while (const dirent* entry = next())
    if (const std::string_view name = entry->d_name; name != "." && name != "..")
      names.emplace_back(name);
  const int broken = errno;  // of the last one
  ::closedir(listing);
  errno = broken;
  return broken == 0 ? std::optional(std::move(names)) : std::nullopt;
}

std::string real_path(const std::string& path) {
  char* real = ::realpath(path.c_str(), nullptr);
  if (!real) return {};
  std::string result(real);
  std::free(real);
  return result;
}

bool disk_is_full(const std::string& folder) {
  struct statvfs room {};
  return ::statvfs(folder.c_str(), &room) == 0 &&
         (room.f_bavail == 0 || (room.f_files > 0 && room.f_favail == 0));
}

std::string folder_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

std::string path_in(const std::string& folder, std::string_view name) {
  std::string path = folder;
  if (!path.ends_with('/')) path += '/';
  return path.append(name);
}

std::string name_in_path(const std::string& path) { return path.substr(path.rfind('/') + 1); }

std::string folded_name(std::string name) { return name; }

bool is_absolute_path(std::string_view path) { return path.starts_with('/'); }

int errno_of_system(int error) { return error; }

bool open_files_can_move() { return true; }

}  // namespace orvello
