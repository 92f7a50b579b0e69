#include "store/embedded/embedded_store.h"

#include <cassert>
#include <random>

#include "store/embedded/embedded_database.h"
#include "store/embedded/series_cache.h"

namespace orvello {
namespace {

constexpr int kKeptChanges = 1000;

}  // namespace

Result<std::unique_ptr<EmbeddedStore>> EmbeddedStore::open(const std::string& path,
                                                           const Clock& clock) {
  return open(EmbeddedDatabase::open(path), clock);
}

Result<std::unique_ptr<EmbeddedStore>> EmbeddedStore::open_for_window(
    const std::string& path, const Clock& clock, std::chrono::milliseconds wait) {
  auto store = open(EmbeddedDatabase::open(path, EmbeddedDatabase::Mode::read_write, wait), clock);
  if (store) (*store)->limit_wait(wait);
  return store;
}

Result<std::unique_ptr<EmbeddedStore>> EmbeddedStore::open_to_read(const std::string& path,
                                                                   const Clock& clock) {
  return open(EmbeddedDatabase::open(path, EmbeddedDatabase::Mode::read_only), clock);
}

Result<std::unique_ptr<EmbeddedStore>> EmbeddedStore::open(
    Result<std::unique_ptr<EmbeddedDatabase>> database, const Clock& clock) {
  using Opened = Result<std::unique_ptr<EmbeddedStore>>;
  if (!database) return Opened::failure(database.reason());
  std::unique_ptr<EmbeddedStore> store(new EmbeddedStore(std::move(*database), clock));
  // Another process may hold the file; the database let that pass, or would have failed itself.
  if (!store->start_log() && !store->busy()) return Opened::failure(store->problem());
  return store;
}

EmbeddedStore::EmbeddedStore(std::unique_ptr<EmbeddedDatabase> database, const Clock& clock)
    : RecordCalendarStore(clock),
      db_(std::move(database)),
      cache_(std::make_unique<SeriesCache>()) {
  std::random_device source;
  process_ = static_cast<std::int64_t>(source()) << 31 | source() >> 1;
}

EmbeddedStore::~EmbeddedStore() { rollback(); }

// Changes from now on are told.
bool EmbeddedStore::start_log() {
  ReadScope scope(*db_);
  const auto version = scope ? db_->data_version() : std::nullopt;
  if (!version) return failed();
  seen_version_ = *version;
  const bool read = db_->use("SELECT max(number) FROM changes")->each([&](Statement& row) {
    if (!row.is_null(0)) seen_change_ = row.number(0);
  });
  log_started_ = read;
  return read || failed();
}

bool EmbeddedStore::failed() {
  fail(db_->reason());
  return false;
}

bool EmbeddedStore::damaged(const std::string& what) {
  db_->note_damage(what);
  return failed();
}

std::string EmbeddedStore::any_failure() const { return db_->reason(); }

bool EmbeddedStore::busy() const { return db_->busy() && problem_ == db_->reason(); }

void EmbeddedStore::limit_wait(std::chrono::milliseconds total) {
  limited_wait_ = true;
  db_->limit_wait(total);
}

void EmbeddedStore::renew_wait() { db_->renew_wait(); }

void EmbeddedStore::begin_waiting() {
  if (!limited_wait_ && !db_->in_transaction()) db_->renew_wait();
}

// What was read may hold no longer.
void EmbeddedStore::forget() {
  cache_->forget();
  time_.forget_zones();
  next_state();
}

bool EmbeddedStore::begin_read() {
  begin_waiting();
  problem_.clear();
  if (readings_ == 0) {
    reading_ = std::make_unique<ReadScope>(*db_);
    if (!*reading_) {
      reading_.reset();
      return failed();
    }
  }
  ++readings_;
  return true;
}

void EmbeddedStore::end_read() {
  if (readings_ > 0 && --readings_ == 0) reading_.reset();
}

bool EmbeddedStore::begin() {
  if (in_transaction()) return false;
  assert(readings_ == 0);  // a reader that begins to write could wait for itself
  begin_waiting();
  problem_.clear();
  if (!db_->ready()) return failed();
  transaction_.emplace(db_->connection(), SqliteTransaction::Kind::write);
  if (!*transaction_) {
    transaction_.reset();
    return failed();
  }
  if (!complete_indexes()) {
    failed();
    rollback();
    return false;
  }
  spoilt_ = false;
  kinds_ = 0;
  puts_ = 0;
  category_changes_.clear();
  return true;
}

bool EmbeddedStore::commit() {
  if (!in_transaction()) return false;
  // The reason why a write failed was kept then. A full disk ends a transaction without being
  // asked.
  const bool lost = spoilt_ || !db_->in_transaction();
  std::int64_t note = 0;
  if (lost || !write_notes(note) || !transaction_->commit()) {
    if (!lost) failed();
    rollback();
    // The last step may fail when the change is on the disk already.
    if (lost || !is_logged(note)) return false;
    problem_.clear();
  }
  transaction_.reset();
  for (int kind = 0; kind < 3; ++kind)
    if (kinds_ >> kind & 1) note_change(static_cast<StoreChange>(kind), false);
  return true;
}

void EmbeddedStore::rollback() {
  if (!in_transaction()) return;
  transaction_.reset();
  indexed_.reset();
  forget();
}

bool EmbeddedStore::change(const std::function<bool()>& write) {
  const bool own = !in_transaction();
  if (own && !begin()) return false;
  if (!own && (spoilt_ || !db_->in_transaction())) return false;  // lost; the reason still stands
  problem_.clear();
  next_state();
  // Also when something is thrown out of it.
  struct TakeBack {
    ~TakeBack() {
      if (kept) return;
      store.spoilt_ = true;
      if (own) store.rollback();
    }
    EmbeddedStore& store;
    bool own, kept = false;
  } take_back{*this, own};
  if (write()) return take_back.kept = !own || commit();
  if (problem_.empty()) failed();
  return false;
}

void EmbeddedStore::count_category(int folder, const Text& text, int difference) {
  if (!text.empty()) category_changes_[{folder, to_utf8(text)}] += difference;
}

// Whether the transaction whose last note this was has been kept after all.
bool EmbeddedStore::is_logged(std::int64_t note) {
  bool logged = false;
  auto read = db_->use("SELECT 1 FROM changes WHERE number = ?1 AND process = ?2");
  read->bind(1, note).bind(2, process_);
  return note != 0 && read->each([&](Statement&) { logged = true; }) && logged;
}

// The log tells other processes what happened, once for each kind in a transaction.
bool EmbeddedStore::write_notes(std::int64_t& last) {
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
    last = db_->last_row();
    auto prune = db_->use("DELETE FROM changes WHERE number <= ?1");
    if (!prune->bind(1, last - kKeptChanges).run()) return false;
  }
  return true;
}

