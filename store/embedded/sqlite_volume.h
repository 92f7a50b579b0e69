// One volume file. A file that is no volume, a damaged one and one of a newer format are refused
// before anything could write to them.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "ports/record_databases.h"
#include "store/embedded/sqlite/connection.h"

namespace orvello {

// How long locks are waited for: less than half a second in all, and that again only after a rest,
// so that a row of operations on a locked volume does not add up.
class LockPatience final : public LockWait {
 public:
  bool wait(int tries) override;

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

  SqliteConnection& connection() { return connection_; }
  DatabaseError reason() const;  // of the last failure

 private:
  SqliteVolume(const std::string& path, SqliteConnection::Access access, LockPatience& patience)
      : path_(path), connection_(path, access, SqliteConnection::PageChecks::on, patience) {}
  bool prepare_format();
  bool out_of_room() const;

  std::string path_;
  SqliteConnection connection_;
};

}  // namespace orvello
