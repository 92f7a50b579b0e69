// A recurrence pattern at another time of day, or on other days, as another time zone shows it.
#pragma once

#include <optional>

#include "calendar/recurrence_pattern.h"

namespace orvello {

// The pattern whose occurrences are those of `given`, all of them later by so many seconds. Nothing
// where no pattern holds them: the day after a month's second Tuesday is not always its second
// Wednesday, and the one after 28 February not always the first of March.
std::optional<RecurrencePattern> shifted_pattern(const RecurrencePattern& given,
                                                 std::int64_t seconds);

}  // namespace orvello
