// The SQLite file of the embedded store: opening it with care, and waiting for it within limits.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "base/result.h"
#include "store/embedded/sqlite/connection.h"
#include "store/embedded/sqlite/transaction.h"

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

  // As SqliteConnection::use.
  StatementUse use(const char* sql);
  [[nodiscard]] bool run(const char* sql) { return use(sql)->run(); }
  // Looks at the file once nobody else holds it; false: not yet, or it failed.
  [[nodiscard]] bool ready();
  SqliteConnection& connection() { return connection_; }
  std::int64_t last_row() const { return connection_.last_row(); }
  bool in_transaction() const { return connection_.in_transaction(); }

  // Whether series can be found by their days; files of older programs lack the indexes until
  // something is written. Nothing: failure.
  std::optional<bool> has_series_indexes();
  [[nodiscard]] bool make_series_indexes();

  // Changes when another process has written. Nothing: failure.
  std::optional<std::int64_t> data_version();

  // How long, in total, the statements until the next renew_wait() wait for another process's lock
  // before they fail.
  void limit_wait(std::chrono::milliseconds total) { wait_.limit = total; }
  void renew_wait() { wait_.waited = {}; }
  void pause_waiting(bool pause) { wait_.none = pause; }

  // Why something failed, with the file's name: the latest failure, whatever succeeded since. Empty
  // where nothing did.
  std::string reason() const;
  bool violates_constraint() const { return failure().fault == SqliteFault::constraint; }
  bool busy() const { return failure().fault == SqliteFault::busy; }
  // A contradiction in what was read: "the time zone X cannot be read".
  void note_damage(const std::string& what) { connection_.note_damage(what); }

 private:
  struct LimitedWait final : LockWait {
    bool wait(int tries) override;
    std::chrono::milliseconds limit{5000}, waited{0};
    bool none = false;
  };

  EmbeddedDatabase(const std::string& path, SqliteConnection::Access access)
      : path_(path), connection_(path, access, SqliteConnection::PageChecks::on, wait_) {}
  bool look_at_file();
  std::optional<std::int64_t> number_of(const char* sql);
  const SqliteFailure& failure() const { return connection_.failure(); }

  std::string path_;
  LimitedWait wait_;
  SqliteConnection connection_;
  // A file that was locked when it was opened is looked at when it is first used without that.
  bool ready_ = false;
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
  std::optional<SqliteTransaction> transaction_;
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
