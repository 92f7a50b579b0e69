#include "store/occurrence_list.h"

#include <algorithm>

namespace orvello {

void OccurrenceList::sort_by_start(bool descending) {
  const auto before = [descending](const Row& a, const Row& b) {
    if (a.start != b.start) return descending ? b.start < a.start : a.start < b.start;
    return a.end != b.end ? a.end < b.end : a.oid < b.oid;
  };
  if (!descending) bucket_by_slot();
  // Rows within a bucket are few; between buckets they are in order already.
  std::size_t first = 0;
  for (std::size_t i = 1; i <= rows_.size(); ++i)
    if (i == rows_.size() || (!slot_ends_.empty() && slot_ends_[i])) {
      std::sort(rows_.begin() + static_cast<std::ptrdiff_t>(first),
                rows_.begin() + static_cast<std::ptrdiff_t>(i), before);
      first = i;
    }
  slot_ends_.clear();
}

// Many rows within few days are first put into half-hour slots, which costs no comparison.
void OccurrenceList::bucket_by_slot() {
  constexpr std::int64_t kSlot = 1800;
  if (rows_.size() < 256) return;
  const auto [low, high] = std::minmax_element(
      rows_.begin(), rows_.end(), [](const Row& a, const Row& b) { return a.start < b.start; });
  const auto base = low->start;
  const auto slots = static_cast<std::size_t>((high->start - base) / kSlot) + 1;
  if (slots > 4 * rows_.size()) return;
  std::vector<std::uint32_t> places(slots + 1);
  const auto slot_of = [base](const Row& row) {
    return static_cast<std::size_t>((row.start - base) / kSlot);
  };
  for (const Row& row : rows_) ++places[slot_of(row) + 1];
  slot_ends_.assign(rows_.size() + 1, false);
  for (std::size_t slot = 1; slot <= slots; ++slot) {
    places[slot] += places[slot - 1];
    slot_ends_[places[slot]] = true;
  }
  std::vector<Row> ordered(rows_.size());
  for (const Row& row : rows_) ordered[places[slot_of(row)]++] = row;
  rows_ = std::move(ordered);
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
  const Shown& shown = summaries_[row.summary];
  return {to_calendar_date(row.start), to_calendar_date(row.end), shown.summary, shown.many};
}

}  // namespace orvello
