// Restriction texts: comparisons of [Start] and [End] with day numbers, joined by AND. Bounds are
// whole days, so that no item of a day is missing: "[Start] <= <N" admits all that starts on day N.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>

#include "base/text.h"
#include "calendar/calendar_date.h"

namespace orvello {

// Inclusive days. Far enough from the borders of the type that a few days can be added.
inline constexpr std::int32_t kFirstDay = -10000000;
inline constexpr std::int32_t kLastDay = 10000000;

struct DayBounds {
  std::int32_t start_from = kFirstDay;
  std::int32_t start_to = kLastDay;
  std::int32_t end_from = kFirstDay;
  std::int32_t end_to = kLastDay;

  bool empty() const { return start_from > start_to || end_from > end_to || end_to < start_from; }
  bool admit(std::int32_t start_day, std::int32_t end_day) const {
    return start_day >= start_from && start_day <= start_to && end_day >= end_from &&
           end_day <= end_to;
  }
  DayBounds within(const DayBounds& other) const;
  friend bool operator==(const DayBounds&, const DayBounds&) = default;
};

// Any spacing, either case; the "<" before a number and its fraction may be missing. Nothing for a
// text that cannot be read; an empty text admits everything.
std::optional<DayBounds> parse_restriction(TextView text);

}  // namespace orvello
