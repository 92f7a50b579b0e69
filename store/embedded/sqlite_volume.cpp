#include "store/embedded/sqlite_volume.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace orvello {
namespace {

constexpr std::uint32_t kApplicationId = 0x4F725653;  // "OrVS"
constexpr std::uint32_t kFormat = 1;
constexpr int kWaitMilliseconds = 2000;

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

std::uint32_t big_endian(const unsigned char* bytes) {
  return static_cast<std::uint32_t>(bytes[0]) << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
}

// Looks at the file's head without opening it as a database, which alone could change it.
DatabaseError look_at_head(const std::string& path) {
  struct stat info {};
  // A journal means that a writer died: only the database itself can tell what the head was.
  if (::stat((path + "-journal").c_str(), &info) == 0 && info.st_size > 0)
    return DatabaseError::none;
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return errno == ENOENT ? DatabaseError::none : DatabaseError::invalid_parameter;
  unsigned char head[100];
  const ssize_t count = ::read(file, head, sizeof head);
  ::close(file);
  if (count < 0) return DatabaseError::invalid_parameter;  // a folder, for one
  if (count == 0) return DatabaseError::none;              // created, and the creator died
  const bool ours = count == sizeof head && std::memcmp(head, "SQLite format 3", 16) == 0 &&
                    big_endian(head + 68) == kApplicationId && big_endian(head + 60) == kFormat;
  return ours ? DatabaseError::none : DatabaseError::damaged;
}

bool create_private_file(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0) return false;
  return ::close(file) == 0;
}

std::int64_t pragma_number(SqliteVolume& volume, const char* sql) {
  SqliteQuery query(volume, sql);
  return query.next() ? query.number(0) : -1;
}

}  // namespace

std::unique_ptr<SqliteVolume> SqliteVolume::open(const std::string& path, DatabaseError& error) {
  error = look_at_head(path);
  if (error != DatabaseError::none) return nullptr;
  if (!create_private_file(path)) {
    error = errno == ENOSPC || errno == EDQUOT ? DatabaseError::disk_full
                                               : DatabaseError::invalid_parameter;
    return nullptr;
  }
  sqlite3* connection = nullptr;
  const int result = sqlite3_open_v2(path.c_str(), &connection, SQLITE_OPEN_READWRITE, nullptr);
  std::unique_ptr<SqliteVolume> volume(new SqliteVolume(connection));
  if (result == SQLITE_OK && volume->prepare_format()) return volume;
  error = volume->reason();
  if (error == DatabaseError::none) error = DatabaseError::damaged;
  return nullptr;
}

// Texts are kept as UTF-16, so that halves of surrogate pairs survive.
bool SqliteVolume::prepare_format() {
  sqlite3_busy_timeout(connection_, kWaitMilliseconds);
  sqlite3_extended_result_codes(connection_, 1);
  if (!run("PRAGMA encoding='UTF-16le'") || !run("PRAGMA synchronous=EXTRA") ||
      !run("PRAGMA foreign_keys=ON"))
    return false;
  const std::int64_t tables = pragma_number(*this, "SELECT count(*) FROM sqlite_master");
  if (tables < 0) return false;
  if (tables == 0) {
    SqliteChange change(*this);
    if (!change) return false;
    // Another process may have been quicker.
    if (pragma_number(*this, "SELECT count(*) FROM sqlite_master") == 0 && !run(kSchema))
      return false;
    if (!change.commit()) return false;
  }
  if (pragma_number(*this, "PRAGMA application_id") != kApplicationId ||
      pragma_number(*this, "PRAGMA user_version") != kFormat)
    return false;
  SqliteQuery check(*this, "PRAGMA quick_check(1)");
  return check.next() && check.text(0) == u"ok";
}

SqliteVolume::~SqliteVolume() { sqlite3_close_v2(connection_); }

DatabaseError SqliteVolume::reason() const {
  switch (connection_ ? sqlite3_errcode(connection_) & 0xFF : SQLITE_NOMEM) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
      return DatabaseError::none;
    case SQLITE_NOMEM:
      return DatabaseError::not_enough_memory;
    case SQLITE_FULL:
      return DatabaseError::disk_full;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return DatabaseError::sharing_violation;
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_READONLY:
    case SQLITE_MISUSE:
    case SQLITE_RANGE:
      return DatabaseError::invalid_parameter;
    case SQLITE_IOERR:
      // A write that fails for another reason than a full disk is a quota or a limit on the file's
      // size: a full disk to the person.
      return sqlite3_extended_errcode(connection_) == SQLITE_IOERR_WRITE ? DatabaseError::disk_full
                                                                         : DatabaseError::damaged;
    default:
      return DatabaseError::damaged;
  }
}

std::int64_t SqliteVolume::last_row_id() const { return sqlite3_last_insert_rowid(connection_); }
int SqliteVolume::changed_rows() const { return sqlite3_changes(connection_); }

bool SqliteVolume::run(const char* sql) {
  return sqlite3_exec(connection_, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

SqliteQuery::SqliteQuery(SqliteVolume& volume, const char* sql) {
  failed_ = sqlite3_prepare_v2(volume.connection_, sql, -1, &statement_, nullptr) != SQLITE_OK;
}

SqliteQuery::~SqliteQuery() { sqlite3_finalize(statement_); }

SqliteQuery& SqliteQuery::bind(int parameter, std::int64_t value) {
  if (sqlite3_bind_int64(statement_, parameter + 1, value) != SQLITE_OK) failed_ = true;
  return *this;
}

SqliteQuery& SqliteQuery::bind(int parameter, TextView value) {
  const int result =
      sqlite3_bind_text16(statement_, parameter + 1, value.empty() ? u"" : value.data(),
                          static_cast<int>(value.size() * 2), SQLITE_TRANSIENT);
  if (result != SQLITE_OK) failed_ = true;
  return *this;
}

bool SqliteQuery::next() {
  if (failed_) return false;
  const int result = sqlite3_step(statement_);
  failed_ = result != SQLITE_ROW && result != SQLITE_DONE;
  return result == SQLITE_ROW;
}

bool SqliteQuery::finish() {
  while (next()) continue;
  return !failed_;
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
