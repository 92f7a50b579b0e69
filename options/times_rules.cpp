#include "options/times_rules.h"

#include <algorithm>
#include <limits>

#include "calendar/time_slots.h"

namespace orvello {

int end_for_start(int start) { return start + 1 < kTimeSlots ? start + 1 : 1; }

std::array<bool, 3> lasting_periods(const std::array<int, 4>& marks) {
  std::array<bool, 3> lasting{};
  for (std::size_t i = 0; i < lasting.size(); ++i)
    lasting[i] = marks[i] < (marks[i + 1] == 0 ? kTimeSlots : marks[i + 1]);
  return lasting;
}

std::int32_t typed_amount(TextView typed) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(leading_number(typed), 0, kMost));
}

}  // namespace orvello
