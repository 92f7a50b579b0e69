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
inline constexpr Day kFirstDay{-10000000};
inline constexpr Day kLastDay{10000000};

struct DayBounds {
  Day start_from = kFirstDay;
  Day start_to = kLastDay;
  Day end_from = kFirstDay;
  Day end_to = kLastDay;

  bool empty() const { return start_from > start_to || end_from > end_to || end_to < start_from; }
  bool admit(Day start_day, Day end_day) const {
    return start_day >= start_from && start_day <= start_to && end_day >= end_from &&
           end_day <= end_to;
  }
  DayBounds within(const DayBounds& other) const;
  friend bool operator==(const DayBounds&, const DayBounds&) = default;
};

// What touches the days from `first` to `last`.
Text restriction_to(Day first, Day last);

// Any spacing, either case; the "<" before a number and its fraction may be missing. Nothing for a
// text that cannot be read; an empty text admits everything.
std::optional<DayBounds> parse_restriction(TextView text);

}  // namespace orvello
