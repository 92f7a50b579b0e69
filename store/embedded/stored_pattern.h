// A recurrence pattern as one line of numbers, times in seconds.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "calendar/recurrence_pattern.h"

namespace orvello {

std::string stored_pattern(const RecurrencePattern& pattern);
std::optional<RecurrencePattern> read_stored_pattern(std::string_view text);

}  // namespace orvello
