// What the calendar shows of a span of days.
#include <algorithm>

#include "calendar/rule_days.h"
#include "store/embedded/embedded_database.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/item_columns.h"
#include "store/embedded/series_cache.h"
#include "store/embedded/span_classes.h"

namespace orvello {
namespace {

// Days by which the device may show an item earlier or later than its row says: a zone may do that
// by more than a day, a skipped time of the device's own clock by a few minutes past midnight.
constexpr std::int32_t kZonedMargin = 2;
constexpr std::int32_t kFloatingMargin = 1;

}  // namespace

bool EmbeddedStore::query(const ItemQuery& query, OccurrenceList& list) {
  const DayBounds& bounds = query.bounds;
  problem_.clear();
  begin_waiting();
  time_.follow_device_zone();
  ReadScope scope(*db_);
  if (!scope || !follow_changes()) return failed();
  if (!load_series(bounds)) {
    cache_->forget();
    return failed();
  }
  if (!read_singles(query, list)) return query.given_up() ? false : failed();
  for (const Series& series : cache_->all()) {
    if (query.stopped()) return false;
    if (query.occurrences) {
      append_occurrences(series, bounds, time_, cache_->scratch, list);
      continue;
    }
    const auto span =
        time_.shown(series.start, series.start + series.duration, series.zone, series.all_day);
    if (!bounds.admit(day_of(span.start), day_of(span.end))) continue;
    list.show(series.summary);
    list.add(span.start, span.end);
  }
  return true;
}

bool EmbeddedStore::follow_changes() {
  const auto version = db_->data_version();
  if (!version) return false;
  if (*version == cache_version_) return true;
  cache_version_ = *version;
  indexed_.reset();
  forget();
  return true;
}

bool EmbeddedStore::read_singles(const ItemQuery& query, OccurrenceList& list) {
  if (query.bounds.empty()) return true;
  for (int span_class = 0; span_class < 2 * kSpanClasses; ++span_class)
    if (!read_class(span_class, query, list)) return false;
  return true;
}

bool EmbeddedStore::read_class(int span_class, const ItemQuery& query, OccurrenceList& list) {
  const DayBounds& bounds = query.bounds;
  const auto longest = kSpanDays[span_class % kSpanClasses];
  const bool zoned = span_class >= kSpanClasses;
  const auto margin = zoned ? kZonedMargin : kFloatingMargin;
  auto rows = db_->use("SELECT oid, start, end, zone, " ORVELLO_SHARED_COLUMNS
                       " FROM items WHERE recurring = 0 AND span_class = ?1"
                       " AND first_day BETWEEN ?2 AND ?3 AND last_day BETWEEN ?4 AND ?5");
  rows->bind(1, span_class)
      .bind(2, std::max(bounds.start_from, bounds.end_from - longest).number() - margin)
      .bind(3, std::min(bounds.start_to, bounds.end_to).number() + margin)
      .bind(4, bounds.end_from.number() - margin)
      .bind(5, bounds.end_to.number() + margin);
  return rows->each([&](Statement& row) {
    if (query.stopped()) return false;
    const auto zone = zoned ? time_.zone(row.string(3)) : std::optional<const Zone*>(nullptr);
    if (!zone) return false;
    const auto span = time_.shown(row.moment(1), row.moment(2), *zone, row.flag(4));
    if (!bounds.admit(day_of(span.start), day_of(span.end))) return true;
    list.show(read_summary(row, 4, row.small(0), false, query.wanted));
    list.add(span.start, span.end);
    return true;
  });
}

Result<std::vector<std::int32_t>> EmbeddedStore::oids(std::optional<Day> from_day,
                                                      std::optional<Day> to_day) {
  problem_.clear();
  begin_waiting();
  if (!from_day && !to_day) {
    std::vector<std::int32_t> all;
    auto rows = db_->use("SELECT oid FROM items ORDER BY oid");
    if (!rows->each([&](Statement& row) { all.push_back(row.small(0)); }))
      return failure<std::vector<std::int32_t>>();
    return all;
  }
  DayBounds bounds;
  bounds.end_from = from_day.value_or(kFirstDay);
  bounds.start_to = to_day.value_or(kLastDay);
  OccurrenceList list;
  if (!query({bounds, true}, list)) return Result<std::vector<std::int32_t>>::failure(problem_);
  return list.oids();
}

}  // namespace orvello
