// The recurrence pattern record: what the store's patterns and the recurrence editor hold.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "calendar/calendar_date.h"
#include "calendar/rule.h"

namespace orvello {

enum class RecurrenceType : std::int32_t {
  daily = 0,
  weekly = 1,
  monthly = 2,    // day N of every so many months
  month_nth = 3,  // the n-th day of a kind
  yearly = 5,     // month and day
  year_nth = 6,   // the n-th day of a kind in a month
};

struct RecurrencePattern {
  RecurrenceType type = RecurrenceType::daily;
  CalendarDate pattern_start_date = 0;      // whole day: the first day of the series
  CalendarDate pattern_end_date = kNoDate;  // whole day: the last; kNoDate without end
  bool no_end_date = true;
  std::int32_t occurrences = -1;      // when the series ends after a count, else -1
  CalendarDate start_time = 0;        // fraction of a day
  CalendarDate end_time = 0;          // fraction of a day
  std::int32_t duration = 0;          // minutes, start of an occurrence to its end
  std::int32_t interval = 1;          // days, weeks or months; years for 5 and 6
  std::int32_t day_of_week_mask = 0;  // Sunday 1, Monday 2 .. Saturday 64
  std::int32_t day_of_month = 0;      // 1-31
  std::int32_t instance = 0;          // 1-4 from the start, 5 last
  std::int32_t month_of_year = 0;     // 1-12
  friend bool operator==(const RecurrencePattern&, const RecurrencePattern&) = default;
};

// The rule that means the pattern. An interval of 0 (the editor writes it for "every weekday")
// is 1. A day of the month that a month lacks is that month's last day, as the device's store has
// it (the rule then says BYMONTHDAY=28..31 with BYSETPOS=-1); a yearly 29 February likewise.
Rule rule_from_pattern(const RecurrencePattern& pattern);

// A pattern's weeks begin on Monday. A count wins over an end date.
// The local start of the first occurrence: the start date, or the next day that suits the pattern
// (the interval counts from there), at the start time.
LocalSeconds pattern_start(const RecurrencePattern& pattern);

// Appends the starts of the occurrences in [from, to), ascending, at a cost that follows their
// number only.
void append_occurrences(const RecurrencePattern& pattern, LocalSeconds from, LocalSeconds to,
                        std::vector<LocalSeconds>& out);

// The start of the last occurrence; nothing for a pattern without end.
std::optional<LocalSeconds> last_instance(const RecurrencePattern& pattern);

// The pattern that means exactly the rule from `start` with occurrences of `duration_seconds`, or
// nothing where no pattern can hold it (other frequencies, BY parts, several ordinals, month days
// counted back other than the last, a start that the rule itself does not produce, a month day
// above 28 whose missing months the rule skips, sub-minute times, a WKST other than Monday that
// matters, an UNTIL still in UTC ...). With COUNT the pattern holds the count and no end date.
std::optional<RecurrencePattern> pattern_from_rule(const Rule& rule, LocalSeconds start,
                                                   std::int64_t duration_seconds);

}  // namespace orvello
