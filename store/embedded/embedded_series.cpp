// The series that a query needs: those alive in its days, found through an index, with their
// exceptions. The rest of the file's series costs nothing.
#include <algorithm>

#include "calendar/rule_days.h"
#include "store/embedded/embedded_database.h"
#include "store/embedded/embedded_schema.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/item_columns.h"
#include "store/embedded/series_cache.h"
#include "store/embedded/stored_pattern.h"
#include "store/record_rules.h"

namespace orvello {
namespace {

#define ORVELLO_SERIES_COLUMNS \
  "oid, start, end, zone, " ORVELLO_SHARED_COLUMNS ", last_start, pattern, resolved"

// Days by which the device may show a series earlier or later than its row says.
constexpr std::int32_t kMargin = 2;

SeriesDays days_of(const DayBounds& bounds) {
  const auto from = std::max(bounds.start_from, bounds.end_from);
  const auto to = std::min(bounds.start_to, bounds.end_to);
  return {std::min(from, to) - kMargin, std::max(from, to) + kMargin};
}

std::int64_t midnight(Day day) { return midnight_of(day).count(); }

}  // namespace

bool EmbeddedStore::knows_indexes() {
  if (!indexed_) indexed_ = db_->has_series_indexes();
  return indexed_.has_value();
}

// A file of an older program gets its indexes with the first change. What that program held for a
// series' first day knew nothing of dates added before the start.
bool EmbeddedStore::complete_indexes() {
  if (!knows_indexes()) return false;
  if (*indexed_) return true;
  struct Early {
    std::int32_t oid;
    LocalSeconds first;
  };
  std::vector<Early> all;
  auto rows = db_->use(
      "SELECT oid, start, resolved, all_day FROM items"
      " WHERE recurring = 1 AND resolved LIKE '%RDATE:%'");
  if (!rows->each([&](Statement& row) {
        const auto set = read_rules(row.string(2), row.moment(1), nullptr, row.flag(3));
        if (!set.dates.empty() && set.dates.front() < set.start)
          all.push_back({row.small(0), set.dates.front()});
      }))
    return false;
  for (const Early& early : all) {
    auto write = db_->use("UPDATE items SET first_day = ?1 WHERE oid = ?2");
    if (!write->bind(1, day_of(early.first).number()).bind(2, early.oid).run()) return false;
  }
  if (!db_->make_series_indexes()) return false;
  indexed_ = true;
  return true;
}

bool EmbeddedStore::load_series(const DayBounds& bounds) {
  if (bounds.empty()) return true;
  const SeriesDays asked = days_of(bounds);
  if (cache_->covers(asked)) return true;
  if (!knows_indexes()) return false;
  if (!*indexed_) return read_all_series();
  const SeriesDays days = cache_->make_room(asked);
  std::vector<std::int32_t> added;
  if (!read_alive_series(days, added) || !read_changed_series(days, added) ||
      !read_series_exceptions(added))
    return false;
  cache_->cover(days);
  return true;
}

bool EmbeddedStore::read_all_series() {
  cache_->forget();
  std::vector<std::int32_t> added;
  auto rows = db_->use("SELECT " ORVELLO_SERIES_COLUMNS
                       " FROM items INDEXED BY items_series WHERE recurring = 1");
  if (!rows->each([&](Statement& row) { return read_series_row(row, added); }) ||
      !read_series_exceptions(added))
    return false;
  cache_->cover({Day(2 * kFirstDay.number()), Day(2 * kLastDay.number())});
  return true;
}

bool EmbeddedStore::read_alive_series(const SeriesDays& days, std::vector<std::int32_t>& added) {
  for (int length = 0; length < kSeriesClasses; ++length) {
    const bool endless = length == kEndlessClass;
    auto rows = db_->use("SELECT " ORVELLO_SERIES_COLUMNS
                         " FROM items INDEXED BY items_alive WHERE recurring = 1"
                         " AND " ORVELLO_SERIES_CLASS
                         " = ?1 AND first_day BETWEEN ?2 AND ?3"
                         " AND (last_start IS NULL OR last_start + end - start >= ?4)");
    rows->bind(1, length)
        .bind(2, endless ? std::int64_t{cache_->endless_to().number()} + 1
                         : std::int64_t{days.from.number()} - kSeriesDays[length])
        .bind(3, days.to.number())
        .bind(4, midnight(days.from));
    if (!rows->each([&](Statement& row) { return read_series_row(row, added); })) return false;
  }
  return true;
}

// Changed occurrences may have been moved to days on which their series has none.
bool EmbeddedStore::read_changed_series(const SeriesDays& days, std::vector<std::int32_t>& added) {
  std::vector<std::int32_t> missing;
  const auto take = [&](Statement& row) {
    if (!cache_->find(row.small(0))) missing.push_back(row.small(0));
  };
  auto brief = db_->use(
      "SELECT DISTINCT oid FROM exceptions INDEXED BY exceptions_changed WHERE deleted = 0"
      " AND " ORVELLO_LONG_CHANGE " = 0 AND start BETWEEN ?1 AND ?2");
  brief->bind(1, midnight(days.from - kShortChangeDays)).bind(2, midnight(days.to + 1));
  auto lengthy = db_->use(
      "SELECT DISTINCT oid FROM exceptions INDEXED BY exceptions_changed WHERE deleted = 0"
      " AND " ORVELLO_LONG_CHANGE " = 1 AND start <= ?2 AND end >= ?1");
  lengthy->bind(1, midnight(days.from)).bind(2, midnight(days.to + 1));
  if (!brief->each(take) || !lengthy->each(take)) return false;
  for (const std::int32_t oid : missing) {
    auto rows =
        db_->use("SELECT " ORVELLO_SERIES_COLUMNS " FROM items WHERE oid = ?1 AND recurring = 1");
    if (!rows->bind(1, oid).each([&](Statement& row) { return read_series_row(row, added); }))
      return false;
    if (!cache_->find(oid))
      return damaged("an exception belongs to no series (" + std::to_string(oid) + ")");
  }
  return true;
}

bool EmbeddedStore::read_series_row(Statement& row, std::vector<std::int32_t>& added) {
  Series series;
  series.oid = row.small(0);
  if (cache_->find(series.oid)) return true;
  series.start = row.moment(1);
  series.duration = row.moment(2) - series.start;
  const auto zone = time_.zone(row.string(3));
  if (!zone) return false;
  series.zone = *zone;
  series.summary = read_summary(row, 4, series.oid, true);
  series.all_day = series.summary->all_day;
  series.last_start = row.is_null(13) ? kEndOfRules : row.moment(13);
  if (row.is_null(14)) {
    set_recurrence(series, read_rules(row.string(15), series.start, nullptr, series.all_day));
  } else {
    const auto pattern = read_stored_pattern(row.bytes(14));
    if (!pattern)
      return damaged("the recurrence of appointment " + std::to_string(series.oid) +
                     " cannot be read");
    set_recurrence(series, *pattern);
  }
  added.push_back(series.oid);
  cache_->put(std::move(series));
  return true;
}

// Of the series that were just read. Those without exceptions, nearly all, are skipped in leaps.
bool EmbeddedStore::read_series_exceptions(std::vector<std::int32_t>& added) {
  std::sort(added.begin(), added.end());
  for (auto at = added.begin(); at != added.end();) {
    std::int64_t next = 0;
    auto leap = db_->use("SELECT min(oid) FROM exceptions WHERE oid >= ?1");
    if (!leap->bind(1, *at).each(
            [&](Statement& row) { next = row.is_null(0) ? 0 : row.number(0); }))
      return false;
    if (next == 0) return true;
    at = std::lower_bound(at, added.end(), next);
    if (at == added.end() || *at != next) continue;
    Series& series = *cache_->find(*at);
    auto rows = db_->use("SELECT original_start, deleted, start, end, zone, " ORVELLO_SHARED_COLUMNS
                         " FROM exceptions WHERE oid = ?1 ORDER BY position");
    const bool whole = rows->bind(1, *at).each([&](Statement& row) {
      SeriesChange change{row.moment(0), row.moment(2), row.moment(3), nullptr, nullptr};
      const bool deleted = row.flag(1);
      const auto zone = time_.zone(row.string(4));
      if (!zone) return false;
      change.zone = *zone;
      if (!deleted) change.summary = read_summary(row, 5, series.oid, true);
      add_exception(series, change.original_start, deleted ? nullptr : &change);
      return true;
    });
    if (!whole) return false;
    order_exceptions(series);
    ++at;
  }
  return true;
}

}  // namespace orvello
