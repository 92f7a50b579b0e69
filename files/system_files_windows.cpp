#include "files/system_files.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>

#include "files/private_rights_windows.h"
#include "files/system_path_windows.h"

namespace orvello {
namespace {

// Others may do with an open file what they could on any system.
constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kReadWrite = GENERIC_READ | GENERIC_WRITE;
constexpr FileTime kTick = 100;                            // nanoseconds
constexpr FileTime kEpoch = 116'444'736'000'000'000;       // ticks from 1601 to 1970
constexpr std::uint64_t kHoldAt = std::uint64_t{1} << 62;  // behind all that anybody reads
// Who looks through new files lets go of them soon.
constexpr int kTries = 20;
constexpr DWORD kPause = 20;  // milliseconds

std::uint64_t wide_number(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

HANDLE handle_of(int file) {
  return file < 0 ? INVALID_HANDLE_VALUE : reinterpret_cast<HANDLE>(_get_osfhandle(file));
}

class SystemHandle {
 public:
  explicit SystemHandle(HANDLE handle) : handle_(handle) {}
  ~SystemHandle() {
    if (*this) CloseHandle(handle_);
  }
  SystemHandle(const SystemHandle&) = delete;
  SystemHandle& operator=(const SystemHandle&) = delete;
  explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

HANDLE open_handle(const std::wstring& path, DWORD access, DWORD how, FileLinks links,
                   SECURITY_ATTRIBUTES* rights = nullptr) {
  if (path.empty()) return INVALID_HANDLE_VALUE;
  const DWORD link = links == FileLinks::look_at ? FILE_FLAG_OPEN_REPARSE_POINT : 0;
  const HANDLE handle = CreateFileW(path.c_str(), access, kShared, rights, how,
                                    FILE_FLAG_BACKUP_SEMANTICS | link, nullptr);
  if (handle == INVALID_HANDLE_VALUE) fail_with_last_error();
  return handle;
}

bool is_link(HANDLE handle) {
  FILE_ATTRIBUTE_TAG_INFO info{};
  return GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &info, sizeof info) &&
         (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
         (info.ReparseTag == IO_REPARSE_TAG_SYMLINK ||
          info.ReparseTag == IO_REPARSE_TAG_MOUNT_POINT);
}

int number_for(HANDLE handle, FileLinks links) {
  if (handle == INVALID_HANDLE_VALUE) return -1;
  const bool device = GetFileType(handle) != FILE_TYPE_DISK;
  if (!device && (links == FileLinks::follow || !is_link(handle)))
    return _open_osfhandle(reinterpret_cast<intptr_t>(handle), _O_BINARY | _O_NOINHERIT);
  CloseHandle(handle);
  errno = device ? EINVAL : ELOOP;
  return -1;
}

std::optional<FileStatus> status_of_handle(HANDLE handle) {
  BY_HANDLE_FILE_INFORMATION info{};
  FileStatus status;
  if (GetFileType(handle) != FILE_TYPE_DISK) return status;
  if (!GetFileInformationByHandle(handle, &info)) return fail_with_last_error(), std::nullopt;
  status.kind =
      (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileKind::folder : FileKind::file;
  status.is_own = true;  // whose files these are is said by their rights
  status.is_hidden = (info.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
  status.names = info.nNumberOfLinks;
  status.size = wide_number(info.nFileSizeHigh, info.nFileSizeLow);
  const FILETIME& changed = info.ftLastWriteTime;
  const std::uint64_t ticks = wide_number(changed.dwHighDateTime, changed.dwLowDateTime);
  status.changed = (static_cast<FileTime>(ticks) - kEpoch) * kTick;
  status.disk = info.dwVolumeSerialNumber;
  status.number = wide_number(info.nFileIndexHigh, info.nFileIndexLow);
  return status;
}

// Tries again as long as somebody else stands in the way.
template <typename Call>
bool patiently(Call call) {
  for (int i = 0;; ++i) {
    if (call()) return true;
    fail_with_last_error();
    if (i + 1 >= kTries || (errno != EWOULDBLOCK && errno != EACCES)) return false;
    Sleep(kPause);
  }
}

// Takes the place of a file that others have open, which older systems and some disks cannot.
bool rename_over_open_file(const std::wstring& from, const std::wstring& to) {
  constexpr auto kClass = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);  // FileRenameInfoEx
  constexpr DWORD kReplace = 1, kOpenFilesToo = 2;
  const SystemHandle file(
      open_handle(from, DELETE | GENERIC_WRITE, OPEN_EXISTING, FileLinks::look_at));
  if (!file) return false;
  const std::size_t bytes = to.size() * sizeof(wchar_t);
  std::vector<std::max_align_t> memory(
      (sizeof(FILE_RENAME_INFO) + bytes) / sizeof(std::max_align_t) + 1);
  auto* info = reinterpret_cast<FILE_RENAME_INFO*>(memory.data());
  const DWORD flags = kReplace | kOpenFilesToo;
  std::memcpy(info, &flags, sizeof flags);
  info->FileNameLength = static_cast<DWORD>(bytes);
  std::memcpy(info->FileName, to.data(), bytes);
  return SetFileInformationByHandle(file.get(), kClass, info,
                                    static_cast<DWORD>(sizeof *info + bytes)) &&
         FlushFileBuffers(file.get());
}

bool may_open(const std::string& path, DWORD access) {
  return static_cast<bool>(
      SystemHandle(open_handle(system_path(path), access, OPEN_EXISTING, FileLinks::follow)));
}

}  // namespace

std::optional<FileStatus> status_of_file(const std::string& path, FileLinks links) {
  const std::wstring name = system_path(path);
  if (name.empty() && errno == EINVAL) return FileStatus{};  // a device
  const SystemHandle handle(open_handle(name, FILE_READ_ATTRIBUTES, OPEN_EXISTING, links));
  if (!handle) return std::nullopt;
  auto status = status_of_handle(handle.get());
  if (status && links == FileLinks::look_at && is_link(handle.get()))
    status->is_link = true, status->kind = FileKind::other;
  return status;
}

std::optional<FileStatus> status_of_file(int file) { return status_of_handle(handle_of(file)); }

bool may_read_file(const std::string& path) { return may_open(path, GENERIC_READ); }

bool may_write_file(const std::string& path) {
  const auto status = status_of_file(path);
  if (!status) return false;
  // Some who may do anything could write to it all the same.
  const DWORD marks = GetFileAttributesW(system_path(path).c_str());
  if (status->kind == FileKind::file && (marks & FILE_ATTRIBUTE_READONLY) != 0)
    return errno = EACCES, false;
  // To an open folder, writing is making a file in it.
  return may_open(path, status->kind == FileKind::folder ? FILE_ADD_FILE : GENERIC_WRITE) ||
         errno == EWOULDBLOCK;  // later
}

int open_file_to_read(const std::string& path, FileLinks links) {
  HANDLE handle = INVALID_HANDLE_VALUE;
  const std::wstring name = system_path(path);
  if (name.empty()) return -1;
  patiently([&] {
    handle = open_handle(name, GENERIC_READ, OPEN_EXISTING, links);
    return handle != INVALID_HANDLE_VALUE || GetLastError() == ERROR_ACCESS_DENIED;
  });
  return number_for(handle, links);
}

int open_or_make_file(const std::string& path, FileLinks links) {
  PrivateRights rights(PrivateRights::Of::file);
  return number_for(
      open_handle(system_path(path), kReadWrite, OPEN_ALWAYS, links, rights.attributes()), links);
}

int make_new_file(const std::string& path) {
  PrivateRights rights(PrivateRights::Of::file);
  return number_for(open_handle(system_path(path), kReadWrite | WRITE_DAC, CREATE_NEW,
                                FileLinks::look_at, rights.attributes()),
                    FileLinks::look_at);
}

int open_file_to_append(const std::string& path) {
  PrivateRights rights(PrivateRights::Of::file);
  return number_for(open_handle(system_path(path), FILE_APPEND_DATA | SYNCHRONIZE, OPEN_ALWAYS,
                                FileLinks::follow, rights.attributes()),
                    FileLinks::follow);
}

int open_channel_to_write(const std::string&) {
  errno = EINVAL;
  return -1;
}

bool close_descriptor(int file) { return _close(file) == 0; }

std::int64_t read_bytes(int file, char* bytes, std::size_t count) {
  DWORD got = 0;
  const auto most = static_cast<DWORD>(std::min<std::size_t>(count, 1 << 30));
  if (ReadFile(handle_of(file), bytes, most, &got, nullptr)) return got;
  // A pipe's other end has gone: that is its end.
  if (GetLastError() == ERROR_BROKEN_PIPE || GetLastError() == ERROR_HANDLE_EOF) return 0;
  return fail_with_last_error(), -1;
}

std::int64_t read_bytes_at(int file, void* bytes, std::size_t count, std::uint64_t offset) {
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(offset);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  DWORD got = 0;
  const auto most = static_cast<DWORD>(std::min<std::size_t>(count, 1 << 30));
  if (ReadFile(handle_of(file), bytes, most, &got, &place)) return got;
  if (GetLastError() == ERROR_HANDLE_EOF) return 0;
  return fail_with_last_error(), -1;
}

bool write_all(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto piece = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1 << 20));
    if (!WriteFile(handle_of(file), bytes.data(), piece, &written, nullptr))
      return fail_with_last_error();
    bytes.remove_prefix(written);
  }
  return true;
}

bool hold_file(int file, FileHold hold) {
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(kHoldAt);
  place.OffsetHigh = static_cast<DWORD>(kHoldAt >> 32);
  const DWORD how = hold == FileHold::alone ? LOCKFILE_EXCLUSIVE_LOCK : 0;
  return LockFileEx(handle_of(file), how | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) ||
         fail_with_last_error();
}

bool sync_file(int file) { return FlushFileBuffers(handle_of(file)) || fail_with_last_error(); }

// A name that is given here is written through to the disk.
bool sync_folder(const std::string& folder) { return status_of_file(folder).has_value(); }

bool set_time_of_change(int file, FileTime time) {
  const auto ticks = static_cast<std::uint64_t>(time / kTick + kEpoch);
  const FILETIME moment{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  return SetFileTime(handle_of(file), nullptr, nullptr, &moment) || fail_with_last_error();
}

bool take_over_rights(int file, const std::string& existing) {
  copy_rights(system_path(existing), handle_of(file));
  return true;
}

bool remove_file(const std::string& path) {
  const std::wstring name = system_path(path);
  return !name.empty() && patiently([&] { return DeleteFileW(name.c_str()); });
}

bool rename_file(const std::string& from, const std::string& to, TakenName taken) {
  const std::wstring old_name = system_path(from), new_name = system_path(to);
  if (old_name.empty() || new_name.empty()) return false;
  if (taken == TakenName::keep)
    return patiently(
        [&] { return MoveFileExW(old_name.c_str(), new_name.c_str(), MOVEFILE_WRITE_THROUGH); });
  if (rename_over_open_file(old_name, new_name)) return true;
  const bool renamed = patiently([&] {
    return MoveFileExW(old_name.c_str(), new_name.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
  });
  // One that somebody has open is refused in the same words as one that is write-protected.
  if (!renamed && errno == EACCES && may_write_file(to)) errno = EWOULDBLOCK;
  return renamed;
}

bool name_file_twice(const std::string& path, const std::string& other) {
  const std::wstring old_name = system_path(path), new_name = system_path(other);
  return !old_name.empty() && !new_name.empty() &&
         (CreateHardLinkW(new_name.c_str(), old_name.c_str(), nullptr) || fail_with_last_error());
}

bool make_folder(const std::string& path) {
  const std::wstring name = system_path(path);
  PrivateRights rights(PrivateRights::Of::folder);
  return !name.empty() &&
         (CreateDirectoryW(name.c_str(), rights.attributes()) || fail_with_last_error());
}

std::optional<std::vector<std::string>> names_in_folder(const std::string& folder) {
  const std::wstring name = system_path(path_in(folder, "*"));
  if (name.empty()) return std::nullopt;
  WIN32_FIND_DATAW entry{};
  const HANDLE listing = FindFirstFileW(name.c_str(), &entry);
  std::vector<std::string> names;
  if (listing == INVALID_HANDLE_VALUE) {
    // The top of a disk has no entry for itself.
    if (GetLastError() == ERROR_FILE_NOT_FOUND) return names;
    return fail_with_last_error(), std::nullopt;
  }
  do {
    const std::wstring_view each = entry.cFileName;
    if (each != L"." && each != L"..") names.push_back(path_from_system(each));
  } while (FindNextFileW(listing, &entry));
  const DWORD end = GetLastError();
  FindClose(listing);
  SetLastError(end);
  if (end != ERROR_NO_MORE_FILES) return fail_with_last_error(), std::nullopt;
  return names;
}

std::string real_path(const std::string& path) {
  const SystemHandle file(
      open_handle(system_path(path), FILE_READ_ATTRIBUTES, OPEN_EXISTING, FileLinks::follow));
  if (!file) return {};
  std::wstring name(MAX_PATH, L'\0');
  DWORD size = GetFinalPathNameByHandleW(file.get(), name.data(), MAX_PATH, 0);
  if (size >= name.size()) {
    name.resize(size);
    size = GetFinalPathNameByHandleW(file.get(), name.data(), size, 0);
  }
  if (size == 0) return fail_with_last_error(), std::string();
  return path_from_system({name.data(), size});
}

bool disk_is_full(const std::string& folder) {
  ULARGE_INTEGER free{};
  const std::wstring name = system_path(folder);
  return !name.empty() && GetDiskFreeSpaceExW(name.c_str(), &free, nullptr, nullptr) &&
         free.QuadPart == 0;
}

bool open_files_can_move() { return false; }

}  // namespace orvello
