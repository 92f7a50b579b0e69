#include "store/embedded/calendar_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

#include "store/embedded/embedded_schema.h"
#include "store/embedded/fresh_calendar.h"
#include "store/embedded/sqlite/checked_pages.h"

namespace orvello {
namespace {

struct FileHead {
  unsigned char bytes[100] = {};
  struct stat status = {};
  std::uint32_t word(int at) const { return big_endian(bytes + at); }
  int format() const { return static_cast<int>(word(60)); }
  int reserved_bytes() const { return bytes[20]; }
};

// The file's own words, looked at before SQLite does, since that might recover or rewrite a file
// that is none of ours.
std::string read_head(const std::string& path, FileHead& head) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return path + ": " + std::strerror(errno) + ".";
  const bool known = ::fstat(file, &head.status) == 0;
  const bool regular = known && S_ISREG(head.status.st_mode);
  const auto length = regular ? ::pread(file, head.bytes, sizeof head.bytes, 0) : 0;
  const int error = errno;
  ::close(file);
  if (known && !regular) return path + " is not a file.";
  if (!known || length < 0) return path + " cannot be read: " + std::strerror(error) + ".";
  if (length == 0) return path + " is damaged: it is empty.";
  if (length < static_cast<ssize_t>(sizeof head.bytes) ||
      std::memcmp(head.bytes, "SQLite format 3", 16) != 0)
    return path + " is not an Orvello calendar, or it is damaged.";
  return "";
}

std::string fault_in_head(const std::string& path, FileHead& head) {
  if (auto fault = read_head(path, head); !fault.empty()) return fault;
  if (head.word(68) != kApplicationId) return path + " is not an Orvello calendar.";
  if (head.format() > kFormat)
    return path + " was written by a newer version of Orvello (format " +
           std::to_string(head.format()) + "; this version reads format " +
           std::to_string(kFormat) + ").";
  // Two words say whether the pages are checked, so that no damage to one can turn that off.
  const int expected = head.format() == kFormatWithoutChecksums ? 0 : kCheckedBytes;
  if (head.format() < kFormatWithoutChecksums || head.reserved_bytes() != expected)
    return path + " is damaged: its header contradicts itself.";
  // A rollback journal may still hold what the file lacks.
  struct stat journal = {};
  const bool has_journal = ::stat((path + "-journal").c_str(), &journal) == 0;
  if (has_journal && !S_ISREG(journal.st_mode)) return path + "-journal is not a file.";
  if (has_journal && journal.st_size > 0) return "";
  const std::uint32_t stored = head.word(16) >> 16;
  const std::int64_t page = stored == 1 ? 65536 : stored;
  if (static_cast<std::int64_t>(head.word(28)) * page > head.status.st_size)
    return path + " is damaged: its end is missing.";
  return "";
}

}  // namespace

std::string fault_in_calendar_file(const std::string& path) {
  FileHead head;
  return fault_in_head(path, head);
}

std::string make_calendar_file_ready(const std::string& path) {
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0) {
    if (errno != ENOENT) return path + " cannot be opened: " + std::strerror(errno) + ".";
    if (auto fault = create_calendar_file(path); !fault.empty()) return fault;
  }
  FileHead head;
  if (auto fault = fault_in_head(path, head); !fault.empty()) return fault;
  return head.format() < kFormat ? upgrade_calendar_file(path) : "";
}

}  // namespace orvello
