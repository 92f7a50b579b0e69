#include "views/period_query.h"

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <unordered_set>

namespace orvello {

namespace {

// Items that an earlier query returned and a later one may return again. Only those that reach the
// later query's first day can, so few are remembered.
class SeenItems {
 public:
  void remember(const StoreItem& item) { keys_.insert(key(item)); }
  bool contains(const StoreItem& item) const { return keys_.count(key(item)) != 0; }

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
  static Key key(const StoreItem& item) { return {item.summary->oid, item.start, item.end}; }
  std::unordered_set<Key, Hash> keys_;
};

// Appointments share few categories texts: each is kept and tested once.
class CategoryTexts {
 public:
  CategoryTexts(std::vector<Text>& texts, const ProfileTest& passes)
      : texts_(texts), passes_(passes) {}

  std::int32_t index_of(const Text& text) {
    const auto [place, added] = known_.try_emplace(text, static_cast<std::int32_t>(texts_.size()));
    if (added) {
      texts_.push_back(text);
      allowed_.push_back(!passes_ || passes_(text));
    }
    return place->second;
  }
  bool passes(std::int32_t index) const { return allowed_[static_cast<std::size_t>(index)]; }

 private:
  std::vector<Text>& texts_;
  const ProfileTest& passes_;
  std::vector<bool> allowed_;
  std::unordered_map<Text, std::int32_t> known_;
};

}  // namespace

std::array<Text, 3> period_restrictions(const MonthGrid& grid) {
  return {
      format(u"[End] >= <%.0f AND [Start] <  <%.0f", grid.grid_start, grid.month_start),
      format(u"[End] >= <%.0f AND [Start] <= <%.0f", grid.month_start, grid.month_end),
      format(u"[End] >  <%.0f AND [Start] <= <%.0f", grid.month_end, grid.grid_end),
  };
}

std::optional<PeriodItems> fetch_period(const ItemsSource& source, const MonthGrid& grid,
                                        const ProfileTest& passes, const ItemVisit& visit) {
  PeriodItems found;
  SeenItems seen;
  CategoryTexts texts(found.categories, passes);
  // The first day that the following query may share with this one; the last has none.
  const std::array<Day, 3> next_first = {whole_day(grid.month_start), whole_day(grid.month_end),
                                         whole_day(kNoDate) + 1};
  // And the last day on which an item of this query may start to be one of an earlier query's.
  const std::array<Day, 3> shared_until = {Day(std::numeric_limits<std::int32_t>::min()),
                                           whole_day(grid.month_start), whole_day(grid.month_end)};
  const std::array<Text, 3> queries = period_restrictions(grid);

  const std::unique_ptr<StoreItems> all = source();
  if (!all) return std::nullopt;
  all->set_include_recurrences(true);
  all->sort(u"[Start]", false);
  AppointmentFieldSet wanted = {AppointmentField::categories, AppointmentField::busy_status};
  if (visit) wanted.add(AppointmentField::subject);
  all->want(wanted);
  for (std::size_t query = 0; query < queries.size(); ++query) {
    const std::unique_ptr<StoreItems> items = all->restrict_to(queries[query]);
    const bool whole = each_item(items.get(), [&](const StoreItem& item) {
      if (!item.summary) return;
      if (whole_day(item.start) <= shared_until[query] && seen.contains(item)) return;
      if (whole_day(item.end) >= next_first[query]) seen.remember(item);
      const AppointmentSummary& summary = *item.summary;
      const std::int32_t categories = texts.index_of(summary.categories);
      found.items.push_back({item.start, item.end, categories, summary.busy_status, summary.all_day,
                             texts.passes(categories)});
      if (visit) visit(item, found.items.back());
    });
    if (!whole) return std::nullopt;
  }
  return found;
}

CellSpan cells_of(const PeriodItem& item, const MonthGrid& grid) {
  const auto cell = [&](CalendarDate date) {
    return std::clamp(whole_day(date) - whole_day(grid.grid_start), -2, 1000);
  };
  CellSpan span{cell(item.start), cell(item.end)};
  span.first = std::max(span.first, 0);
  span.last = std::min(span.last, grid.rows * 7 - 1);
  return span;
}

}  // namespace orvello
