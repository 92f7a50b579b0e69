// Dates, moments, durations and offsets as iCalendar writes them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "calendar/calendar_date.h"

namespace orvello {

struct DateValue {
  LocalSeconds local;  // a date: its midnight
  bool is_date = false;
  bool utc = false;  // ended in Z: `local` is the reading in Coordinated Universal Time
  friend bool operator==(const DateValue&, const DateValue&) = default;
};

// "20260102", "20260102T030405" or "20260102T030405Z". Nothing for a date or time that does not
// exist; a leap second is the second before it.
std::optional<DateValue> parse_date(std::string_view text);

// A duration in two parts: days and weeks follow the calendar, the rest is exact time.
struct DurationValue {
  int days = 0;
  int seconds = 0;
  std::int64_t total() const { return std::int64_t{days} * kSecondsPerDay + seconds; }
};

std::optional<DurationValue> parse_duration(std::string_view text);
std::string duration_text(std::int64_t seconds);  // "PT15M", "-P1DT2H"

// "+0100", "-053015": seconds east of Greenwich.
std::optional<int> parse_utc_offset(std::string_view text);
std::string utc_offset_text(int seconds);

}  // namespace orvello
