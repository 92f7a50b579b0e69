// A connection to a calendar's file beside the store's own, for copying and checking.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <utility>

#include "store/embedded/checked_pages.h"

namespace orvello {

enum class PageChecks { on, off };

class SqliteConnection {
 public:
  // `flags` as for sqlite3_open_v2; `patience` in milliseconds, for another process's lock. Look at
  // good() before anything else.
  SqliteConnection(const std::string& path, int flags, PageChecks checks, int patience = 5000) {
    result_ = sqlite3_open_v2(path.c_str(), &db_, flags | SQLITE_OPEN_NOMUTEX,
                              checks == PageChecks::on ? checked_pages() : nullptr);
    if (db_) sqlite3_extended_result_codes(db_, 1);
    if (db_) sqlite3_busy_timeout(db_, patience);
  }
  ~SqliteConnection() { sqlite3_close(db_); }
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;

  bool good() const { return result_ == SQLITE_OK; }
  sqlite3* db() const { return db_; }
  bool run(const char* sql) {
    return sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
  }
  int code() const { return db_ ? sqlite3_extended_errcode(db_) : SQLITE_NOMEM; }

  // The only column of the first row; -1 when there is none or the reading failed.
  std::int64_t number(const char* sql) {
    sqlite3_stmt* statement = nullptr;
    std::int64_t value = -1;
    if (sqlite3_prepare_v2(db_, sql, -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW)
      value = sqlite3_column_int64(statement, 0);
    return sqlite3_finalize(statement) == SQLITE_OK ? value : -1;
  }

 private:
  sqlite3* db_ = nullptr;
  int result_ = SQLITE_NOMEM;
};

}  // namespace orvello
