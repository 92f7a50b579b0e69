#include "store/series_next.h"

#include <algorithm>

namespace orvello {
namespace {

// A zone may show a moment this much earlier or later than another one does.
constexpr std::int32_t kDaysAround = 2;
// Most series have an occurrence in the next days, so few days are looked at first, and then ever
// more; what comes only after so many is as good as none.
constexpr std::int32_t kFirstStep = 8, kGrowth = 8, kFarthest = 40'000;

class NextSearch {
 public:
  NextSearch(const Series& series, DeviceTime& time, SeriesScratch& scratch)
      : series_(series), time_(time), scratch_(scratch) {
    LocalSeconds first = series.first_start, last = series.last_start;
    for (const SeriesChange& change : series.changes) {
      first = std::min(first, change.start);
      last = std::max(last, change.start);
    }
    first_ = std::max(day_of(first) - kDaysAround, kFirstDay);
    last_ = std::min(day_of(last) + kDaysAround, kLastDay);
  }

  std::optional<StoreItem> next(LocalSeconds now) {
    const Day today = day_of(now);
    DayBounds bounds;
    bounds.end_from = bounds.start_to = today;
    const CalendarDate moment = to_calendar_date(now);
    auto found = pick(bounds, [&](const StoreItem& item, const std::optional<StoreItem>& best) {
      return !is_before(item.end, moment) && (!best || is_before(item.start, best->start));
    });
    const Day end = std::min(last_, today + kFarthest);
    Day from = std::max(today + 1, first_);
    for (std::int32_t step = kFirstStep; !found && from <= end; step *= kGrowth) {
      found = starting(from, std::min(from + (step - 1), end), true);
      from = from + step;
    }
    return found;
  }

  std::optional<StoreItem> last_before(Day day) {
    std::optional<StoreItem> found;
    Day to = std::min(day, last_);
    for (std::int32_t step = kFirstStep; !found && to >= first_; step *= kGrowth) {
      found = starting(std::max(to - (step - 1), first_), to, false);
      to = to - step;
    }
    return found;
  }

 private:
  // Of those that start on these days the first, or the last.
  std::optional<StoreItem> starting(Day from, Day to, bool first) {
    DayBounds bounds;
    bounds.start_from = from;
    bounds.start_to = to;
    return pick(bounds, [first](const StoreItem& item, const std::optional<StoreItem>& best) {
      if (!best) return true;
      return first ? is_before(item.start, best->start) : is_before(best->start, item.start);
    });
  }

  template <typename Better>
  std::optional<StoreItem> pick(const DayBounds& bounds, Better better) {
    OccurrenceList list;
    append_occurrences(series_, bounds, time_, scratch_, list);
    std::optional<StoreItem> best;
    for (std::size_t i = 0; i < list.size(); ++i)
      if (StoreItem item = list.item(i); better(item, best)) best = std::move(item);
    return best;
  }

  const Series& series_;
  DeviceTime& time_;
  SeriesScratch& scratch_;
  Day first_, last_;  // on which any occurrence may start
};

}  // namespace

std::optional<StoreItem> next_or_last(const Series& series, LocalSeconds now, DeviceTime& time,
                                      SeriesScratch& scratch) {
  NextSearch search(series, time, scratch);
  const auto next = search.next(now);
  return next ? next : search.last_before(day_of(now));
}

}  // namespace orvello
