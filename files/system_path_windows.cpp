#include "files/system_path_windows.h"

#include <windows.h>

#include <cerrno>
#include <cstring>

#include "base/text.h"
#include "files/system_files.h"

namespace orvello {
namespace {

constexpr std::wstring_view kAnyLength = L"\\\\?\\", kShare = L"UNC\\", kDevice = L"\\\\.\\";

bool is_separator(char c) { return c == '/' || c == '\\'; }

// Up to which a path is a drive, a share or the top of one: "C:\", "\\server\share".
std::size_t root_size(std::string_view path) {
  if (path.size() >= 2 && path[1] == ':') return path.size() > 2 && is_separator(path[2]) ? 3 : 2;
  return !path.empty() && is_separator(path[0]) ? 1 : 0;
}

}  // namespace

std::wstring system_path(const std::string& path) {
  errno = ENOENT;
  const Text text = to_utf16(path);
  const std::wstring name(text.begin(), text.end());
  if (name.empty() || name.find(L'\0') != std::wstring::npos) return {};
  if (name.starts_with(kAnyLength)) return name;
  const DWORD size = GetFullPathNameW(name.c_str(), 0, nullptr, nullptr);
  std::wstring whole(size, L'\0');
  whole.resize(GetFullPathNameW(name.c_str(), size, whole.data(), nullptr));
  if (whole.empty() || whole.size() >= size) return fail_with_last_error(), std::wstring();
  if (whole.starts_with(kDevice)) return errno = EINVAL, std::wstring();
  const bool share = whole.starts_with(L"\\\\");
  whole.replace(0, share ? 2 : 0, std::wstring(kAnyLength).append(share ? kShare : L""));
  return whole;
}

std::string path_from_system(std::wstring_view path) {
  std::wstring plain(path);
  if (plain.starts_with(kAnyLength)) plain.erase(0, kAnyLength.size());
  if (plain.starts_with(kShare) && path.starts_with(kAnyLength))
    plain.replace(0, kShare.size(), L"\\\\");
  return to_utf8(Text(plain.begin(), plain.end()));
}

std::string folder_of(const std::string& path) {
  const std::size_t root = root_size(path), sign = path.find_last_of("/\\");
  if (sign == std::string::npos || sign < root)
    return root == 0 ? "." : path.substr(0, root) + (root == 2 ? "." : "");
  return path.substr(0, sign);
}

std::string path_in(const std::string& folder, std::string_view name) {
  std::string path = folder;
  if (path.empty() || !is_separator(path.back())) path += '\\';
  return path.append(name);
}

std::string name_in_path(const std::string& path) {
  return path.substr(path.find_last_of("/\\:") + 1);
}

std::string folded_name(std::string name) {
  for (char& c : name)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  return name;
}

bool is_absolute_path(std::string_view path) {
  return root_size(path) == 3 ||
         (path.size() > 2 && is_separator(path[0]) && is_separator(path[1]));
}

int errno_of_system(int error) {
  switch (static_cast<DWORD>(error)) {
    case ERROR_SUCCESS:
      return 0;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
      return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_PRIVILEGE_NOT_HELD:
    case ERROR_INVALID_OWNER:
      return EACCES;
    case ERROR_WRITE_PROTECT:
      return EROFS;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_DRIVE_LOCKED:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_BUSY:
      return EWOULDBLOCK;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case 1295:  // ERROR_DISK_QUOTA_EXCEEDED
      return ENOSPC;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return EEXIST;
    case ERROR_DIRECTORY:
      return ENOTDIR;
    case ERROR_CANT_RESOLVE_FILENAME:
      return ELOOP;
    case ERROR_FILENAME_EXCED_RANGE:
      return ENAMETOOLONG;
    case ERROR_TOO_MANY_OPEN_FILES:
      return EMFILE;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
      return ENOMEM;
    case ERROR_BROKEN_PIPE:
    case ERROR_NO_DATA:
    case ERROR_PIPE_NOT_CONNECTED:
      return EPIPE;
    case ERROR_CRC:
    case ERROR_NOT_READY:
    case ERROR_READ_FAULT:
    case ERROR_WRITE_FAULT:
    case ERROR_SEEK:
    case ERROR_GEN_FAILURE:
    case ERROR_IO_DEVICE:
    case ERROR_FILE_CORRUPT:
    case ERROR_DISK_CORRUPT:
      return EIO;
    case ERROR_FILE_TOO_LARGE:
      return EFBIG;
    case ERROR_NOT_SAME_DEVICE:
      return EXDEV;
    case ERROR_NOT_SUPPORTED:
    case ERROR_INVALID_FUNCTION:
    case ERROR_CALL_NOT_IMPLEMENTED:
      return ENOSYS;
    default:
      return EINVAL;
  }
}

bool fail_with_last_error() {
  errno = errno_of_system(static_cast<int>(GetLastError()));
  return false;
}

}  // namespace orvello
