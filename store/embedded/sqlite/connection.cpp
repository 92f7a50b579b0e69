#include "store/embedded/sqlite/connection.h"

#include <sqlite3.h>

#include "store/embedded/sqlite/checked_pages.h"

namespace orvello {
namespace {

constexpr int kPagesAtOnce = 256;  // so long nobody else can write
constexpr int kWaits = 1000, kWaitMilliseconds = 10;

// Called by C: nothing may be thrown through it.
int wait_for_lock(void* wait, int tries) noexcept {
  return static_cast<LockWait*>(wait)->wait(tries);
}

}  // namespace

SqliteConnection::SqliteConnection(const std::string& path, Access access, PageChecks checks,
                                   LockWait& wait) {
  open(path, access, checks);
  if (db_) sqlite3_busy_handler(db_, wait_for_lock, &wait);
}

SqliteConnection::SqliteConnection(const std::string& path, Access access, PageChecks checks,
                                   std::chrono::milliseconds patience) {
  open(path, access, checks);
  if (db_) sqlite3_busy_timeout(db_, static_cast<int>(patience.count()));
}

void SqliteConnection::open(const std::string& path, Access access, PageChecks checks) {
  const int flags = access == Access::read_write ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
  good_ = sqlite3_open_v2(path.c_str(), &db_, flags | SQLITE_OPEN_NOMUTEX,
                          checks == PageChecks::on ? checked_pages() : nullptr) == SQLITE_OK;
  if (db_) sqlite3_extended_result_codes(db_, 1);
  if (!good_) note_failure();
}

SqliteConnection::~SqliteConnection() {
  statements_.clear();
  sqlite3_close(db_);
}

StatementUse SqliteConnection::use(const char* sql) {
  auto& statement = statements_[sql];
  // One that another process's lock kept from being prepared is tried again.
  if (!statement || !statement->prepared()) statement = std::make_unique<Statement>(*this, sql);
  return StatementUse(*statement);
}

StatementUse SqliteConnection::use_none(const char* sql) {
  auto& statement = statements_[sql];
  statement = std::make_unique<Statement>(*this);
  return StatementUse(*statement);
}

bool SqliteConnection::run(const std::string& sql) {
  if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK) return true;
  note_failure();
  return false;
}

std::optional<std::int64_t> SqliteConnection::number(const char* sql) {
  std::optional<std::int64_t> number;
  Statement statement(*this, sql);
  const bool read = statement.each([&](Statement& row) { number = row.number(0); });
  return read ? number : std::nullopt;
}

std::optional<bool> SqliteConnection::finds_sound(const char* check) {
  bool sound = false;
  Statement statement(*this, check);
  if (!statement.each([&](Statement& row) { sound = row.utf16(0) == u"ok"; })) return std::nullopt;
  return sound;
}

std::int64_t SqliteConnection::last_row() const { return sqlite3_last_insert_rowid(db_); }
std::int64_t SqliteConnection::changed_rows() const { return sqlite3_changes64(db_); }
bool SqliteConnection::in_transaction() const { return sqlite3_get_autocommit(db_) == 0; }

void SqliteConnection::note_failure() {
  failure_ = db_ ? failure_of(sqlite3_extended_errcode(db_), sqlite3_system_errno(db_),
                              sqlite3_errmsg(db_))
                 : failure_of(SQLITE_NOMEM, 0, "out of memory");
}

void SqliteConnection::note_damage(const std::string& what) {
  failure_ = {SqliteFault::damaged, 0, what};
}

// What fails here is taken back by the next process that opens the file.
void SqliteConnection::roll_back() { sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr); }

bool SqliteConnection::has_checked_pages() {
  int reserved = -1;
  return sqlite3_file_control(db_, "main", SQLITE_FCNTL_RESERVE_BYTES, &reserved) == SQLITE_OK &&
         reserved == kCheckedBytes;
}

bool SqliteConnection::reserve_checks() {
  if (reserve_checked_bytes(db_)) return true;
  note_failure();
  return false;
}

bool SqliteConnection::has_moved() {
  int moved = 0;
  return sqlite3_file_control(db_, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved;
}

SqliteFailure copy_pages(SqliteConnection& from, SqliteConnection& to) {
  sqlite3_backup* backup = sqlite3_backup_init(to.db_, "main", from.db_, "main");
  if (!backup) {
    to.note_failure();
    return to.failure();
  }
  int result = SQLITE_OK, waits = 0;
  while (result == SQLITE_OK ||
         ((result == SQLITE_BUSY || result == SQLITE_LOCKED) && ++waits < kWaits)) {
    if (result != SQLITE_OK) sqlite3_sleep(kWaitMilliseconds);
    result = sqlite3_backup_step(backup, kPagesAtOnce);
  }
  const int finished = sqlite3_backup_finish(backup);
  if (result == SQLITE_DONE) result = finished;
  return failure_of(result, sqlite3_system_errno(to.db_), sqlite3_errstr(result));
}

}  // namespace orvello
