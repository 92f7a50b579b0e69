#include "views/year_marks.h"

#include <algorithm>
#include <unordered_map>

#include "calendar/dates.h"
#include "views/draw_control.h"

namespace orvello {

namespace {

// From one 29 February over 1900, which has none, to the next: as many days hold every date there
// is, so walking further sets no other flag.
constexpr std::int32_t kAllDates = 2921;

// Whole days, the first to the last; none when last < first.
struct DaySpan {
  std::int32_t first = 0;
  std::int32_t last = -1;
};

DaySpan days_of(const StoreItem& item, int generation) {
  // On generation 3 all-day items end at the next midnight. A damaged date stays a number.
  const bool past_midnight = generation == 3 && item.summary->all_day;
  const auto whole = [](CalendarDate date) {
    return static_cast<std::int32_t>(std::clamp(date, -1e6, 3e6));
  };
  DaySpan span{whole(item.start), whole(past_midnight ? item.end - 1 : item.end)};
  span.last = std::min(span.last, span.first + kAllDates);
  return span;
}

// Asks the profile only about days that nothing has marked yet, and once about each text.
class Marker {
 public:
  Marker(const ProfileTest& passes, YearMarks& marks) : passes_(passes), marks_(marks) {}

  void mark(const DaySpan& span, const Text& categories) {
    bool passed = false;
    for (std::int32_t day = span.first; day <= span.last; ++day) {
      const SystemTime date = civil_from_day_number(day);
      if (marks_.at(date.month, date.day)) continue;
      if (!passed && !passes(categories)) return;
      passed = true;
      marks_.set(date.month, date.day);
    }
  }

 private:
  bool passes(const Text& categories) {
    if (!passes_) return true;
    const auto [place, added] = known_.try_emplace(categories, false);
    if (added) place->second = passes_(categories);
    return place->second;
  }

  const ProfileTest& passes_;
  YearMarks& marks_;
  std::unordered_map<Text, bool> known_;
};

}  // namespace

Text year_restriction(int year) {
  const double first = WholeDayNumber(1, 1, year);
  return format(u"[End] >= <%.0f AND [Start] <= <%.0f", first, first + 365);
}

bool BuildYearMarks(int year, const ItemsSource& source, const ProfileTest& passes, int generation,
                    const std::atomic<int>& draw_state, YearMarks& marks) {
  const auto stopped = [&] {
    return draw_state.load(std::memory_order_relaxed) == kRedrawRequested;
  };
  marks = {};
  if (stopped()) return false;
  const std::unique_ptr<StoreItems> all = source();
  if (!all) return true;
  all->sort(u"[Start]", false);
  all->set_include_recurrences(true);
  const std::unique_ptr<StoreItems> items = all->restrict_to(year_restriction(year));
  if (!items) return true;

  Marker marker(passes, marks);
  for (int index = 1; !stopped(); ++index) {
    const std::optional<StoreItem> item = items->item(index);
    if (!item) return true;
    if (item->summary) marker.mark(days_of(*item, generation), item->summary->categories);
  }
  return false;
}

}  // namespace orvello
