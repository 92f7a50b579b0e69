#include "store/embedded/embedded_database.h"

#include <algorithm>
#include <thread>

#include "store/embedded/calendar_file.h"
#include "store/embedded/embedded_schema.h"

namespace orvello {

Result<std::unique_ptr<EmbeddedDatabase>> EmbeddedDatabase::open(
    const std::string& path, Mode mode, std::optional<std::chrono::milliseconds> busy_wait) {
  using Opened = Result<std::unique_ptr<EmbeddedDatabase>>;
  const bool writes = mode == Mode::read_write;
  auto fault = writes ? make_calendar_file_ready(path) : fault_in_calendar_file(path);
  if (!fault.empty()) return Opened::failure(std::move(fault));
  std::unique_ptr<EmbeddedDatabase> opened(new EmbeddedDatabase(
      path, writes ? SqliteConnection::Access::read_write : SqliteConnection::Access::read_only));
  if (busy_wait) opened->limit_wait(*busy_wait);
  const bool good = opened->connection_.good();
  if (good && (opened->ready() || (busy_wait && opened->busy()))) return opened;
  return Opened::failure(opened->reason());
}

bool EmbeddedDatabase::LimitedWait::wait(int tries) {
  const auto left = limit - waited;
  if (left.count() <= 0 || none) return false;
  const auto step = std::min(left, std::chrono::milliseconds(tries < 10 ? 1 + tries : 20));
  std::this_thread::sleep_for(step);
  waited += step;
  return true;
}

bool EmbeddedDatabase::ready() { return ready_ || (ready_ = look_at_file()); }

// A rollback journal rather than a write-ahead log: the calendar stays one file that can be copied,
// and nothing is left beside it.
bool EmbeddedDatabase::look_at_file() {
  constexpr const char* kSettings =
      "PRAGMA trusted_schema = OFF; PRAGMA synchronous = EXTRA; PRAGMA cache_size = -65536;"
      "PRAGMA temp_store = MEMORY; PRAGMA secure_delete = ON;";
  if (!connection_.run(kSettings)) return false;
  // Reads the schema, and with it finds a damaged one.
  const auto tables =
      connection_.number("SELECT count(*) FROM sqlite_schema WHERE name = 'items_series'");
  if (tables && *tables != 1) note_damage("");
  return tables == 1;
}

StatementUse EmbeddedDatabase::use(const char* sql) {
  return ready() ? connection_.use(sql) : connection_.use_none(sql);
}

std::optional<std::int64_t> EmbeddedDatabase::number_of(const char* sql) {
  std::optional<std::int64_t> number;
  const bool read = use(sql)->each([&](Statement& row) { number = row.number(0); });
  return read ? number : std::nullopt;
}

std::optional<bool> EmbeddedDatabase::has_series_indexes() {
  const auto found = number_of(
      "SELECT count(*) FROM sqlite_schema"
      " WHERE name IN ('items_alive', 'exceptions_changed')");
  if (!found) return std::nullopt;
  return *found == 2;
}

bool EmbeddedDatabase::make_series_indexes() { return ready() && connection_.run(kSeriesIndexes); }

std::optional<std::int64_t> EmbeddedDatabase::data_version() {
  return number_of("PRAGMA data_version");
}

std::string EmbeddedDatabase::reason() const {
  return failure().fault == SqliteFault::none ? "" : sentence_of(failure(), path_);
}

// Beginning takes no lock: the first read does, and fixes the state that is read.
ReadScope::ReadScope(EmbeddedDatabase& db) {
  if (db.in_transaction()) return;
  good_ = db.ready();
  if (!good_) return;
  transaction_.emplace(db.connection(), SqliteTransaction::Kind::read);
  good_ = *transaction_ && db.data_version();
}

ReadScope::~ReadScope() {
  if (transaction_) (void)transaction_->commit();
}

}  // namespace orvello
