#include "store/embedded/sqlite/transaction.h"

namespace orvello {
namespace {

const char* words_of(SqliteTransaction::Kind kind) {
  switch (kind) {
    case SqliteTransaction::Kind::read:
      return "BEGIN";
    case SqliteTransaction::Kind::write:
      return "BEGIN IMMEDIATE";
    case SqliteTransaction::Kind::alone:
      break;
  }
  return "BEGIN EXCLUSIVE";
}

}  // namespace

SqliteTransaction::SqliteTransaction(SqliteConnection& connection, Kind kind)
    : connection_(connection), open_(connection.use(words_of(kind))->run()) {}

bool SqliteTransaction::commit() {
  if (!open_) return false;
  if (!connection_.use("COMMIT")->run() &&
      connection_.failure().fault != SqliteFault::folder_not_synced)
    return false;
  open_ = false;
  return true;
}

// A full disk ends a transaction without being asked.
void SqliteTransaction::take_back() {
  if (open_ && connection_.in_transaction()) connection_.roll_back();
  open_ = false;
}

}  // namespace orvello
