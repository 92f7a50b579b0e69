#include "store/embedded/calendar_restore.h"

#include <cerrno>

#include "files/file_reasons.h"
#include "files/input_file.h"
#include "files/replace_file.h"
#include "store/embedded/calendar_check.h"
#include "store/embedded/sqlite/transaction.h"

namespace orvello {
namespace {

using Kept = Result<std::string>;

constexpr std::uint64_t kAnySize = ~std::uint64_t{0};
constexpr std::size_t kPiece = 1 << 20;
constexpr int kMostNames = 1000;
constexpr std::chrono::milliseconds kPatience{5000};

bool exists(const std::string& path) {
  return status_of_file(path, FileLinks::look_at).has_value();
}

// False with `errno`.
bool copy_bytes(int from, int to) {
  std::string piece(kPiece, '\0');
  for (;;) {
    const std::int64_t count = read_bytes(from, piece.data(), piece.size());
    if (count <= 0) return count == 0;
    if (!write_all(to, {piece.data(), static_cast<std::size_t>(count)})) return false;
  }
}

bool copy_file(const std::string& from, const std::string& to) {
  const auto source = open_regular_file(from, kAnySize);
  FileInTheMaking made(to);
  return source && made.exists() && copy_bytes((*source)->number(), made.descriptor()) &&
         made.put_in_place(TakenName::keep);
}

// A second name for the file, so that it is never without one.
Kept keep(const std::string& calendar, const std::string& kept) {
  for (int number = 1; number <= kMostNames; ++number) {
    const std::string path = kept + (number > 1 ? "-" + std::to_string(number) : "") + ".db";
    if (exists(path) || exists(path + "-journal")) continue;
    if (name_file_twice(calendar, path) || copy_file(calendar, path)) return path;
    if (errno != EEXIST) return Kept::failure(cannot_be_written(path, errno));
  }
  return Kept::failure(cannot_be_written(kept + ".db", EEXIST));
}

}  // namespace

bool is_in_use(const std::string& calendar) {
  if (check_calendar(calendar).health == CalendarHealth::newer) return false;
  SqliteConnection connection(calendar, SqliteConnection::Access::read_write,
                              SqliteConnection::PageChecks::on, kPatience);
  if (!connection.good()) return false;
  const SqliteTransaction alone(connection, SqliteTransaction::Kind::alone);
  return !alone && connection.failure().fault == SqliteFault::busy;
}

Kept replace_calendar(const std::string& calendar, const std::string& copy,
                      const std::string& kept) {
  const auto source = open_regular_file(copy, kAnySize);
  if (!source) return Kept::failure(source.reason());
  FileInTheMaking made(calendar);
  if (!made.exists() || !copy_bytes((*source)->number(), made.descriptor()))
    return Kept::failure(cannot_be_written(calendar, errno));
  // The time of change says that nothing is newer than the copy.
  if (const auto status = status_of_file((*source)->number()))
    (void)set_time_of_change(made.descriptor(), status->changed);
  if (const auto check = check_calendar(made.path()); check.health != CalendarHealth::good)
    return Kept::failure(copy + " is damaged.");
  Kept keeping = exists(calendar) ? keep(calendar, kept) : Kept("");
  if (!keeping) return keeping;
  const auto give_up = [&] {
    const int error = errno;
    if (!keeping->empty()) remove_file(*keeping);
    return Kept::failure(cannot_be_written(calendar, error));
  };
  // A journal that is left could not be played back, and must not be into another file.
  const std::string journal = calendar + "-journal";
  const std::string kept_journal = (keeping->empty() ? kept + ".db" : *keeping) + "-journal";
  if (exists(journal) && !rename_file(journal, kept_journal, TakenName::replace)) return give_up();
  if (!sync_folder(folder_of(calendar))) return give_up();
  if (!made.put_in_place(TakenName::replace)) {
    const int error = errno;
    if (exists(kept_journal)) rename_file(kept_journal, journal, TakenName::replace);
    errno = error;
    return give_up();
  }
  if (!sync_folder(folder_of(calendar)))
    return Kept::failure(
        calendar + " was restored, but its folder could not be synced: " + reason_of(errno) + ".");
  return keeping;
}

}  // namespace orvello
