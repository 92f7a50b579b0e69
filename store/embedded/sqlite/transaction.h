// A transaction: what is not committed when it ends is taken back.
#pragma once

#include "store/embedded/sqlite/connection.h"

namespace orvello {

class SqliteTransaction {
 public:
  enum class Kind {
    read,   // several reads of one state of the file, which the first of them fixes
    write,  // others can read
    alone   // others can neither read nor write
  };
  // False where it could not begin; the connection says why.
  SqliteTransaction(SqliteConnection& connection, Kind kind);
  ~SqliteTransaction() { take_back(); }
  SqliteTransaction(const SqliteTransaction&) = delete;
  SqliteTransaction& operator=(const SqliteTransaction&) = delete;
  explicit operator bool() const { return open_; }

  // True too where only the folder could not be synced after the journal was gone: the file has all
  // of the change then, and whoever was told otherwise would do it again. After a failure it is
  // still open.
  [[nodiscard]] bool commit();
  void take_back();  // the connection's failure stays what it is

 private:
  SqliteConnection& connection_;
  bool open_;
};

}  // namespace orvello
