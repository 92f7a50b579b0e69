// Dates as the command line, names of files and other programs write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "calendar/dates.h"

namespace orvello {

std::string iso_text(const MonthDayYear& date);  // "2026-11-06"

// "YYYY-MM-DD", and the same followed by "THH:MM"; nothing for a date or time that does not exist,
// or before the year 1601.
std::optional<MonthDayYear> parse_iso_date(std::string_view text);
std::optional<SystemTime> parse_iso_moment(std::string_view text);

}  // namespace orvello
