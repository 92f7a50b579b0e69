// How keys move through the days of a date picker or month calendar.
#pragma once

#include <cstdint>
#include <optional>

#include "calendar/dates.h"

namespace orvello {

bool is_real_date(const MonthDayYear& date);          // one of the Gregorian calendar
MonthDayYear within_dates(const MonthDayYear& date);  // 1601 to 9999, what can be chosen

// A day by the arrows Left and Right, a week by the others, a month by the page keys, a year by
// them when it goes `by_years`, the month's first and last day. Nothing: the key leads nowhere.
std::optional<MonthDayYear> date_after_key(const MonthDayYear& date, std::uint32_t key,
                                           bool by_years);

}  // namespace orvello
