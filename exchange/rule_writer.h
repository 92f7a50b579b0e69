// Recurrence as an exchanged file has it.
#pragma once

#include <string>
#include <string_view>

#include "calendar/recurrence_pattern.h"
#include "exchange/moment.h"

namespace orvello {

// The value of the RRULE that means the pattern of an item with this start: its end is a date for
// an all-day item, in UTC where the item has a zone, else local: of the start's kind, as a file's
// must be.
std::string rule_value(const RecurrencePattern& pattern, const Moment& start);

// The rule's text, as somebody wrote it, with the end that the rule has now.
std::string with_until(std::string text, const Rule& rule);

// The value of a rule as a record keeps it (its end local to the item's zone), for a file.
std::string rule_value(std::string_view kept, const Moment& start);

}  // namespace orvello
