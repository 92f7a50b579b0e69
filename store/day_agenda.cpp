#include "store/day_agenda.h"

#include "base/text.h"
#include "store/day_label.h"

namespace orvello {

std::vector<CompactRow> compact_agenda(StoreItems* items, std::int32_t day, bool clock24,
                                       const ProfileFilter& passes) {
  std::vector<CompactRow> rows;
  if (items) {
    // Both bounds are the day itself; the day test below decides, the store only preselects.
    const auto midnight = static_cast<double>(day);
    items->set_include_recurrences(true);
    items->sort(u"[Start]", false);
    const Text restriction = format(u"[End] >= <%.0f AND [Start] <= <%.0f", midnight, midnight);
    for (auto item = items->find(restriction); item; item = items->find_next()) {
      if (!touches_day(*item, day) || !passes(item->summary->categories)) continue;
      rows.push_back({day_label(*item, day, clock24), item->summary->subject, 0});
    }
  }
  if (rows.empty()) rows.push_back({u"No Appointments", {}, -1});
  return rows;
}

}  // namespace orvello
