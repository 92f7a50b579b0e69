#include "views/period_query.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

namespace orvello {

namespace {

// Items that an earlier query returned and a later one may return again. Only those that reach the
// later query's first day can, so few are remembered.
class SeenItems {
 public:
  void remember(const PeriodItem& item) { keys_.insert(key(item)); }
  bool contains(const PeriodItem& item) const { return keys_.count(key(item)) != 0; }

 private:
  // Each query may answer with summaries of its own, so the item is known by its id and times.
  struct Key {
    std::int32_t oid;
    CalendarDate start, end;
    bool operator==(const Key&) const = default;
  };
  struct Hash {
    std::size_t operator()(const Key& key) const {
      return std::hash<double>()(key.start) * 31 + static_cast<std::size_t>(key.oid);
    }
  };
  static Key key(const PeriodItem& item) { return {item.summary->oid, item.start, item.end}; }
  std::unordered_set<Key, Hash> keys_;
};

class ProfileCache {
 public:
  explicit ProfileCache(const ProfileTest& passes) : passes_(passes) {}

  bool passes(const AppointmentSummary* summary) {
    if (!passes_) return true;
    const auto [place, added] = known_.try_emplace(summary, false);
    if (added) place->second = passes_(summary->categories);
    return place->second;
  }

 private:
  const ProfileTest& passes_;
  std::unordered_map<const AppointmentSummary*, bool> known_;
};

}  // namespace

std::array<Text, 3> period_restrictions(const MonthGrid& grid) {
  return {
      format(u"[End] >= <%.0f AND [Start] <  <%.0f", grid.grid_start, grid.month_start),
      format(u"[End] >= <%.0f AND [Start] <= <%.0f", grid.month_start, grid.month_end),
      format(u"[End] >  <%.0f AND [Start] <= <%.0f", grid.month_end, grid.grid_end),
  };
}

std::vector<PeriodItem> fetch_period(const ItemsSource& source, const MonthGrid& grid,
                                     const ProfileTest& passes) {
  std::vector<PeriodItem> found;
  SeenItems seen;
  ProfileCache profile(passes);
  // The first day that the following query may share with this one; the last has none.
  const std::array<CalendarDate, 3> next_first = {grid.month_start, grid.month_end, kNoDate};
  // And the last day on which an item of this query may start to be one of an earlier query's.
  const std::array<CalendarDate, 3> shared_until = {-1, grid.month_start, grid.month_end};
  const std::array<Text, 3> texts = period_restrictions(grid);

  const std::unique_ptr<StoreItems> all = source();
  if (!all) return found;
  all->set_include_recurrences(true);
  all->sort(u"[Start]", false);
  for (std::size_t query = 0; query < texts.size(); ++query) {
    const std::unique_ptr<StoreItems> items = all->restrict_to(texts[query]);
    if (!items) continue;
    for (int index = 1;; ++index) {
      std::optional<StoreItem> item = items->item(index);
      if (!item) break;
      if (!item->summary) continue;
      PeriodItem kept{item->start, item->end, std::move(item->summary), true};
      if (kept.start < shared_until[query] + 1 && seen.contains(kept)) continue;
      if (kept.end >= next_first[query]) seen.remember(kept);
      kept.passes_profile = profile.passes(kept.summary.get());
      found.push_back(std::move(kept));
    }
  }
  return found;
}

CellSpan cells_of(const PeriodItem& item, const MonthGrid& grid, int generation) {
  // Clamped before they become whole numbers: an absent date lies far outside.
  const auto cell = [&](CalendarDate date) {
    return static_cast<int>(std::clamp(std::trunc(date) - grid.grid_start, -2.0, 1000.0));
  };
  CellSpan span{cell(item.start), cell(item.end)};
  if (item.summary->all_day && generation == 3) --span.last;
  span.first = std::max(span.first, 0);
  span.last = std::min(span.last, grid.rows * 7 - 1);
  return span;
}

}  // namespace orvello
