#include "store/embedded/sqlite_volume.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <thread>

#include "store/embedded/checked_pages.h"

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
    case EDQUOT:
      return DatabaseError::disk_full;
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
  struct stat info {};
  // A folder, or a pipe that would be waited for.
  if (::stat(path.c_str(), &info) == 0 && !S_ISREG(info.st_mode))
    return DatabaseError::invalid_parameter;
  // A journal means that a writer died: only the database itself can tell what the head was.
  if (::stat((path + "-journal").c_str(), &info) == 0 && info.st_size > 0)
    return DatabaseError::none;
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return errno == ENOENT ? DatabaseError::none : reason_of_errno();
  unsigned char head[100];
  const ssize_t count = ::read(file, head, sizeof head);
  ::close(file);
  if (count < 0) return DatabaseError::damaged;
  if (count == 0) return DatabaseError::none;  // created, and the creator died
  const bool ours = count == sizeof head && std::memcmp(head, "SQLite format 3", 16) == 0 &&
                    big_endian(head + 68) == kApplicationId && big_endian(head + 60) == kFormat;
  return ours ? DatabaseError::none : DatabaseError::damaged;
}

// A file that may only be read will do when it is there.
bool have_private_file(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0) return (errno == EACCES || errno == EROFS) && ::access(path.c_str(), R_OK) == 0;
  return ::close(file) == 0;
}

// When a file could not be opened or written, the database does not always hand on why.
bool out_of_room(sqlite3* connection, const std::string& path) {
  switch (sqlite3_system_errno(connection)) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:  // the process's own limit
      return true;
  }
  struct statvfs room {};
  return ::statvfs(path.c_str(), &room) == 0 &&
         (room.f_bavail == 0 || (room.f_files > 0 && room.f_favail == 0));
}

DatabaseError reason_of(sqlite3* connection, const std::string& path) {
  if (!connection) return DatabaseError::not_enough_memory;
  const int code = sqlite3_extended_errcode(connection);
  switch (code & 0xFF) {
    case SQLITE_NOMEM:
      return DatabaseError::not_enough_memory;
    case SQLITE_FULL:
      return DatabaseError::disk_full;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return DatabaseError::sharing_violation;
    case SQLITE_PERM:
    case SQLITE_READONLY:
      return DatabaseError::access_denied;
    case SQLITE_CANTOPEN:
      return out_of_room(connection, path) ? DatabaseError::disk_full
                                           : DatabaseError::invalid_parameter;
    case SQLITE_MISUSE:
    case SQLITE_RANGE:
      return DatabaseError::invalid_parameter;
    case SQLITE_IOERR: {
      const bool reading = code == SQLITE_IOERR_READ || code == SQLITE_IOERR_SHORT_READ ||
                           code == SQLITE_IOERR_DATA || code == SQLITE_IOERR_CORRUPTFS;
      // A write that fails for another reason than a full disk is a quota or a limit on the file's
      // size: a full disk to the person.
      const bool full = code == SQLITE_IOERR_WRITE || (!reading && out_of_room(connection, path));
      return full ? DatabaseError::disk_full : DatabaseError::damaged;
    }
    default:
      return DatabaseError::damaged;
  }
}

int wait_for_lock(void* patience, int) { return static_cast<LockPatience*>(patience)->waited(); }

}  // namespace

bool LockPatience::waited() {
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
  const int access =
      ::access(path.c_str(), W_OK) == 0 ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
  sqlite3* connection = nullptr;
  const int result = sqlite3_open_v2(path.c_str(), &connection, access, checked_pages());
  std::unique_ptr<SqliteVolume> volume(new SqliteVolume(connection, path));
  if (result != SQLITE_OK) volume->note_failure();
  if (connection) sqlite3_busy_handler(connection, wait_for_lock, &patience);
  if (result == SQLITE_OK && volume->prepare_format()) return volume;
  error = volume->reason();
  return nullptr;
}

