// Local moments as iCalendar writes them, for rules and for what is kept beside them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/calendar_date.h"

namespace orvello {

std::string moment_text(LocalSeconds moment);  // "20261121T090000"
std::string moment_text(UtcSeconds moment);    // "20261121T090000Z"
std::string day_text(LocalSeconds moment);     // "20261121"

// "20261121T090000", with or without Z, in either case; or "20261121", which is that midnight.
// Years from 1 on. Nothing for a day or a time that does not exist (second 60 is taken as 59).
std::optional<LocalSeconds> parse_moment(std::string_view text);

std::optional<int> parse_whole_number(std::string_view text);  // all digits, with an optional sign
std::vector<std::string_view> split_bytes(std::string_view text, char separator);

}  // namespace orvello
