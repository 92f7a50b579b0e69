// Recurrence rules of RFC 5545: every FREQ, every BY part, BYSETPOS, WKST, COUNT and UNTIL.
// Where calendars differ: the start always counts as an instance (and as the first of COUNT);
// BYSETPOS counts over the whole period, also one that began before the start; a yearly BYMONTHDAY
// without BYMONTH means every month. Moments are local to the rule's own zone: no zone is known
// here.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "calendar/calendar_date.h"

namespace orvello {

enum class Frequency { secondly, minutely, hourly, daily, weekly, monthly, yearly };

struct RuleDay {
  int ordinal = 0;  // 0: every; n: the n-th; -n: the n-th from the end
  int weekday = 0;  // 0 Sunday .. 6 Saturday
  friend bool operator==(const RuleDay&, const RuleDay&) = default;
};

struct Rule {
  Frequency frequency = Frequency::daily;
  int interval = 1;
  int count = 0;                      // 0: no COUNT; beside UNTIL the earlier end counts
  std::optional<LocalSeconds> until;  // inclusive
  bool until_is_date = false;         // UNTIL was a bare date: `until` is that day's last second
  bool until_is_utc = false;          // UNTIL ended in Z: `until` still holds the UTC reading
  int week_start = 1;                 // WKST, Monday unless told
  std::vector<int> by_second, by_minute, by_hour;
  std::vector<RuleDay> by_day;
  std::vector<int> by_month_day, by_year_day, by_week_no, by_month, by_set_pos;
  friend bool operator==(const Rule&, const Rule&) = default;
};

// Reads the value of an RRULE property ("FREQ=WEEKLY;BYDAY=MO"). What changes no instance as far as
// can be told is left out and named in `oddities`: unknown and empty parts, a part said twice, an
// INTERVAL of 0; COUNT beside UNTIL is named there too. Fails with the part at fault for another
// calendar's RSCALE, two values of one part, a number out of range, a missing FREQ.
Result<Rule> parse_rule(std::string_view text, std::vector<std::string>* oddities = nullptr);

// The rule of all-day items, whose days have no hours: without BYHOUR, BYMINUTE and BYSECOND, and
// by the day where it was by the hour, minute or second.
Rule by_whole_days(Rule rule);

// The rule as RFC text, parts in the RFC's order; parse_rule of it gives an equal rule.
std::string rule_text(const Rule& rule);

// Appends the instances of `rule` from `start` that lie in [from, to), ascending, without doubles.
// Jumps to the period that holds `from`; only COUNT makes it count from the start, where a closed
// form counts the plain cases. The search for a rule that never matches ends by itself.
void append_instances(const Rule& rule, LocalSeconds start, LocalSeconds from, LocalSeconds to,
                      std::vector<LocalSeconds>& out);

// The last instance; nothing for a rule without end. With COUNT it is walked once, so callers keep
// the answer (as `until`) rather than ask again.
std::optional<LocalSeconds> last_instance(const Rule& rule, LocalSeconds start);

// Whether a series from `start` lies in the years that the calendar's arithmetic can hold; one that
// does not has its start alone.
bool can_recur(const Rule& rule, LocalSeconds start);

// Whether the rule by itself, leaving out COUNT and the rule that the start always counts, produces
// `moment`. With `moment` = `start` it tells whether the start suits its rule.
bool rule_produces(const Rule& rule, LocalSeconds start, LocalSeconds moment);

// A set of instances: rules and single dates, less excluded dates and rules.
struct RecurrenceSet {
  LocalSeconds start;
  std::vector<Rule> rules;
  std::vector<LocalSeconds> dates;           // RDATE, sorted
  std::vector<Rule> excluded_rules;          // EXRULE
  std::vector<LocalSeconds> excluded_dates;  // EXDATE, sorted
};

void append_instances(const RecurrenceSet& set, LocalSeconds from, LocalSeconds to,
                      std::vector<LocalSeconds>& out);

// The last instance; nothing without end. Where every instance is excluded it is the start; where
// so many are that looking would take too long, a moment that no instance passes.
std::optional<LocalSeconds> last_instance(const RecurrenceSet& set);

}  // namespace orvello
