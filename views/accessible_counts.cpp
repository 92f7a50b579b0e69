#include "views/accessible_counts.h"

#include <algorithm>

#include "store/restriction.h"
#include "views/item_days.h"

namespace orvello {

std::optional<std::vector<int>> count_days(const ItemsSource& source, Day from_day, Day to_day,
                                           const ProfileTest& passes) {
  std::vector<int> counts(static_cast<std::size_t>(std::max(0, to_day - from_day + 1)));
  if (counts.empty()) return counts;
  const std::unique_ptr<StoreItems> all = source();
  if (!all) return std::nullopt;
  all->set_include_recurrences(true);
  all->want({AppointmentField::categories});
  const std::unique_ptr<StoreItems> items = all->restrict_to(restriction_to(from_day, to_day));
  ProfileMemory allowed(passes);
  const bool whole = each_item(items.get(), [&](const StoreItem& item) {
    if (!item.summary || !allowed.passes(item.summary->categories)) return;
    const DaySpan span = days_of(item);
    for (Day day = std::max(span.first, from_day); day <= std::min(span.last, to_day); ++day)
      counts[static_cast<std::size_t>(day - from_day)] +=
          static_cast<int>(std::clamp<std::int64_t>(item.many, 1, 1000000));
  });
  if (!whole) return std::nullopt;
  return counts;
}

}  // namespace orvello
