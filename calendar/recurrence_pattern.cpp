#include "calendar/recurrence_pattern.h"

#include <algorithm>
#include <bit>

#include "calendar/rule_days.h"
#include "calendar/rule_series.h"

namespace orvello {
namespace {

constexpr int kEveryDay = 127, kWeekdays = 62, kWeekend = 65;
constexpr int kLast = 5;      // the instance that means the last one
constexpr int kSafeDay = 28;  // every month has it
// Days to the next one that suits, and more: "the last Friday of March" may take 371.
constexpr int kLongestWait = 400;

std::int64_t interval_of(const RecurrencePattern& pattern) { return std::max(1, pattern.interval); }

bool has_count(const RecurrencePattern& pattern) {
  return !pattern.no_end_date && pattern.occurrences >= 1;
}

bool has_end(const RecurrencePattern& pattern) {
  return !pattern.no_end_date && pattern.occurrences < 1 && pattern.pattern_end_date != 0 &&
         pattern.pattern_end_date < kNoDate;
}

bool is_yearly(RecurrenceType type) {
  return type == RecurrenceType::yearly || type == RecurrenceType::year_nth;
}

bool is_nth(RecurrenceType type) {
  return type == RecurrenceType::month_nth || type == RecurrenceType::year_nth;
}

int mask_of(const RecurrencePattern& pattern, Day start_day) {
  const int mask = pattern.day_of_week_mask & kEveryDay;
  return mask != 0 ? mask : 1 << weekday_of(start_day);
}

int nth_of(const RecurrencePattern& pattern) {
  return pattern.instance >= kLast ? -1 : std::max(1, pattern.instance);
}

// The shape of the pattern around `start`, which need not be an instance yet.
PlainSeries series_around(const RecurrencePattern& pattern, LocalSeconds start) {
  PlainSeries series;
  series.start = start;
  series.step = interval_of(pattern);
  if (has_count(pattern)) series.count = pattern.occurrences;
  if (has_end(pattern)) series.until = midnight_of(whole_day(pattern.pattern_end_date) + 1) - 1;
  if (pattern.type == RecurrenceType::daily) {
    series.kind = PlainSeries::Kind::steps;
    series.step *= kSecondsPerDay;
    return series;
  }
  if (pattern.type == RecurrenceType::weekly) {
    series.kind = PlainSeries::Kind::weeks;
    series.mask = mask_of(pattern, day_of(start));
    return series;
  }
  series.kind = PlainSeries::Kind::months;
  const auto month = month_index(day_of(start));
  series.first_month = month;
  if (is_yearly(pattern.type)) {
    series.step *= 12;
    series.first_month =
        month - floor_mod(month, 12) + std::clamp(pattern.month_of_year, 1, 12) - 1;
  }
  if (is_nth(pattern.type)) {
    series.mask = mask_of(pattern, day_of(start));
    series.nth = nth_of(pattern);
  } else {  // the last day up to day N
    series.month_days = 0xFFFFFFFFu >> (32 - std::clamp(pattern.day_of_month, 1, 31));
    series.nth = -1;
  }
  return series;
}

// From the start date, or the nearest day after it that suits, counting every week, month or year.
PlainSeries series_of(const RecurrencePattern& pattern) {
  const LocalSeconds named = midnight_of(whole_day(pattern.pattern_start_date)) +
                             second_of_day(to_seconds(pattern.start_time));
  const PlainSeries series = series_around(pattern, named);
  if (series.kind == PlainSeries::Kind::steps || named < kFirstRuleSecond || named >= kEndOfRules ||
      suits(series, day_of(named)))
    return series;
  RecurrencePattern dense = pattern;
  dense.interval = 1;
  dense.no_end_date = true;
  PlainSeries search = series_around(dense, named);
  search.start = named - kSecondsPerDay;  // so that `named` itself is a later instance
  std::vector<LocalSeconds> found;
  append_series(search, named, named + kLongestWait * kSecondsPerDay, found);
  return found.empty() ? series : series_around(pattern, found.front());
}

void add_weekdays(int mask, int ordinal, Rule& rule) {
  for (int weekday = 0; weekday < 7; ++weekday)
    if (mask >> weekday & 1) rule.by_day.push_back({ordinal, weekday});
}

// "The last there is of the 28th to the n-th": the rule for a day that some months lack.
void add_month_day(int day, int shortest, Rule& rule) {
  if (day <= shortest) {
    rule.by_month_day = {day};
    return;
  }
  for (int each = shortest; each <= day; ++each) rule.by_month_day.push_back(each);
  rule.by_set_pos = {-1};
}

int mask_of(const std::vector<RuleDay>& days) {
  int mask = 0;
  for (const RuleDay& day : days) mask |= 1 << day.weekday;
  return mask;
}

// The kinds of day that the recurrence editor can name.
bool is_day_kind(int mask) {
  return mask == kEveryDay || mask == kWeekdays || mask == kWeekend ||
         std::has_single_bit(static_cast<unsigned>(mask));
}

// Whether weeks that begin on `week_start` group these days otherwise than weeks from Monday do.
bool week_start_matters(int mask, int week_start) {
  int before = 0;  // from Monday to the day before week_start
  for (int day = 1; day % 7 != week_start; ++day) before |= 1 << day % 7;
  return (mask & before) != 0 && (mask & ~before) != 0;
}

// Fills in the n-th day of a kind; false where the days are no such choice.
bool read_nth(const Rule& rule, RecurrencePattern& pattern) {
  int ordinal = rule.by_day.empty() ? 0 : rule.by_day[0].ordinal;
  pattern.day_of_week_mask = mask_of(rule.by_day);
  if (rule.by_day.empty()) {  // "the last day" is the only one that is counted back
    if (rule.by_month_day != std::vector<int>{-1} || !rule.by_set_pos.empty()) return false;
    pattern.day_of_week_mask = kEveryDay;
    ordinal = -1;
  } else if (ordinal != 0) {
    if (rule.by_day.size() != 1 || !rule.by_set_pos.empty()) return false;
  } else {
    if (rule.by_set_pos.size() != 1) return false;
    for (const RuleDay& day : rule.by_day)
      if (day.ordinal != 0) return false;
    ordinal = rule.by_set_pos[0];
  }
  if (!rule.by_day.empty() && !rule.by_month_day.empty()) return false;
  if (ordinal != -1 && (ordinal < 1 || ordinal > 4)) return false;
  pattern.instance = ordinal == -1 ? kLast : ordinal;
  return is_day_kind(pattern.day_of_week_mask);
}

// Fills in the day of the month; false where the rule and a pattern part in short months.
bool read_month_day(const Rule& rule, int start_day, int shortest, RecurrencePattern& pattern) {
  Rule clipped;
  if (rule.by_month_day.size() > 1) {
    auto days = rule.by_month_day;
    std::sort(days.begin(), days.end());
    pattern.day_of_month = days.back();
    add_month_day(days.back(), shortest, clipped);
    return rule.by_day.empty() && days == clipped.by_month_day &&
           rule.by_set_pos == clipped.by_set_pos;
  }
  pattern.day_of_month = rule.by_month_day.empty() ? start_day : rule.by_month_day[0];
  return rule.by_day.empty() && rule.by_set_pos.empty() && pattern.day_of_month >= 1 &&
         pattern.day_of_month <= shortest;
}

int shortest_length(int month) { return month == 2 ? 28 : month_length(month - 1); }

bool read_weekly(const Rule& rule, int start_weekday, RecurrencePattern& pattern) {
  pattern.type = RecurrenceType::weekly;
  pattern.day_of_week_mask = rule.by_day.empty() ? 1 << start_weekday : mask_of(rule.by_day);
  for (const RuleDay& day : rule.by_day)
    if (day.ordinal != 0) return false;
  return rule.interval == 1 || !week_start_matters(pattern.day_of_week_mask, rule.week_start);
}

bool read_kind(const Rule& rule, Day start_day, RecurrencePattern& pattern) {
  const auto civil = civil_of(start_day);
  const bool days_only =
      rule.by_month.empty() && rule.by_month_day.empty() && rule.by_set_pos.empty();
  switch (rule.frequency) {
    case Frequency::daily:
      if (!days_only || (rule.interval > 1 && !rule.by_day.empty())) return false;
      if (!rule.by_day.empty()) return read_weekly(rule, 0, pattern);
      pattern.type = RecurrenceType::daily;
      return true;
    case Frequency::weekly:
      return days_only && read_weekly(rule, weekday_of(start_day), pattern);
    case Frequency::monthly:
      if (!rule.by_month.empty()) return false;
      pattern.type = RecurrenceType::monthly;
      if (read_month_day(rule, civil.day, kSafeDay, pattern)) return true;
      pattern.type = RecurrenceType::month_nth;
      pattern.day_of_month = 0;
      return read_nth(rule, pattern);
    case Frequency::yearly: {
      const bool plain = rule.by_month.empty() && rule.by_month_day.empty() && rule.by_day.empty();
      if (!plain && rule.by_month.size() != 1) return false;
      pattern.month_of_year = plain ? civil.month : rule.by_month[0];
      pattern.type = RecurrenceType::yearly;
      if (read_month_day(rule, civil.day, shortest_length(pattern.month_of_year), pattern))
        return true;
      pattern.type = RecurrenceType::year_nth;
      pattern.day_of_month = 0;
      return read_nth(rule, pattern);
    }
    default:
      return false;
  }
}

// Times that only repeat the start's own say nothing.
bool times_are_the_starts(const Rule& rule, int time) {
  const auto same = [](const std::vector<int>& values, int value) {
    return values.empty() || (values.size() == 1 && values[0] == value);
  };
  return same(rule.by_hour, time / 3600) && same(rule.by_minute, time / 60 % 60) &&
         same(rule.by_second, 0);
}

}  // namespace

LocalSeconds pattern_start(const RecurrencePattern& pattern) { return series_of(pattern).start; }

Rule rule_from_pattern(const RecurrencePattern& pattern) {
  const auto start_day = day_of(pattern_start(pattern));
  Rule rule;
  rule.interval = static_cast<int>(interval_of(pattern));
  if (has_count(pattern)) rule.count = pattern.occurrences;
  if (has_end(pattern)) {
    rule.until = midnight_of(whole_day(pattern.pattern_end_date) + 1) - 1;
    rule.until_is_date = true;
  }
  if (pattern.type == RecurrenceType::daily) return rule;
  rule.frequency = pattern.type == RecurrenceType::weekly ? Frequency::weekly
                   : is_yearly(pattern.type)              ? Frequency::yearly
                                                          : Frequency::monthly;
  int shortest = kSafeDay;
  int day = std::clamp(pattern.day_of_month, 1, 31);
  if (is_yearly(pattern.type)) {
    const int month = std::clamp(pattern.month_of_year, 1, 12);
    rule.by_month = {month};
    shortest = shortest_length(month);
    day = std::min(day, month == 2 ? 29 : shortest);
  }
  const int mask = mask_of(pattern, start_day);
  if (pattern.type == RecurrenceType::weekly) {
    add_weekdays(mask, 0, rule);
  } else if (!is_nth(pattern.type)) {
    add_month_day(day, shortest, rule);
  } else if (std::has_single_bit(static_cast<unsigned>(mask))) {
    add_weekdays(mask, nth_of(pattern), rule);
  } else {
    add_weekdays(mask, 0, rule);
    rule.by_set_pos = {nth_of(pattern)};
  }
  return rule;
}

std::optional<RecurrencePattern> pattern_from_rule(const Rule& rule, LocalSeconds start,
                                                   std::int64_t duration_seconds) {
  const auto day = day_of(start);
  const auto time = second_of_day(start);
  constexpr std::int64_t kLongest = 0x7FFFFFFFLL * 60;
  if (time % 60 != 0 || duration_seconds < 0 || duration_seconds % 60 != 0 ||
      duration_seconds > kLongest || rule.until_is_utc || (rule.count > 0 && rule.until) ||
      !rule.by_year_day.empty() || !rule.by_week_no.empty() ||
      !times_are_the_starts(rule, static_cast<int>(time)))
    return std::nullopt;
  RecurrencePattern pattern;
  if (!read_kind(rule, day, pattern) || !rule_produces(rule, start, start)) return std::nullopt;
  pattern.interval = rule.interval;
  pattern.pattern_start_date = to_calendar_date(day);
  pattern.start_time = static_cast<double>(time) / kSecondsPerDay;
  pattern.end_time =
      static_cast<double>((time + duration_seconds) % kSecondsPerDay) / kSecondsPerDay;
  pattern.duration = static_cast<std::int32_t>(duration_seconds / 60);
  pattern.no_end_date = rule.count == 0 && !rule.until;
  if (rule.count > 0) pattern.occurrences = rule.count;
  if (rule.until) {
    const auto last = last_instance(rule, start);
    pattern.pattern_end_date = to_calendar_date(day_of(last.value_or(start)));
  }
  return pattern;
}

void append_occurrences(const RecurrencePattern& pattern, LocalSeconds from, LocalSeconds to,
                        std::vector<LocalSeconds>& out) {
  const PlainSeries series = series_of(pattern);
  if (series.start > series.until) return;
  if (series.start >= from && series.start < to) out.push_back(series.start);
  append_series(series, from, to, out);
}

std::optional<LocalSeconds> last_instance(const RecurrencePattern& pattern) {
  if (!has_count(pattern) && !has_end(pattern)) return std::nullopt;
  return last_instance(rule_from_pattern(pattern), pattern_start(pattern));
}

}  // namespace orvello
