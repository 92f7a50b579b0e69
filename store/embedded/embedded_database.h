// The SQLite file of the embedded store: opening it with care, its schema, and prepared statements.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/result.h"
#include "base/text.h"

namespace orvello {

// A prepared statement. Parameters count from 1, columns from 0.
class Statement {
 public:
  Statement(sqlite3* db, const char* sql);
  ~Statement() { sqlite3_finalize(statement_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  Statement& bind(int index, std::int64_t value);
  Statement& bind(int index, std::string_view bytes);
  Statement& bind(int index, TextView text) { return bind(index, std::string_view(to_utf8(text))); }
  Statement& bind_blob(int index, std::string_view bytes);

  bool step();  // true: a row. Ended by itself or a failure: see failed().
  bool run();   // to its end; ready for the next use, like `reset`
  void reset();
  bool failed() const { return failed_; }

  std::int64_t number(int column) const { return sqlite3_column_int64(statement_, column); }
  int small(int column) const { return sqlite3_column_int(statement_, column); }
  bool flag(int column) const { return sqlite3_column_int(statement_, column) != 0; }
  bool is_null(int column) const;
  std::string_view bytes(int column) const;
  std::string string(int column) const { return std::string(bytes(column)); }
  Text text(int column) const { return to_utf16(bytes(column)); }

 private:
  sqlite3_stmt* statement_ = nullptr;
  bool failed_ = false;
};

// Resets a shared statement when its use ends, since an open one would hold a lock on the file.
class StatementUse {
 public:
  explicit StatementUse(Statement& statement) : statement_(statement) { statement_.reset(); }
  ~StatementUse() { statement_.reset(); }
  StatementUse(const StatementUse&) = delete;
  StatementUse& operator=(const StatementUse&) = delete;
  Statement* operator->() { return &statement_; }
  Statement& statement() { return statement_; }

 private:
  Statement& statement_;
};

class EmbeddedDatabase {
 public:
  static Result<std::unique_ptr<EmbeddedDatabase>> open(const std::string& path);
  ~EmbeddedDatabase();

  // Prepared once; `sql` must be a literal, as it is known by its address.
  StatementUse use(const char* sql);
  bool run(const char* sql) { return use(sql)->run(); }
  std::int64_t last_row() const { return sqlite3_last_insert_rowid(db_); }
  bool violates_constraint() const { return (sqlite3_errcode(db_) & 0xFF) == SQLITE_CONSTRAINT; }
  bool in_transaction() const { return sqlite3_get_autocommit(db_) == 0; }

  // Changes when another process has written.
  std::int64_t data_version();
  // Why the last call failed, with the file's name.
  std::string reason() const;

 private:
  EmbeddedDatabase(sqlite3* db, std::string path) : db_(db), path_(std::move(path)) {}
  bool set_up();
  bool create_schema();

  sqlite3* db_;
  std::string path_;
  std::string failure_;  // why the tables could not be made
  std::unordered_map<const char*, std::unique_ptr<Statement>> statements_;
};

// Several reads of one state of the file. Nests in itself and in a write.
class ReadScope {
 public:
  explicit ReadScope(EmbeddedDatabase& db);
  ~ReadScope();
  ReadScope(const ReadScope&) = delete;
  ReadScope& operator=(const ReadScope&) = delete;

 private:
  EmbeddedDatabase& db_;
  bool began_;
};

}  // namespace orvello