// Another process's lock is no reason to stand still here: there is a next time.
bool EmbeddedStore::poll() {
  if (!in_transaction()) {
    if (limited_wait_) db_->renew_wait();
    (void)see_changes();
  }
  return RecordCalendarStore::poll();
}

bool EmbeddedStore::see_changes() {
  const WaitPause no_waiting(*db_);
  if (!log_started_) {  // a lock kept it until now: what came meanwhile is not known
    if (!start_log()) return false;
    note_change(StoreChange::changed, true);
    return true;
  }
  const auto version = db_->data_version();
  if (!version || *version == seen_version_) return version.has_value();
  ReadScope scope(*db_);
  if (!scope) return false;
  std::int64_t next = seen_change_ + 1;
  bool missed_some = false;
  unsigned kinds = 0;
  auto changes = db_->use("SELECT number, process, kind FROM changes WHERE number > ?1");
  const bool whole = changes->bind(1, seen_change_).each([&](Statement& row) {
    missed_some |= row.number(0) > next;
    next = row.number(0) + 1;
    if (row.number(1) != process_) kinds |= 1u << (row.number(2) & 3);
  });
  if (!whole) return false;
  if (missed_some) note_change(StoreChange::changed, true);
  for (int kind = 0; kind < 3; ++kind)
    if (kinds >> kind & 1) note_change(static_cast<StoreChange>(kind), true);
  seen_change_ = next - 1;
  seen_version_ = *version;
  return true;
}

bool EmbeddedStore::put_zone(const Zone& zone) {
  const auto known = this->zone(zone.name());
  if (!known) return spoilt_ = in_transaction(), false;
  if (*known && (*known)->definition() == zone.definition()) return true;
  const bool written = change([&] {
    auto write = db_->use("INSERT OR REPLACE INTO zones (name, definition) VALUES (?1, ?2)");
    return write->bind(1, zone.name()).bind(2, zone.definition()).run();
  });
  forget();  // the series refer to the zones they knew
  return written;
}

Result<std::optional<Zone>> EmbeddedStore::zone(std::string_view name) {
  std::optional<Zone> zone;
  bool readable = true;
  auto rows = db_->use("SELECT definition FROM zones WHERE name = ?1");
  const bool whole = rows->bind(1, name).each([&](Statement& row) {
    auto parsed = Zone::parse(row.bytes(0));
    readable = parsed && parsed->name() == name;
    if (readable) zone = std::move(*parsed);
  });
  if (!whole) return failure<std::optional<Zone>>();
  if (!readable) {
    damaged("the time zone " + std::string(name) + " cannot be read");
    return Result<std::optional<Zone>>::failure(problem_);
  }
  return zone;
}

}  // namespace orvello
