// A recurrence in words: "Every 2 weeks on Tuesday and Thursday until 3 March 2027".
#pragma once

#include <string_view>

#include "calendar/recurrence_pattern.h"
#include "resources/strings.h"

namespace orvello {

// Of recurrence lines as StorePattern::rules() gives them, in the item's own time. What is too odd
// for words is said to be so; empty for no lines at all.
Text rule_words(std::string_view rules, Language language);
Text pattern_words(const RecurrencePattern& pattern, Language language);

}  // namespace orvello
