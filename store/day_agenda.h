// One day's appointments as two-column rows: the small day lists.
#pragma once

#include <functional>
#include <vector>

#include "ports/calendar_store.h"

namespace orvello {

struct CompactRow {
  Text time;
  Text subject;
  std::int32_t row_data = 0;  // -1 on the row that says there is nothing
  friend bool operator==(const CompactRow&, const CompactRow&) = default;
};

// Whether an appointment's whole category text passes the active profile.
using ProfileFilter = std::function<bool(TextView categories)>;

// `items` is a fresh collection of the calendar folder, or null. In order of start; a day without
// rows is one row "No Appointments".
std::vector<CompactRow> compact_agenda(StoreItems* items, std::int32_t day, bool clock24,
                                       const ProfileFilter& passes);

}  // namespace orvello
