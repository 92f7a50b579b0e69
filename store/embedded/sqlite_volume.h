// One volume file and its statements. A file that is no volume, a damaged one and one of a newer
// format are refused before anything could write to them.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "ports/record_databases.h"

struct sqlite3;
struct sqlite3_stmt;

namespace orvello {

// How long locks are waited for: less than half a second in all, and that again only after a rest,
// so that a row of operations on a locked volume does not add up.
class LockPatience {
 public:
  bool waited();  // a little; false when there is none left

 private:
  std::chrono::steady_clock::time_point last_{};
  std::chrono::milliseconds left_{};
};

class SqliteVolume {
 public:
  // Creates a missing file, for its owner alone. Null with the reason in `error`. `patience` lives
  // as long as the volume.
  static std::unique_ptr<SqliteVolume> open(const std::string& path, LockPatience& patience,
                                            DatabaseError& error);
  ~SqliteVolume();
  SqliteVolume(const SqliteVolume&) = delete;
  SqliteVolume& operator=(const SqliteVolume&) = delete;

  DatabaseError reason() const { return reason_; }  // of the last failure
  std::int64_t last_row_id() const;
  int changed_rows() const;

  // Runs one statement without results.
  [[nodiscard]] bool run(const char* sql);
  void roll_back();  // keeps the reason

 private:
  friend class SqliteQuery;
  SqliteVolume(sqlite3* connection, std::string path)
      : connection_(connection), path_(std::move(path)) {}
  bool prepare_format();
  bool refuse(DatabaseError reason);
  void note_failure();
  sqlite3* connection_;
  std::string path_;
  DatabaseError reason_ = DatabaseError::none;
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

  // Hands the query to `visit` at each of its rows. False when it broke off: there may be more.
  template <typename Visit>
  [[nodiscard]] bool each_row(Visit visit) {
    while (step()) visit(*this);
    return !failed_;
  }
  [[nodiscard]] bool finish() {
    return each_row([](const SqliteQuery&) {});
  }

  // Of the row that is visited.
  std::int64_t number(int column) const;
  Text text(int column) const;

 private:
  bool step();
  bool note(int result);  // whether it is the result of something that worked
  SqliteVolume& volume_;
  sqlite3_stmt* statement_ = nullptr;
  bool failed_ = false;
};

// The number in the only row; nothing when it could not be read.
std::optional<std::int64_t> number_of(SqliteVolume& volume, const char* sql);

// Begins a change; what is not committed is taken back.
class SqliteChange {
 public:
  explicit SqliteChange(SqliteVolume& volume)
      : volume_(volume), open_(volume.run("BEGIN IMMEDIATE")) {}
  ~SqliteChange() {
    if (open_) volume_.roll_back();
  }
  SqliteChange(const SqliteChange&) = delete;
  SqliteChange& operator=(const SqliteChange&) = delete;
  explicit operator bool() const { return open_; }
  [[nodiscard]] bool commit() {
    if (!open_ || !volume_.run("COMMIT")) return false;
    open_ = false;
    return true;
  }

 private:
  SqliteVolume& volume_;
  bool open_;
};

}  // namespace orvello
