#include "files/file_reasons.h"

#include <cerrno>
#include <system_error>

namespace orvello {

std::string reason_of(int error) {
  switch (error) {
    case ENOSPC:
#ifdef EDQUOT
    case EDQUOT:
#endif
    case EFBIG:  // a limit on the file's size
      return "the disk is full";
    case EACCES:
    case EPERM:
      return "permission denied";
    case EROFS:
      return "it lies on a disk that is read-only";
    case ENOENT:
      return "there is no such file or folder";
    case EISDIR:
      return "it is a folder";
    case ENOTDIR:
      return "a part of its path is no folder";
    case ELOOP:
      return "its links go round in a circle";
    case EWOULDBLOCK:
      return "another program has it locked";
    case EPIPE:
      return "nobody reads it any more";
    case EIO:
      return "the disk fails";
    default:
      return std::generic_category().message(error);
  }
}

std::string cannot_be_read(const std::string& path, int error) {
  return path + " cannot be read: " + reason_of(error) + ".";
}

std::string cannot_be_written(const std::string& path, int error) {
  return path + " cannot be written: " + reason_of(error) + ".";
}

}  // namespace orvello
