// One volume file and its statements. A file that is no volume, a damaged one and one of a newer
// format are refused before anything could write to them.
#pragma once

#include <memory>
#include <string>

#include "ports/record_databases.h"

struct sqlite3;
struct sqlite3_stmt;

namespace orvello {

class SqliteVolume {
 public:
  // Creates a missing file, for its owner alone. Null with the reason in `error`.
  static std::unique_ptr<SqliteVolume> open(const std::string& path, DatabaseError& error);
  ~SqliteVolume();
  SqliteVolume(const SqliteVolume&) = delete;
  SqliteVolume& operator=(const SqliteVolume&) = delete;

  DatabaseError reason() const;  // of the last failure
  std::int64_t last_row_id() const;
  int changed_rows() const;

  // Runs one statement without results.
  bool run(const char* sql);

 private:
  friend class SqliteQuery;
  explicit SqliteVolume(sqlite3* connection) : connection_(connection) {}
  bool prepare_format();
  sqlite3* connection_;
};

// A prepared statement; parameters and columns count from 0.
class SqliteQuery {
 public:
  SqliteQuery(SqliteVolume& volume, const char* sql);
  ~SqliteQuery();
  SqliteQuery(const SqliteQuery&) = delete;
  SqliteQuery& operator=(const SqliteQuery&) = delete;

  SqliteQuery& bind(int parameter, std::int64_t value);
  SqliteQuery& bind(int parameter, TextView value);
  bool next();  // a row is there; false at the end and on a failure
  bool failed() const { return failed_; }
  bool finish();  // runs to the end; false on a failure

  std::int64_t number(int column) const;
  Text text(int column) const;

 private:
  sqlite3_stmt* statement_ = nullptr;
  bool failed_ = false;
};

// Begins a change; what is not committed is taken back.
class SqliteChange {
 public:
  explicit SqliteChange(SqliteVolume& volume)
      : volume_(volume), open_(volume.run("BEGIN IMMEDIATE")) {}
  ~SqliteChange() {
    if (open_) volume_.run("ROLLBACK");
  }
  SqliteChange(const SqliteChange&) = delete;
  SqliteChange& operator=(const SqliteChange&) = delete;
  explicit operator bool() const { return open_; }
  bool commit() {
    if (!open_ || !volume_.run("COMMIT")) return false;
    open_ = false;
    return true;
  }

 private:
  SqliteVolume& volume_;
  bool open_;
};

}  // namespace orvello
