#include "store/embedded/embedded_database.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <thread>

#include "store/embedded/embedded_schema.h"

namespace orvello {
namespace {

constexpr std::size_t kHeaderSize = 100;

std::uint32_t big_endian(const unsigned char* bytes) {
  return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
         static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}

// Looks at the file's own words before SQLite does, since that might recover or rewrite a file that
// is none of ours. Empty: the file may be opened.
std::string fault_in_header(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return path + ": " + std::strerror(errno) + ".";
  unsigned char header[kHeaderSize] = {};
  const auto length = ::pread(file, header, sizeof header, 0);
  struct stat status = {};
  ::fstat(file, &status);
  ::close(file);
  if (!S_ISREG(status.st_mode)) return path + " is not a file.";
  if (length == 0) return "";  // created, and nothing more
  if (length < static_cast<ssize_t>(kHeaderSize) || std::memcmp(header, "SQLite format 3", 16) != 0)
    return path + " is not an Orvello calendar, or it is damaged.";
  const auto application = big_endian(header + 68);
  const auto format = big_endian(header + 60);
  if (application != kApplicationId) return path + " is not an Orvello calendar.";
  if (format > kFormat)
    return path + " was written by a newer version of Orvello (format " + std::to_string(format) +
           "; this version reads format " + std::to_string(kFormat) + ").";
  // A rollback journal may still hold what the file lacks.
  struct stat journal = {};
  const bool has_journal = ::stat((path + "-journal").c_str(), &journal) == 0;
  if (has_journal && !S_ISREG(journal.st_mode)) return path + "-journal is not a file.";
  if (has_journal && journal.st_size > 0) return "";
  const std::uint32_t stored = big_endian(header + 16) >> 16;
  const std::int64_t page = stored == 1 ? 65536 : stored;
  if (static_cast<std::int64_t>(big_endian(header + 28)) * page > status.st_size)
    return path + " is damaged: its end is missing.";
  return "";
}

// A missing file is made here, so that nobody else can read it from its first moment.
std::string make_file(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (file >= 0) ::close(file);
  if (file >= 0 || errno == EEXIST) return "";
  const int why = errno;
  struct stat status = {};
  if (::stat(path.c_str(), &status) == 0) return "";  // on a medium that cannot be written
  return path + " cannot be created: " + std::strerror(why) + ".";
}

}  // namespace

Result<std::unique_ptr<EmbeddedDatabase>> EmbeddedDatabase::open(const std::string& path,
                                                                 Mode mode) {
  using Opened = Result<std::unique_ptr<EmbeddedDatabase>>;
  if (mode == Mode::read_write)
    if (auto fault = make_file(path); !fault.empty()) return Opened::failure(fault);
  if (auto fault = fault_in_header(path); !fault.empty()) return Opened::failure(fault);
  sqlite3* db = nullptr;
  const int flags = mode == Mode::read_write ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
  const int result = sqlite3_open_v2(path.c_str(), &db, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  std::unique_ptr<EmbeddedDatabase> opened(new EmbeddedDatabase(db, path));
  if (result != SQLITE_OK) opened->note_failure();
  if (result != SQLITE_OK || !opened->set_up(mode)) return Opened::failure(opened->reason());
  return opened;
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
bool EmbeddedDatabase::set_up(Mode mode) {
  sqlite3_extended_result_codes(db_, 1);
  sqlite3_busy_handler(db_, wait_for_lock, this);
  const char* settings =
      "PRAGMA trusted_schema = OFF; PRAGMA synchronous = EXTRA; PRAGMA cache_size = -65536;"
      "PRAGMA temp_store = MEMORY;";
  if (sqlite3_exec(db_, settings, nullptr, nullptr, nullptr) != SQLITE_OK)
    return note_failure(), false;
  std::int64_t number = 0;
  if (!number_of("PRAGMA user_version", number)) return false;
  if (number == 0) {
    if (mode == Mode::read_write) return create_schema();
    note_damage("it holds nothing");
    return false;
  }
  // Reads the schema, and with it finds a damaged one.
  if (!number_of("SELECT count(*) FROM sqlite_schema WHERE name = 'items_series'", number))
    return false;
  if (number != 1) note_damage("");
  return number == 1;
}

bool EmbeddedDatabase::number_of(const char* sql, std::int64_t& number) {
  return use(sql)->each([&](Statement& row) { number = row.number(0); });
}

bool EmbeddedDatabase::create_schema() {
  if (!run("BEGIN IMMEDIATE")) return false;
  std::int64_t version = 0;
  const bool known = number_of("PRAGMA user_version", version);
  if (known && version != 0) return run("COMMIT");  // another process was faster
  const std::string sql = std::string(kSchema) +
                          "PRAGMA application_id = " + std::to_string(kApplicationId) +
                          "; PRAGMA user_version = " + std::to_string(kFormat) + ";";
  if (known && sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
    note_failure();
  else if (known && run("COMMIT"))
    return true;
  const std::string why = failure_;
  if (in_transaction() && !run("ROLLBACK")) failure_ = why;
  return false;
}

StatementUse EmbeddedDatabase::use(const char* sql) {
  auto& statement = statements_[sql];
  // One that another process's lock kept from being prepared is tried again.
  if (!statement || !statement->prepared())
    statement = std::make_unique<Statement>(*this, db_, sql);
  return StatementUse(*statement);
}

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
      failure_ = path_ + " cannot be read or written: the disk fails or is full.";
      break;
    case SQLITE_READONLY:
      failure_ = path_ + " cannot be written.";
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