// Texts are kept as UTF-16, so that halves of surrogate pairs survive.
bool SqliteVolume::prepare_format() {
  sqlite3_extended_result_codes(connection_, 1);
  if (!run("PRAGMA encoding='UTF-16le'") || !run("PRAGMA synchronous=EXTRA") ||
      !run("PRAGMA foreign_keys=ON") || !run("PRAGMA secure_delete=ON"))
    return false;
  constexpr const char* count_tables = "SELECT count(*) FROM sqlite_master";
  const auto tables = number_of(*this, count_tables);
  if (!tables) return false;
  if (*tables == 0) {
    if (!reserve_checked_bytes(connection_)) return note_failure(), false;
    SqliteChange change(*this);
    if (!change) return false;
    // Another process may have been quicker.
    const auto now = number_of(*this, count_tables);
    if (!now || (*now == 0 && !run(kSchema)) || !change.commit()) return false;
  }
  const auto application = number_of(*this, "PRAGMA application_id");
  const auto format = number_of(*this, "PRAGMA user_version");
  if (!application || !format) return false;
  if (*application != kApplicationId || *format != kFormat) return refuse(DatabaseError::damaged);
  Text sound;
  SqliteQuery check(*this, "PRAGMA quick_check(1)");
  if (!check.each_row([&](const SqliteQuery& row) { sound = row.text(0); })) return false;
  return sound == u"ok" || refuse(DatabaseError::damaged);
}

bool SqliteVolume::refuse(DatabaseError reason) {
  reason_ = reason;
  return false;
}

void SqliteVolume::note_failure() { reason_ = reason_of(connection_, path_); }

SqliteVolume::~SqliteVolume() { sqlite3_close_v2(connection_); }

std::int64_t SqliteVolume::last_row_id() const { return sqlite3_last_insert_rowid(connection_); }
int SqliteVolume::changed_rows() const { return sqlite3_changes(connection_); }

bool SqliteVolume::run(const char* sql) {
  if (sqlite3_exec(connection_, sql, nullptr, nullptr, nullptr) == SQLITE_OK) return true;
  note_failure();
  return false;
}

void SqliteVolume::roll_back() { sqlite3_exec(connection_, "ROLLBACK", nullptr, nullptr, nullptr); }

std::optional<std::int64_t> number_of(SqliteVolume& volume, const char* sql) {
  std::optional<std::int64_t> number;
  SqliteQuery query(volume, sql);
  const bool read = query.each_row([&](const SqliteQuery& row) { number = row.number(0); });
  return read ? number : std::nullopt;
}

SqliteQuery::SqliteQuery(SqliteVolume& volume, const char* sql) : volume_(volume) {
  note(sqlite3_prepare_v2(volume.connection_, sql, -1, &statement_, nullptr));
}

SqliteQuery::~SqliteQuery() { sqlite3_finalize(statement_); }

bool SqliteQuery::note(int result) {
  if (result == SQLITE_OK || result == SQLITE_ROW || result == SQLITE_DONE) return true;
  failed_ = true;
  volume_.note_failure();
  return false;
}

SqliteQuery& SqliteQuery::bind(int parameter, std::int64_t value) {
  if (!failed_) note(sqlite3_bind_int64(statement_, parameter + 1, value));
  return *this;
}

SqliteQuery& SqliteQuery::bind(int parameter, TextView value) {
  if (!failed_)
    note(sqlite3_bind_text16(statement_, parameter + 1, value.empty() ? u"" : value.data(),
                             static_cast<int>(value.size() * 2), SQLITE_TRANSIENT));
  return *this;
}

bool SqliteQuery::step() {
  if (failed_) return false;
  const int result = sqlite3_step(statement_);
  return note(result) && result == SQLITE_ROW;
}

std::int64_t SqliteQuery::number(int column) const {
  return sqlite3_column_int64(statement_, column);
}

Text SqliteQuery::text(int column) const {
  const auto* units = static_cast<const char16_t*>(sqlite3_column_text16(statement_, column));
  if (!units) return {};
  return Text(units, static_cast<std::size_t>(sqlite3_column_bytes16(statement_, column)) / 2);
}

}  // namespace orvello
