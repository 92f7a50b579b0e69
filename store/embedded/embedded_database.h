// The SQLite file of the embedded store: opening it with care, its schema, and prepared statements.
#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/result.h"
#include "store/embedded/statement.h"

namespace orvello {

class EmbeddedDatabase {
 public:
  enum class Mode { read_write, read_only };
  // Creates a missing file unless it is only to be read. A file on a medium that cannot be written
  // opens in either mode; writing fails then.
  // A file that another process holds is opened all the same with `busy_wait`, which is
  // limit_wait() from the start: its reads fail as long as it is held.
  static Result<std::unique_ptr<EmbeddedDatabase>> open(
      const std::string& path, Mode mode = Mode::read_write,
      std::optional<std::chrono::milliseconds> busy_wait = std::nullopt);
  ~EmbeddedDatabase();
  EmbeddedDatabase(const EmbeddedDatabase&) = delete;
  EmbeddedDatabase& operator=(const EmbeddedDatabase&) = delete;

  // Prepared once; `sql` must be a literal, as it is known by its address. One literal has one use
  // at a time.
  StatementUse use(const char* sql);
  [[nodiscard]] bool run(const char* sql) { return use(sql)->run(); }
  // True too where only the folder could not be synced after the journal was gone: the file has all
  // of the transaction then, and whoever was told otherwise would do it again.
  [[nodiscard]] bool commit();
  std::int64_t last_row() const { return sqlite3_last_insert_rowid(db_); }
  bool in_transaction() const { return sqlite3_get_autocommit(db_) == 0; }

  // Whether series can be found by their days; files of older programs lack the indexes until
  // something is written. Nothing: failure.
  std::optional<bool> has_series_indexes();
  [[nodiscard]] bool make_series_indexes();

  // Changes when another process has written. Nothing: failure.
  std::optional<std::int64_t> data_version();

  // How long, in total, the statements until the next renew_wait() wait for another process's lock
  // before they fail.
  void limit_wait(std::chrono::milliseconds total) { wait_limit_ = total; }
  void renew_wait() { waited_ = {}; }
  void pause_waiting(bool pause) { no_waiting_ = pause; }

  // Why something failed, with the file's name: the latest failure, whatever succeeded since.
  const std::string& reason() const { return failure_; }
  bool violates_constraint() const { return (failure_code_ & 0xFF) == SQLITE_CONSTRAINT; }
  bool busy() const { return (failure_code_ & 0xFF) == SQLITE_BUSY; }

  // For whoever works with the file: what SQLite just said, or a contradiction in what was read
  // ("the time zone X cannot be read"; or empty).
  void note_failure();
  void note_damage(const std::string& what);

 private:
  EmbeddedDatabase(sqlite3* db, std::string path) : db_(db), path_(std::move(path)) {}
  bool set_up();
  bool look_at_file();
  bool number_of(const char* pragma, std::int64_t& number);
  static int wait_for_lock(void* self, int tries);

  sqlite3* db_;
  std::string path_;
  std::string failure_;
  int failure_code_ = SQLITE_OK;
  std::chrono::milliseconds wait_limit_{5000}, waited_{0};
  bool no_waiting_ = false;
  // A file that was locked when it was opened is looked at when it is first used without that.
  enum class Readiness { none, looking, ready } readiness_ = Readiness::none;
  std::unordered_map<const char*, std::unique_ptr<Statement>> statements_;
};

// Several reads of one state of the file. Nests in itself and in a write. False when it cannot be
// read now.
class ReadScope {
 public:
  explicit ReadScope(EmbeddedDatabase& db);
  ~ReadScope();
  ReadScope(const ReadScope&) = delete;
  ReadScope& operator=(const ReadScope&) = delete;
  explicit operator bool() const { return good_; }

 private:
  EmbeddedDatabase& db_;
  bool began_ = false;
  bool good_ = true;
};

// For as long as it lives a lock is a failure at once.
class WaitPause {
 public:
  explicit WaitPause(EmbeddedDatabase& db) : db_(db) { db_.pause_waiting(true); }
  ~WaitPause() { db_.pause_waiting(false); }
  WaitPause(const WaitPause&) = delete;
  WaitPause& operator=(const WaitPause&) = delete;

 private:
  EmbeddedDatabase& db_;
};

}  // namespace orvello
