#include "store/occurrence_list.h"

#include <algorithm>
#include <tuple>

namespace orvello {

void OccurrenceList::sort_by_start(bool descending) {
  const auto ascending_order = [](const Row& a, const Row& b) {
    return std::tie(a.start, a.end, a.oid) < std::tie(b.start, b.end, b.oid);
  };
  if (descending)
    std::sort(rows_.begin(), rows_.end(), [](const Row& a, const Row& b) {
      return std::tie(b.start, a.end, a.oid) < std::tie(a.start, b.end, b.oid);
    });
  else
    std::sort(rows_.begin(), rows_.end(), ascending_order);
}

std::vector<std::int32_t> OccurrenceList::oids() const {
  std::vector<std::int32_t> list;
  for (const Row& row : rows_)
    if (list.empty() || list.back() != row.oid) list.push_back(row.oid);
  std::sort(list.begin(), list.end());
  list.erase(std::unique(list.begin(), list.end()), list.end());
  return list;
}

StoreItem OccurrenceList::item(std::size_t index) const {
  const Row& row = rows_[index];
  return {to_calendar_date(row.start), to_calendar_date(row.end), summaries_[row.summary]};
}

}  // namespace orvello
