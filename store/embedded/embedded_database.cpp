#include "store/embedded/embedded_database.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "store/embedded/embedded_schema.h"

namespace orvello {

Statement::Statement(sqlite3* db, const char* sql) {
  failed_ =
      sqlite3_prepare_v3(db, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr) != SQLITE_OK;
}

Statement& Statement::bind(int index, std::int64_t value) {
  if (sqlite3_bind_int64(statement_, index, value) != SQLITE_OK) failed_ = true;
  return *this;
}

Statement& Statement::bind(int index, std::string_view bytes) {
  const char* data = bytes.data() ? bytes.data() : "";
  if (sqlite3_bind_text64(statement_, index, data, bytes.size(), SQLITE_TRANSIENT, SQLITE_UTF8) !=
      SQLITE_OK)
    failed_ = true;
  return *this;
}

Statement& Statement::bind_blob(int index, std::string_view bytes) {
  const char* data = bytes.data() ? bytes.data() : "";
  if (sqlite3_bind_blob64(statement_, index, data, bytes.size(), SQLITE_TRANSIENT) != SQLITE_OK)
    failed_ = true;
  return *this;
}

bool Statement::step() {
  if (failed_ || !statement_) return false;
  const int result = sqlite3_step(statement_);
  failed_ = result != SQLITE_ROW && result != SQLITE_DONE;
  return result == SQLITE_ROW;
}

bool Statement::run() {
  while (step()) {
  }
  const bool good = !failed_ && statement_;
  sqlite3_reset(statement_);
  return good;
}

void Statement::reset() {
  sqlite3_reset(statement_);
  sqlite3_clear_bindings(statement_);
  if (statement_) failed_ = false;
}

bool Statement::is_null(int column) const {
  return sqlite3_column_type(statement_, column) == SQLITE_NULL;
}

std::string_view Statement::bytes(int column) const {
  const auto* data = static_cast<const char*>(sqlite3_column_blob(statement_, column));
  if (!data) return {};
  return {data, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

namespace {

constexpr int kBusyMilliseconds = 5000;
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

}  // namespace

Result<std::unique_ptr<EmbeddedDatabase>> EmbeddedDatabase::open(const std::string& path) {
  using Opened = Result<std::unique_ptr<EmbeddedDatabase>>;
  // Created here, so that nobody else can read it from its first moment.
  const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (file >= 0)
    ::close(file);
  else if (errno != EEXIST)
    return Opened::failure(path + " cannot be created: " + std::strerror(errno) + ".");
  if (auto fault = fault_in_header(path); !fault.empty()) return Opened::failure(fault);
  sqlite3* db = nullptr;
  const int result =
      sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  std::unique_ptr<EmbeddedDatabase> opened(new EmbeddedDatabase(db, path));
  if (result != SQLITE_OK || !opened->set_up()) return Opened::failure(opened->reason());
  return opened;
}

EmbeddedDatabase::~EmbeddedDatabase() {
  statements_.clear();
  sqlite3_close(db_);
}

// A rollback journal rather than a write-ahead log: the calendar stays one file that can be copied,
// and nothing is left beside it.
bool EmbeddedDatabase::set_up() {
  sqlite3_extended_result_codes(db_, 1);
  sqlite3_busy_timeout(db_, kBusyMilliseconds);
  const char* settings =
      "PRAGMA trusted_schema = OFF; PRAGMA synchronous = EXTRA; PRAGMA cache_size = -65536;"
      "PRAGMA temp_store = MEMORY;";
  if (sqlite3_exec(db_, settings, nullptr, nullptr, nullptr) != SQLITE_OK) return false;
  std::int64_t format = 0;
  {
    auto read = use("PRAGMA user_version");
    if (!read->step()) return false;
    format = read->number(0);
  }
  if (format == 0) return create_schema();
  // Reads the schema, and with it finds a damaged one.
  auto check = use("SELECT count(*) FROM sqlite_schema WHERE name = 'items_series'");
  return check->step() && check->number(0) == 1;
}

bool EmbeddedDatabase::create_schema() {
  if (!run("BEGIN IMMEDIATE")) return false;
  auto version = use("PRAGMA user_version");
  if (version->step() && version->number(0) != 0) {  // another process was faster
    version->reset();
    return run("COMMIT");
  }
  version->reset();
  const std::string sql = std::string(kSchema) +
                          "PRAGMA application_id = " + std::to_string(kApplicationId) +
                          "; PRAGMA user_version = " + std::to_string(kFormat) + ";";
  if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK && run("COMMIT"))
    return true;
  failure_ = reason();
  run("ROLLBACK");
  return false;
}

StatementUse EmbeddedDatabase::use(const char* sql) {
  auto& statement = statements_[sql];
  if (!statement) statement = std::make_unique<Statement>(db_, sql);
  return StatementUse(*statement);
}

std::int64_t EmbeddedDatabase::data_version() {
  auto read = use("PRAGMA data_version");
  return read->step() ? read->number(0) : 0;
}

std::string EmbeddedDatabase::reason() const {
  if (!failure_.empty()) return failure_;
  switch (sqlite3_errcode(db_) & 0xFF) {  // without the extension
    case SQLITE_FULL:
      return path_ + " cannot be written: the disk is full.";
    case SQLITE_BUSY:
      return path_ + " is in use by another program.";
    case SQLITE_IOERR:
      return path_ + " cannot be read or written: the disk fails or is full.";
    case SQLITE_READONLY:
      return path_ + " cannot be written.";
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return path_ + " is damaged.";
    default:
      return path_ + ": " + sqlite3_errmsg(db_) + ".";
  }
}

ReadScope::ReadScope(EmbeddedDatabase& db) : db_(db), began_(!db.in_transaction()) {
  if (began_) db_.run("BEGIN");
}

ReadScope::~ReadScope() {
  if (began_) db_.run("COMMIT");
}

}  // namespace orvello
