// A connection to an SQLite file: the one that everything in a file of this program is read and
// written through. Who uses it sees no handles and no codes of SQLite.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "store/embedded/sqlite/sqlite_failure.h"
#include "store/embedded/sqlite/statement.h"

struct sqlite3;

namespace orvello {

// What a connection does while another process holds the file's lock.
class LockWait {
 public:
  // After `tries` waits: waits a little; false gives up.
  virtual bool wait(int tries) = 0;

 protected:
  ~LockWait() = default;
};

class SqliteConnection {
 public:
  enum class Access { read_only, read_write };  // neither creates a file
  enum class PageChecks { on, off };

  // Look at good() before anything else. `wait` outlives the connection.
  SqliteConnection(const std::string& path, Access access, PageChecks checks, LockWait& wait);
  SqliteConnection(const std::string& path, Access access, PageChecks checks,
                   std::chrono::milliseconds patience);
  ~SqliteConnection();
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;
  bool good() const { return good_; }

  // Prepared once; `sql` must be a literal, as it is known by its address. One literal has one use
  // at a time.
  StatementUse use(const char* sql);
  // The same, of a statement that fails: for a file that is not ready for any.
  StatementUse use_none(const char* sql);

  // One or several statements without answers.
  [[nodiscard]] bool run(const std::string& sql);
  // The number in the only row; nothing where it could not be read.
  std::optional<std::int64_t> number(const char* sql);
  // Whether a pragma that checks the file finds nothing. Nothing: the check broke off.
  std::optional<bool> finds_sound(const char* check);

  std::int64_t last_row() const;
  std::int64_t changed_rows() const;
  bool in_transaction() const;

  // The latest, whatever succeeded since. Damage is also what a reader finds; what(), as the end of
  // a sentence, or nothing.
  const SqliteFailure& failure() const { return failure_; }
  void note_damage(const std::string& what = {});

  // Of a file with content: whether its pages have checksums. Before an empty one gets its first
  // table: they will.
  bool has_checked_pages();
  [[nodiscard]] bool reserve_checks();
  // Whether the path stands for another file by now.
  bool has_moved();

 private:
  friend class Statement;
  friend class SqliteTransaction;
  friend SqliteFailure copy_pages(SqliteConnection& from, SqliteConnection& to);
  void open(const std::string& path, Access access, PageChecks checks);
  void note_failure();
  void roll_back();

  sqlite3* db_ = nullptr;
  bool good_ = false;
  SqliteFailure failure_;
  std::unordered_map<const char*, std::unique_ptr<Statement>> statements_;
};

// All pages of one state of a file into an empty one, while others use the first. Fails with
// the reason.
SqliteFailure copy_pages(SqliteConnection& from, SqliteConnection& to);

}  // namespace orvello
