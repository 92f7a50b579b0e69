#include "store/embedded/calendar_check.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

#include "files/descriptor.h"
#include "files/file_reasons.h"
#include "files/input_file.h"
#include "store/embedded/calendar_file.h"
#include "store/embedded/embedded_schema.h"
#include "store/embedded/sqlite/checked_pages.h"
#include "store/embedded/sqlite/transaction.h"

namespace orvello {
namespace {

constexpr std::size_t kHeaderSize = 100;
constexpr std::chrono::milliseconds kMoment{200};
constexpr std::uint64_t kAnySize = ~std::uint64_t{0};

CalendarCheck finding(CalendarHealth health, std::string reason) {
  return {health, std::move(reason), 0};
}

// Of the pages that begin in the first `most` bytes. True for a file without checksums.
bool page_sums_agree(int file, std::int64_t size, std::int64_t most) {
  unsigned char header[kHeaderSize] = {};
  if (read_bytes_at(file, header, sizeof header, 0) != std::int64_t{sizeof header}) return false;
  const std::int64_t stored = header[16] << 8 | header[17];
  const std::int64_t page = stored == 1 ? 65536 : stored;
  if (header[20] != kCheckedBytes) return true;  // a file without sums
  if (page < 512 || size % page != 0 || big_endian(header + 28) != size / page) return false;
  std::vector<char> bytes(static_cast<std::size_t>(page));
  for (std::int64_t at = 0; at < std::min(size, most); at += page) {
    if (read_bytes_at(file, bytes.data(), bytes.size(), static_cast<std::uint64_t>(at)) != page)
      return false;
    std::uint64_t sum = 0;
    std::memcpy(&sum, bytes.data() + page - kCheckedBytes, sizeof sum);
    if (sum != page_checksum(static_cast<std::uint32_t>(at / page + 1),
                             {bytes.data(), bytes.size() - kCheckedBytes}))
      return false;
  }
  return true;
}

// Before SQLite sees the file, since that might write to one that is none of ours.
CalendarCheck check_header(const std::string& path) {
  const auto file = open_regular_file(path, kAnySize);
  if (!file && errno == ENOENT) return finding(CalendarHealth::missing, path + " is missing.");
  if (!file) return finding(CalendarHealth::unreadable, file.reason());
  unsigned char header[kHeaderSize] = {};
  const auto length = read_bytes_at((*file)->number(), header, sizeof header, 0);
  if (length < 0) return finding(CalendarHealth::unreadable, cannot_be_read(path, errno));
  if (length == 0) return finding(CalendarHealth::missing, path + " is empty.");
  const bool newer = length == std::int64_t{kHeaderSize} &&
                     std::memcmp(header, "SQLite format 3", 16) == 0 &&
                     big_endian(header + 68) == kApplicationId && big_endian(header + 60) > kFormat;
  // The number may be what is damaged: its page tells.
  const auto status = status_of_file((*file)->number());
  if (newer && status &&
      page_sums_agree((*file)->number(), static_cast<std::int64_t>(status->size), 1))
    return finding(CalendarHealth::newer, path + " was written by a newer version of Orvello.");
  std::string fault = newer ? path + " was written by a newer version of Orvello, or it is damaged."
                            : fault_in_calendar_file(path);
  if (!fault.empty()) return finding(CalendarHealth::damaged, std::move(fault));
  return finding(CalendarHealth::good, "");
}

CalendarCheck finding(const SqliteFailure& failure, const std::string& path) {
  // SQLite's own words: a table is missing.
  if (is_damage(failure.fault) || failure.fault == SqliteFault::other)
    return finding(CalendarHealth::damaged, path + " is damaged.");
  return finding(CalendarHealth::unreadable, sentence_of(failure, path));
}

// What the tables say about each other, which no index knows.
constexpr const char* kContradictions =
    "SELECT (SELECT count(*) FROM exceptions WHERE oid NOT IN (SELECT oid FROM items))"
    " + (SELECT count(*) FROM recipients WHERE oid NOT IN (SELECT oid FROM items))"
    " + (SELECT count(*) FROM items WHERE recurring NOT IN (0, 1)"
    "    OR (recurring = 1 AND pattern IS NULL AND rules IS NULL))";

}  // namespace

CalendarCheck check_calendar(const std::string& path, std::chrono::milliseconds patience) {
  const CalendarCheck header = check_header(path);
  if (header.health != CalendarHealth::good) return header;
  // What a killed process left half done is taken back by whoever opens the file for writing.
  const bool writable = may_write_file(path);
  using Access = SqliteConnection::Access;
  SqliteConnection connection(path, writable ? Access::read_write : Access::read_only,
                              SqliteConnection::PageChecks::on, patience);
  if (!connection.good()) return finding(connection.failure(), path);
  const SqliteTransaction reading(connection, SqliteTransaction::Kind::read);
  const auto sound = reading ? connection.finds_sound("PRAGMA integrity_check(1)") : std::nullopt;
  if (sound == false) connection.note_damage();
  const auto contradictions = sound == true ? connection.number(kContradictions) : std::nullopt;
  if (!contradictions) return finding(connection.failure(), path);
  if (*contradictions > 0)
    return finding(CalendarHealth::damaged, path + " is damaged: it contradicts itself.");
  const auto items = connection.number("SELECT count(*) FROM items");
  if (!items) return finding(connection.failure(), path);
  return {CalendarHealth::good, "", *items};
}

CalendarCheck glance_at_calendar(const std::string& path, std::int64_t most) {
  const CalendarCheck header = check_header(path);
  if (header.health != CalendarHealth::good) return header;
  {
    const auto file = open_regular_file(path, kAnySize);
    if (!file) return finding(CalendarHealth::unreadable, file.reason());
    const auto status = status_of_file((*file)->number());
    const auto size = static_cast<std::int64_t>(status ? status->size : 0);
    if (!status || size > most || page_sums_agree((*file)->number(), size, most)) return header;
  }
  // Another process may be writing at this moment: only who holds the lock can tell.
  return check_calendar(path, kMoment);
}

}  // namespace orvello
