// Rules of the Times page. Times are half-hour slots.
#pragma once

#include <array>
#include <cstdint>

#include "base/text.h"

namespace orvello {

// The end that a chosen start brings along: half an hour later, and 1 rather than 0 after the last
// slot, deliberately.
int end_for_start(int start);

// Which of the three periods between four marks have any time. One that ends at midnight ends with
// the day.
std::array<bool, 3> lasting_periods(const std::array<int, 4>& marks);

// The typed amount of a reminder; 0 for what is no number.
std::int32_t typed_amount(TextView typed);

}  // namespace orvello
