#include "views/accessible_counts.h"

#include <algorithm>

#include "views/item_days.h"

namespace orvello {

std::vector<int> count_days(const ItemsSource& source, std::int32_t from_day, std::int32_t to_day,
                            const ProfileTest& passes, int generation) {
  std::vector<int> counts(static_cast<std::size_t>(std::max(0, to_day - from_day + 1)));
  const std::unique_ptr<StoreItems> all = counts.empty() ? nullptr : source();
  if (!all) return counts;
  all->set_include_recurrences(true);
  const std::unique_ptr<StoreItems> items =
      all->restrict_to(format(u"[End] >= <%d AND [Start] <= <%d", from_day, to_day));
  if (!items) return counts;
  ProfileMemory allowed(passes);
  for (int index = 1;; ++index) {
    const std::optional<StoreItem> item = items->item(index);
    if (!item) return counts;
    if (!item->summary || !allowed.passes(item->summary->categories)) continue;
    const DaySpan span = days_of(*item, generation);
    for (std::int32_t day = std::max(span.first, from_day); day <= std::min(span.last, to_day);
         ++day)
      counts[static_cast<std::size_t>(day - from_day)] +=
          static_cast<int>(std::clamp<std::int64_t>(item->many, 1, 1000000));
  }
}

}  // namespace orvello
