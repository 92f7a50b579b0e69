#include "store/embedded/calendar_file.h"

#include <cerrno>
#include <cstdint>
#include <cstring>

#include "files/descriptor.h"
#include "files/file_reasons.h"
#include "store/embedded/embedded_schema.h"
#include "store/embedded/fresh_calendar.h"
#include "store/embedded/sqlite/checked_pages.h"

namespace orvello {
namespace {

struct FileHead {
  unsigned char bytes[100] = {};
  std::uint64_t size = 0;  // of the file
  std::uint32_t word(int at) const { return big_endian(bytes + at); }
  int format() const { return static_cast<int>(word(60)); }
  int reserved_bytes() const { return bytes[20]; }
};

// The file's own words, looked at before SQLite does, since that might recover or rewrite a file
// that is none of ours.
std::string read_head(const std::string& path, FileHead& head) {
  const Descriptor file(open_file_to_read(path));
  const auto status = file ? status_of_file(file.number()) : std::nullopt;
  if (!status) return cannot_be_read(path, errno);
  if (status->kind != FileKind::file) return path + " is not a file.";
  head.size = status->size;
  const auto length = read_bytes_at(file.number(), head.bytes, sizeof head.bytes, 0);
  if (length < 0) return cannot_be_read(path, errno);
  if (length == 0) return path + " is damaged: it is empty.";
  if (length < std::int64_t{sizeof head.bytes} ||
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
  const auto journal = status_of_file(path + "-journal");
  if (journal && journal->kind != FileKind::file) return path + "-journal is not a file.";
  if (journal && journal->size > 0) return "";
  const std::uint32_t stored = head.word(16) >> 16;
  const std::uint64_t page = stored == 1 ? 65536 : stored;
  if (head.word(28) * page > head.size) return path + " is damaged: its end is missing.";
  return "";
}

}  // namespace

std::string fault_in_calendar_file(const std::string& path) {
  FileHead head;
  return fault_in_head(path, head);
}

std::string make_calendar_file_ready(const std::string& path) {
  if (!status_of_file(path)) {
    if (errno != ENOENT) return path + " cannot be opened: " + reason_of(errno) + ".";
    if (auto fault = create_calendar_file(path); !fault.empty()) return fault;
  }
  FileHead head;
  if (auto fault = fault_in_head(path, head); !fault.empty()) return fault;
  return head.format() < kFormat ? upgrade_calendar_file(path) : "";
}

}  // namespace orvello
