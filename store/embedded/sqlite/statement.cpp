#include "store/embedded/sqlite/statement.h"

#include <sqlite3.h>

#include "store/embedded/sqlite/connection.h"

namespace orvello {

Statement::Statement(SqliteConnection& db, std::string_view sql) : db_(db) {
  failed_ = sqlite3_prepare_v3(db_.db_, sql.data(), static_cast<int>(sql.size()),
                               SQLITE_PREPARE_PERSISTENT, &statement_, nullptr) != SQLITE_OK;
  if (failed_) db_.note_failure();
}

Statement::~Statement() { sqlite3_finalize(statement_); }

// Why a statement could not be prepared was noted then.
Statement& Statement::bound(bool good) {
  if (!good && statement_) db_.note_failure();
  failed_ |= !good;
  return *this;
}

Statement& Statement::bind(int index, std::int64_t value) {
  return bound(statement_ && sqlite3_bind_int64(statement_, index, value) == SQLITE_OK);
}

Statement& Statement::bind(int index, std::string_view bytes) {
  const char* data = bytes.data() ? bytes.data() : "";
  return bound(statement_ && sqlite3_bind_text64(statement_, index, data, bytes.size(),
                                                 SQLITE_TRANSIENT, SQLITE_UTF8) == SQLITE_OK);
}

Statement& Statement::bind_blob(int index, std::string_view bytes) {
  const char* data = bytes.data() ? bytes.data() : "";
  return bound(statement_ && sqlite3_bind_blob64(statement_, index, data, bytes.size(),
                                                 SQLITE_TRANSIENT) == SQLITE_OK);
}

Statement& Statement::bind_utf16(int index, TextView text) {
  const char16_t* data = text.data() ? text.data() : u"";
  return bound(statement_ &&
               sqlite3_bind_text64(statement_, index, reinterpret_cast<const char*>(data),
                                   text.size() * sizeof *data, SQLITE_TRANSIENT,
                                   SQLITE_UTF16) == SQLITE_OK);
}

Statement& Statement::bind_null(int index) {
  return bound(statement_ && sqlite3_bind_null(statement_, index) == SQLITE_OK);
}

Statement& Statement::bind_row(Statement& row) {
  const int count = sqlite3_column_count(row.statement_);
  for (int i = 0; i < count; ++i)
    bound(statement_ && sqlite3_bind_value(statement_, i + 1,
                                           sqlite3_column_value(row.statement_, i)) == SQLITE_OK);
  return *this;
}

std::vector<std::string> Statement::columns() const {
  std::vector<std::string> names;
  for (int i = 0; i < sqlite3_column_count(statement_); ++i)
    names.emplace_back(sqlite3_column_name(statement_, i));
  return names;
}

bool Statement::step() {
  if (failed_ || !statement_) return false;
  const int result = sqlite3_step(statement_);
  failed_ = result != SQLITE_ROW && result != SQLITE_DONE;
  if (failed_) db_.note_failure();
  return result == SQLITE_ROW;
}

bool Statement::end() {
  if (statement_) sqlite3_reset(statement_);
  return !failed_ && statement_;
}

void Statement::reset() {
  if (!statement_) return;
  sqlite3_reset(statement_);
  sqlite3_clear_bindings(statement_);
  failed_ = false;
}

void Statement::damaged() {
  if (!failed_) db_.note_damage();
  failed_ = true;
}

std::int64_t Statement::number(int column) {
  if (sqlite3_column_type(statement_, column) != SQLITE_INTEGER) damaged();
  return sqlite3_column_int64(statement_, column);
}

std::int32_t Statement::small(int column) {
  const std::int64_t value = number(column);
  if (value != static_cast<std::int32_t>(value)) damaged();
  return static_cast<std::int32_t>(value);
}

bool Statement::is_null(int column) const {
  return sqlite3_column_type(statement_, column) == SQLITE_NULL;
}

std::string_view Statement::bytes(int column) { return column_bytes(column, SQLITE_TEXT); }
std::string_view Statement::blob(int column) { return column_bytes(column, SQLITE_BLOB); }

std::string_view Statement::column_bytes(int column, int kind) {
  const int found = sqlite3_column_type(statement_, column);
  if (found == SQLITE_NULL) return {};
  if (found != kind) damaged();
  const auto* data = static_cast<const char*>(sqlite3_column_blob(statement_, column));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
  if (!data) missed(size);
  return {data, data ? size : 0};
}

Text Statement::utf16(int column) {
  const int found = sqlite3_column_type(statement_, column);
  if (found == SQLITE_NULL) return {};
  if (found != SQLITE_TEXT) damaged();
  const auto* data = static_cast<const char16_t*>(sqlite3_column_text16(statement_, column));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes16(statement_, column));
  if (!data) missed(size);
  return data ? Text(data, size / sizeof *data) : Text();
}

// An empty value has no address; neither has one for which there was no memory.
void Statement::missed(std::size_t size) {
  if (size == 0 && sqlite3_errcode(db_.db_) != SQLITE_NOMEM) return;
  db_.note_failure();
  failed_ = true;
}

}  // namespace orvello
