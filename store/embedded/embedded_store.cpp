#include "store/embedded/embedded_store.h"

#include <random>

#include "store/embedded/embedded_database.h"
#include "store/embedded/series_cache.h"

namespace orvello {
namespace {

constexpr int kKeptChanges = 1000;

}  // namespace

Result<std::unique_ptr<EmbeddedStore>> EmbeddedStore::open(const std::string& path,
                                                           const Clock& clock) {
  using Opened = Result<std::unique_ptr<EmbeddedStore>>;
  auto database = EmbeddedDatabase::open(path);
  if (!database) return Opened::failure(database.reason());
  return std::unique_ptr<EmbeddedStore>(new EmbeddedStore(std::move(*database), clock));
}

EmbeddedStore::EmbeddedStore(std::unique_ptr<EmbeddedDatabase> database, const Clock& clock)
    : RecordCalendarStore(clock),
      db_(std::move(database)),
      cache_(std::make_unique<SeriesCache>()) {
  std::random_device source;
  process_ = static_cast<std::int64_t>(source()) << 31 | source() >> 1;
  ReadScope scope(*db_);
  seen_version_ = db_->data_version();
  auto last = db_->use("SELECT max(number) FROM changes");
  if (last->step()) seen_change_ = last->number(0);
}

EmbeddedStore::~EmbeddedStore() {
  if (in_transaction_) rollback();
}

bool EmbeddedStore::failed() {
  fail(db_->reason());
  return false;
}

bool EmbeddedStore::begin() {
  if (in_transaction_) return false;
  if (!db_->run("BEGIN IMMEDIATE")) return failed();
  in_transaction_ = true;
  kinds_ = 0;
  category_changes_.clear();
  return true;
}

bool EmbeddedStore::commit() {
  if (!in_transaction_) return false;
  // A full disk ends a transaction without being asked; the reason was kept then.
  const bool lost = !db_->in_transaction();
  if (lost || !write_notes() || !db_->run("COMMIT")) {
    if (!lost) failed();
    rollback();
    return false;
  }
  in_transaction_ = false;
  for (int kind = 0; kind < 3; ++kind)
    if (kinds_ >> kind & 1) note_change(static_cast<StoreChange>(kind), false);
  return true;
}

void EmbeddedStore::rollback() {
  if (!in_transaction_) return;
  if (db_->in_transaction()) db_->run("ROLLBACK");
  in_transaction_ = false;
  cache_->forget();
  time_.forget_zones();
}

bool EmbeddedStore::change(const std::function<bool()>& write) {
  const bool own = !in_transaction_;
  if (own && !begin()) return false;
  if (!own && !db_->in_transaction()) return false;  // lost already; the reason still stands
  problem_.clear();
  if (write()) return !own || commit();
  if (problem_.empty()) failed();
  if (own) rollback();
  return false;
}

void EmbeddedStore::count_category(int folder, const Text& text, int difference) {
  if (!text.empty()) category_changes_[{folder, to_utf8(text)}] += difference;
}

// The log tells other processes what happened, once for each kind in a transaction.
bool EmbeddedStore::write_notes() {
  for (const auto& [use, difference] : category_changes_) {
    if (difference == 0) continue;
    auto count = db_->use(
        "INSERT INTO category_uses (folder, text, items) VALUES (?1, ?2, ?3)"
        " ON CONFLICT (folder, text) DO UPDATE SET items = items + ?3");
    count->bind(1, use.first).bind(2, use.second).bind(3, difference);
    if (!count->run()) return false;
  }
  if (!category_changes_.empty() && !db_->run("DELETE FROM category_uses WHERE items <= 0"))
    return false;
  for (int kind = 0; kind < 3; ++kind) {
    if (!(kinds_ >> kind & 1)) continue;
    auto note = db_->use("INSERT INTO changes (process, kind) VALUES (?1, ?2)");
    if (!note->bind(1, process_).bind(2, kind).run()) return false;
    auto prune = db_->use("DELETE FROM changes WHERE number <= ?1");
    if (!prune->bind(1, db_->last_row() - kKeptChanges).run()) return false;
  }
  return true;
}

bool EmbeddedStore::poll() {
  const auto version = db_->data_version();
  if (version != seen_version_ && !in_transaction_) {
    seen_version_ = version;
    ReadScope scope(*db_);
    auto changes = db_->use("SELECT number, process, kind FROM changes WHERE number > ?1");
    changes->bind(1, seen_change_);
    std::int64_t next = seen_change_ + 1;
    while (changes->step()) {
      const bool missed_some = changes->number(0) > next;
      next = changes->number(0) + 1;
      if (missed_some) note_change(StoreChange::changed, true);
      if (changes->number(1) != process_)
        note_change(static_cast<StoreChange>(changes->small(2)), true);
    }
    seen_change_ = next - 1;
  }
  return RecordCalendarStore::poll();
}

bool EmbeddedStore::put_zone(const Zone& zone) {
  const auto known = this->zone(zone.name());
  if (known && known->definition() == zone.definition()) return true;
  const bool written = change([&] {
    auto write = db_->use("INSERT OR REPLACE INTO zones (name, definition) VALUES (?1, ?2)");
    return write->bind(1, zone.name()).bind(2, zone.definition()).run();
  });
  cache_->forget();  // it refers to the zones it knew
  time_.forget_zones();
  return written;
}

std::optional<Zone> EmbeddedStore::zone(std::string_view name) {
  auto read = db_->use("SELECT definition FROM zones WHERE name = ?1");
  read->bind(1, name);
  if (!read->step()) return std::nullopt;
  auto zone = Zone::parse(read->bytes(0));
  return zone ? std::optional(std::move(*zone)) : std::nullopt;
}

}  // namespace orvello
