#include "store/embedded/embedded_database.h"

#include <algorithm>
#include <thread>

#include "files/file_reasons.h"
#include "store/embedded/calendar_file.h"
#include "store/embedded/checked_pages.h"
#include "store/embedded/embedded_schema.h"

namespace orvello {
namespace {

// What the system said to the last call that failed.
std::string system_reason(sqlite3* db) {
  const int error = db ? sqlite3_system_errno(db) : 0;
  return error != 0 ? reason_of(error) : "the disk fails or is full";
}

}  // namespace

Result<std::unique_ptr<EmbeddedDatabase>> EmbeddedDatabase::open(
    const std::string& path, Mode mode, std::optional<std::chrono::milliseconds> busy_wait) {
  using Opened = Result<std::unique_ptr<EmbeddedDatabase>>;
  const bool writes = mode == Mode::read_write;
  auto fault = writes ? make_calendar_file_ready(path) : fault_in_calendar_file(path);
  if (!fault.empty()) return Opened::failure(std::move(fault));
  sqlite3* db = nullptr;
  const int flags = writes ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
  const int result =
      sqlite3_open_v2(path.c_str(), &db, flags | SQLITE_OPEN_NOMUTEX, checked_pages());
  std::unique_ptr<EmbeddedDatabase> opened(new EmbeddedDatabase(db, path));
  if (busy_wait) opened->limit_wait(*busy_wait);
  if (result != SQLITE_OK) opened->note_failure();
  if (result == SQLITE_OK && (opened->set_up() || (busy_wait && opened->busy()))) return opened;
  return Opened::failure(opened->reason());
}

EmbeddedDatabase::~EmbeddedDatabase() {
  statements_.clear();
  sqlite3_close(db_);
}

int EmbeddedDatabase::wait_for_lock(void* self, int tries) {
  auto& db = *static_cast<EmbeddedDatabase*>(self);
  const auto left = db.wait_limit_ - db.waited_;
  if (left.count() <= 0 || db.no_waiting_) return 0;
  const auto step = std::min(left, std::chrono::milliseconds(tries < 10 ? 1 + tries : 20));
  std::this_thread::sleep_for(step);
  db.waited_ += step;
  return 1;
}

// A rollback journal rather than a write-ahead log: the calendar stays one file that can be copied,
// and nothing is left beside it.
bool EmbeddedDatabase::set_up() {
  readiness_ = Readiness::looking;
  readiness_ = look_at_file() ? Readiness::ready : Readiness::none;
  return readiness_ == Readiness::ready;
}

bool EmbeddedDatabase::look_at_file() {
  sqlite3_extended_result_codes(db_, 1);
  sqlite3_busy_handler(db_, wait_for_lock, this);
  const char* settings =
      "PRAGMA trusted_schema = OFF; PRAGMA synchronous = EXTRA; PRAGMA cache_size = -65536;"
      "PRAGMA temp_store = MEMORY; PRAGMA secure_delete = ON;";
  if (sqlite3_exec(db_, settings, nullptr, nullptr, nullptr) != SQLITE_OK)
    return note_failure(), false;
  std::int64_t number = 0;
  // Reads the schema, and with it finds a damaged one.
  if (!number_of("SELECT count(*) FROM sqlite_schema WHERE name = 'items_series'", number))
    return false;
  if (number != 1) note_damage("");
  return number == 1;
}

bool EmbeddedDatabase::number_of(const char* sql, std::int64_t& number) {
  return use(sql)->each([&](Statement& row) { number = row.number(0); });
}

StatementUse EmbeddedDatabase::use(const char* sql) {
  auto& statement = statements_[sql];
  if (readiness_ == Readiness::none && !set_up()) {
    statement = std::make_unique<Statement>(*this);
    return StatementUse(*statement);
  }
  // One that another process's lock kept from being prepared is tried again.
  if (!statement || !statement->prepared())
    statement = std::make_unique<Statement>(*this, db_, sql);
  return StatementUse(*statement);
}

std::optional<bool> EmbeddedDatabase::has_series_indexes() {
  std::int64_t found = 0;
  if (!number_of("SELECT count(*) FROM sqlite_schema"
                 " WHERE name IN ('items_alive', 'exceptions_changed')",
                 found))
    return std::nullopt;
  return found == 2;
}

bool EmbeddedDatabase::make_series_indexes() {
  if (sqlite3_exec(db_, kSeriesIndexes, nullptr, nullptr, nullptr) == SQLITE_OK) return true;
  note_failure();
  return false;
}

bool EmbeddedDatabase::commit() { return run("COMMIT") || failure_code_ == SQLITE_IOERR_DIR_FSYNC; }

std::optional<std::int64_t> EmbeddedDatabase::data_version() {
  std::int64_t version = 0;
  if (!number_of("PRAGMA data_version", version)) return std::nullopt;
  return version;
}

void EmbeddedDatabase::note_damage(const std::string& what) {
  failure_code_ = SQLITE_CORRUPT;
  failure_ = path_ + " is damaged" + (what.empty() ? "." : ": " + what + ".");
}

void EmbeddedDatabase::note_failure() {
  failure_code_ = db_ ? sqlite3_extended_errcode(db_) : SQLITE_NOMEM;
  switch (failure_code_ & 0xFF) {
    case SQLITE_FULL:
      failure_ = path_ + " cannot be written: the disk is full.";
      break;
    case SQLITE_BUSY:
      failure_ = path_ + " is in use by another program.";
      break;
    case SQLITE_IOERR:
      if (failure_code_ == SQLITE_IOERR_DATA) return note_damage("a page is not as it was written");
      failure_ = path_ + " cannot be read or written: " + system_reason(db_) + ".";
      break;
    case SQLITE_CANTOPEN:
      failure_ = path_ + " cannot be opened: " + system_reason(db_) + ".";
      break;
    case SQLITE_READONLY:
      failure_ = failure_code_ == SQLITE_READONLY_ROLLBACK
                     ? path_ + " holds a change that was not finished; it can be read once it can" +
                           " be written to."
                     : path_ + " cannot be changed: it can only be read.";
      break;
    case SQLITE_NOMEM:
      failure_ = path_ + " cannot be read: there is not enough memory.";
      break;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      failure_ = path_ + " is damaged.";
      break;
    default:
      failure_ = path_ + ": " + (db_ ? sqlite3_errmsg(db_) : "out of memory") + ".";
  }
}

// BEGIN alone takes no lock: the first read does, and fixes the state that is read.
ReadScope::ReadScope(EmbeddedDatabase& db) : db_(db) {
  if (db_.in_transaction()) return;
  began_ = db_.run("BEGIN");
  good_ = began_ && db_.data_version();
}

ReadScope::~ReadScope() {
  if (!began_ || !db_.in_transaction()) return;
  if (!db_.run("COMMIT")) (void)db_.run("ROLLBACK");
}

}  // namespace orvello
