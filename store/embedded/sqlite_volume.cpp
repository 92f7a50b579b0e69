#include "store/embedded/sqlite_volume.h"

#include <cerrno>
#include <cstring>
#include <thread>

#include "files/descriptor.h"
#include "store/embedded/sqlite/checked_pages.h"
#include "store/embedded/sqlite/transaction.h"

namespace orvello {
namespace {

constexpr std::uint32_t kApplicationId = 0x4F725653;  // "OrVS"
constexpr std::uint32_t kFormat = 1;
constexpr std::chrono::milliseconds kPatience{400}, kRest{2000}, kPause{10};

constexpr const char* kSchema =
    "CREATE TABLE databases(id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT NOT NULL UNIQUE,"
    " sort_property INTEGER NOT NULL);"
    "CREATE TABLE records(id INTEGER PRIMARY KEY AUTOINCREMENT,"
    " database INTEGER NOT NULL REFERENCES databases(id) ON DELETE CASCADE);"
    "CREATE INDEX records_of_database ON records(database);"
    "CREATE TABLE properties(record INTEGER NOT NULL REFERENCES records(id) ON DELETE CASCADE,"
    " property INTEGER NOT NULL, value NOT NULL, PRIMARY KEY(record, property)) WITHOUT ROWID;"
    "PRAGMA application_id=1332893267; PRAGMA user_version=1;";
static_assert(kApplicationId == 1332893267 && kFormat == 1);

DatabaseError reason_of_errno() {
  switch (errno) {
    case ENOSPC:
#ifdef EDQUOT
    case EDQUOT:
#endif
      return DatabaseError::disk_full;
    case EWOULDBLOCK:
      return DatabaseError::sharing_violation;
    case EACCES:
    case EPERM:
    case EROFS:
      return DatabaseError::access_denied;
    default:
      return DatabaseError::invalid_parameter;
  }
}

// Looks at the file's head without opening it as a database, which alone could change it.
DatabaseError look_at_head(const std::string& path) {
  const auto status = status_of_file(path);
  // A folder, or a pipe that would be waited for.
  if (status && status->kind != FileKind::file) return DatabaseError::invalid_parameter;
  // A journal means that a writer died: only the database itself can tell what the head was.
  const auto journal = status_of_file(path + "-journal");
  if (journal && journal->size > 0) return DatabaseError::none;
  const Descriptor file(open_file_to_read(path));
  if (!file) return errno == ENOENT ? DatabaseError::none : reason_of_errno();
  unsigned char head[100];
  const auto count = read_bytes_at(file.number(), head, sizeof head, 0);
  if (count < 0) return DatabaseError::damaged;
  if (count == 0) return DatabaseError::none;  // created, and the creator died
  const bool ours = count == sizeof head && std::memcmp(head, "SQLite format 3", 16) == 0 &&
                    big_endian(head + 68) == kApplicationId && big_endian(head + 60) == kFormat;
  return ours ? DatabaseError::none : DatabaseError::damaged;
}

// A file that may only be read will do when it is there.
bool have_private_file(const std::string& path) {
  if (Descriptor file(open_or_make_file(path)); file) return file.close();
  return (errno == EACCES || errno == EROFS) && may_read_file(path);
}

}  // namespace

bool LockPatience::wait(int) {
  const auto now = std::chrono::steady_clock::now();
  if (now - last_ > kRest) left_ = kPatience;
  if (left_ <= kPause) return false;
  std::this_thread::sleep_for(kPause);
  last_ = std::chrono::steady_clock::now();
  left_ -= std::chrono::ceil<std::chrono::milliseconds>(last_ - now);
  return true;
}

std::unique_ptr<SqliteVolume> SqliteVolume::open(const std::string& path, LockPatience& patience,
                                                 DatabaseError& error) {
  error = look_at_head(path);
  if (error != DatabaseError::none) return nullptr;
  if (!have_private_file(path)) {
    error = reason_of_errno();
    return nullptr;
  }
  const bool writable = may_write_file(path);
  std::unique_ptr<SqliteVolume> volume(new SqliteVolume(
      path, writable ? SqliteConnection::Access::read_write : SqliteConnection::Access::read_only,
      patience));
  if (volume->connection_.good() && volume->prepare_format()) return volume;
  error = volume->reason();
  return nullptr;
}

// Texts are kept as UTF-16, so that halves of surrogate pairs survive.
bool SqliteVolume::prepare_format() {
  if (!connection_.run("PRAGMA encoding='UTF-16le'; PRAGMA synchronous=EXTRA;"
                       " PRAGMA foreign_keys=ON; PRAGMA secure_delete=ON"))
    return false;
  constexpr const char* count_tables = "SELECT count(*) FROM sqlite_master";
  const auto tables = connection_.number(count_tables);
  if (!tables) return false;
  if (*tables == 0) {
    if (!connection_.reserve_checks()) return false;
    SqliteTransaction change(connection_, SqliteTransaction::Kind::write);
    if (!change) return false;
    // Another process may have been quicker.
    const auto now = connection_.number(count_tables);
    if (!now || (*now == 0 && !connection_.run(kSchema)) || !change.commit()) return false;
  }
  // Each by itself would take the file's lock and give it back.
  const SqliteTransaction look(connection_, SqliteTransaction::Kind::read);
  if (!look) return false;
  const auto application = connection_.number("PRAGMA application_id");
  const auto format = connection_.number("PRAGMA user_version");
  if (!application || !format) return false;
  const bool ours = *application == kApplicationId && *format == kFormat;
  const auto sound = ours ? connection_.finds_sound("PRAGMA quick_check(1)") : false;
  if (sound == false) connection_.note_damage();
  return sound == true;
}

// When a file could not be opened or written, the database does not always hand on why.
bool SqliteVolume::out_of_room() const {
  switch (connection_.failure().system_error) {
    case ENOSPC:
#ifdef EDQUOT
    case EDQUOT:
#endif
    case EFBIG:  // the process's own limit
      return true;
  }
  return disk_is_full(folder_of(path_));
}

DatabaseError SqliteVolume::reason() const {
  switch (connection_.failure().fault) {
    case SqliteFault::none:
      return DatabaseError::none;
    case SqliteFault::no_memory:
      return DatabaseError::not_enough_memory;
    case SqliteFault::full:
    case SqliteFault::write_failed:  // a quota or a limit is a full disk to the person
      return DatabaseError::disk_full;
    case SqliteFault::busy:
      return DatabaseError::sharing_violation;
    case SqliteFault::read_only:
    case SqliteFault::unfinished_change:
      return DatabaseError::access_denied;
    case SqliteFault::cannot_open:
      return out_of_room() ? DatabaseError::disk_full : DatabaseError::invalid_parameter;
    case SqliteFault::misuse:
      return DatabaseError::invalid_parameter;
    case SqliteFault::disk:
      return out_of_room() ? DatabaseError::disk_full : DatabaseError::damaged;
    default:
      return DatabaseError::damaged;
  }
}

}  // namespace orvello
