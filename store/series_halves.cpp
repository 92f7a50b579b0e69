#include "store/series_halves.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "calendar/instance_stream.h"
#include "calendar/rule_days.h"
#include "calendar/rule_text.h"
#include "store/record_rules.h"

namespace orvello {
namespace {

// What no rule says is listed up to here, and looked for so long.
constexpr std::size_t kMostDates = 1000;
constexpr std::int64_t kEffort = 20'000;

std::size_t exceptions_before(const AppointmentRecord& record, LocalSeconds from) {
  const auto& all = record.exceptions;
  const auto later = std::lower_bound(
      all.begin(), all.end(), from,
      [](const auto& e, LocalSeconds moment) { return e.original_start < moment; });
  return static_cast<std::size_t>(later - all.begin());
}

// Its first occurrence lies before that moment.
void end_pattern_before(RecurrencePattern& pattern, LocalSeconds moment) {
  const LocalSeconds start = pattern_start(pattern);
  const Day last = day_of(moment - 1) - (second_of_day(moment - 1) < second_of_day(start) ? 1 : 0);
  const auto end = last_instance(pattern);
  pattern.pattern_end_date = to_calendar_date(end ? std::min(day_of(*end), last) : last);
  pattern.no_end_date = false;
  pattern.occurrences = -1;
  if (const auto now = last_instance(pattern))
    pattern.pattern_end_date = to_calendar_date(day_of(*now));
}

void start_pattern_at(RecurrencePattern& pattern, LocalSeconds from) {
  const bool counts = !pattern.no_end_date && pattern.occurrences >= 1;
  if (counts) {
    std::vector<LocalSeconds> earlier;
    append_occurrences(pattern, pattern_start(pattern), from, earlier);
    pattern.occurrences -= static_cast<std::int32_t>(earlier.size());
  }
  // What a start gives to a pattern that does not say it.
  if ((pattern.day_of_week_mask & 127) == 0)
    pattern.day_of_week_mask = 1 << weekday_of(day_of(pattern_start(pattern)));
  pattern.pattern_start_date = to_calendar_date(day_of(from));
}

// Says what the rule takes from its start, for another one.
void say_all(Rule& rule, LocalSeconds start, LocalSeconds from) {
  const auto date = civil_of(day_of(start));
  const bool days = !rule.by_day.empty() || !rule.by_month_day.empty() || !rule.by_year_day.empty();
  if (rule.frequency == Frequency::weekly || !rule.by_week_no.empty()) {
    if (!days) rule.by_day = {{0, weekday_of(day_of(start))}};
  } else if (rule.frequency >= Frequency::monthly && !days) {
    if (rule.frequency == Frequency::yearly && rule.by_month.empty()) rule.by_month = {date.month};
    rule.by_month_day = {date.day};
  }
  const auto time = static_cast<int>(second_of_day(start));
  if (rule.frequency < Frequency::daily || second_of_day(from) == time) return;
  if (rule.by_hour.empty()) rule.by_hour = {time / 3600};
  if (rule.by_minute.empty()) rule.by_minute = {time / 60 % 60};
  if (rule.by_second.empty()) rule.by_second = {time % 60};
}

// The rule with another start, from which it is to produce what it did. False: it has ended.
bool start_rule_at(Rule& rule, LocalSeconds start, LocalSeconds from, bool excludes) {
  const auto last = last_instance(rule, start);
  if (last && *last < from) return false;
  const bool own = rule_produces(rule, start, from);
  if (rule.count > 0 && own && !excludes && rule.frequency >= Frequency::daily) {
    std::vector<LocalSeconds> earlier;
    append_instances(rule, start, start, from, earlier);
    rule.count -= static_cast<int>(earlier.size());
  } else if (rule.count > 0) {
    rule.count = 0;
    rule.until = last;
    rule.until_is_date = false;
  }
  if (!own) say_all(rule, start, from);
  return true;
}

// The first so many instances; `all`: there are no others.
std::vector<LocalSeconds> instances_from(const RecurrenceSet& set, LocalSeconds from,
                                         std::size_t most, std::int64_t effort, bool& all) {
  std::vector<LocalSeconds> found;
  all = InstanceStream(set, effort).append(from, kEndOfRules, most, found).count == 0;
  return found;
}

std::vector<LocalSeconds> some_instances(const Rule& rule, LocalSeconds start, LocalSeconds from,
                                         bool& all) {
  constexpr std::size_t kSome = 400;
  return instances_from({start, {rule}, {}, {}, {}}, from, kSome, 3 * kSome, all);
}

// Whether a rule has the same instances after `from` when it starts there, as far as can be seen.
// Looked at by itself, as a seldom one would not be seen beside one of every hour.
bool starts_anywhere(const Rule& rule, LocalSeconds start, const Rule& later, LocalSeconds from) {
  bool all_of_a = false, all_of_b = false;
  auto of_a = some_instances(rule, start, from + 1, all_of_a);
  auto of_b = some_instances(later, from, from + 1, all_of_b);
  if (all_of_a || all_of_b) return all_of_a == all_of_b && of_a == of_b;
  const std::size_t common = std::min(of_a.size(), of_b.size());
  of_a.resize(common);
  of_b.resize(common);
  return of_a == of_b && last_instance(rule, start) == last_instance(later, from);
}

// The set from `from` on, starting at `start`, an instance of its own or of one of its rules; those
// before it become dates.
std::optional<RecurrenceSet> rest_from(const RecurrenceSet& all, LocalSeconds from,
                                       LocalSeconds start) {
  RecurrenceSet rest;
  rest.start = start;
  bool said = true;
  const auto start_there = [&](const std::vector<Rule>& rules, bool exclude,
                               std::vector<Rule>& to) {
    for (const Rule& rule : rules) {
      Rule later = rule;
      if (!said || !start_rule_at(later, all.start, start, exclude)) continue;
      said = starts_anywhere(rule, all.start, later, start);
      to.push_back(std::move(later));
    }
  };
  start_there(all.rules, false, rest.rules);
  start_there(all.excluded_rules, true, rest.excluded_rules);
  if (!said) return std::nullopt;
  const auto before = InstanceStream(all, kEffort).append(from, start, kMostDates, rest.dates);
  for (const LocalSeconds date : all.dates)
    if (date > start) rest.dates.push_back(date);
  for (const LocalSeconds date : all.excluded_dates)
    if (date >= start) rest.excluded_dates.push_back(date);
  const bool same_start = start == from || has_instance(rest, start) == has_instance(all, start);
  return before.count == 0 && same_start && has_instance(rest, from) ? std::optional(rest)
                                                                     : std::nullopt;
}

std::optional<RecurrenceSet> rest_of_set(const RecurrenceSet& all, LocalSeconds from) {
  if (auto rest = rest_from(all, from, from)) return rest;
  // A rule of every other week, say, goes on in its own weeks.
  for (const Rule& rule : all.rules) {
    bool whole = false;
    const auto next = some_instances(rule, all.start, from, whole);
    if (rule.interval == 1 || next.empty()) continue;
    if (auto rest = rest_from(all, from, next[0])) return rest;
  }
  bool whole = false;
  RecurrenceSet rest{from, {}, instances_from(all, from + 1, kMostDates, kEffort, whole), {}, {}};
  return whole ? std::optional(rest) : std::nullopt;
}

}  // namespace

RecurrenceSet recurrence_of(const AppointmentRecord& record, const Zone* zone) {
  RecurrenceSet set;
  if (!record.pattern) return read_rules(record.rules, record.start, zone, record.fields.all_day);
  set.start = record.start;
  set.rules.push_back(rule_from_pattern(*record.pattern));
  return set;
}

void set_recurrence_of(AppointmentRecord& record, const RecurrenceSet& set) {
  record.pattern.reset();
  record.rules.clear();
  if (set.rules.size() == 1 && set.dates.empty() && set.excluded_rules.empty() &&
      set.excluded_dates.empty())
    record.pattern = pattern_from_rule(set.rules[0], record.start, record.end - record.start);
  if (record.pattern) return;
  const auto add = [&](std::string_view name, const std::string& value) {
    record.rules.append(record.rules.empty() ? "" : "\n").append(name).append(value);
  };
  const auto list = [](const std::vector<LocalSeconds>& dates) {
    std::string text;
    for (const LocalSeconds date : dates)
      text.append(text.empty() ? "" : ",").append(moment_text(date));
    return text;
  };
  for (const Rule& rule : set.rules) add("RRULE:", rule_text(rule));
  for (const Rule& rule : set.excluded_rules) add("EXRULE:", rule_text(rule));
  std::string dates = list(set.dates);
  // A series of nothing but its start is still one: its exceptions need it.
  if (dates.empty() && set.rules.empty()) dates = moment_text(record.start);
  if (!dates.empty()) add("RDATE:", dates);
  if (!set.excluded_dates.empty()) add("EXDATE:", list(set.excluded_dates));
}

bool has_instance(const RecurrenceSet& set, LocalSeconds moment) {
  std::vector<LocalSeconds> found;
  append_instances(set, moment, moment + 1, found);
  return !found.empty();
}

bool has_occurrence(const RecurrencePattern& pattern, LocalSeconds moment) {
  std::vector<LocalSeconds> found;
  append_occurrences(pattern, moment, moment + 1, found);
  return !found.empty();
}

void end_before(RecurrenceSet& set, LocalSeconds end) {
  constexpr LocalSeconds kNoEnd = LocalSeconds::max();
  std::vector<Rule> kept;
  for (Rule& rule : set.rules) {
    auto last = rule.count > 0 ? last_instance(rule, set.start) : rule.until;
    if (end != kNoEnd) last = std::min(last.value_or(end - 1), end - 1);
    if (last && *last < set.start) continue;
    if (rule.count > 0 || last != rule.until) rule.until_is_date = false;
    rule.count = 0;
    rule.until = last;
    kept.push_back(std::move(rule));
  }
  set.rules = std::move(kept);
  std::erase_if(set.dates, [&](LocalSeconds date) { return date >= end; });
}

std::vector<AppointmentException> take_exceptions(AppointmentRecord& record, LocalSeconds from) {
  auto& all = record.exceptions;
  const auto later = all.begin() + static_cast<std::ptrdiff_t>(exceptions_before(record, from));
  std::vector<AppointmentException> taken(std::make_move_iterator(later),
                                          std::make_move_iterator(all.end()));
  all.erase(later, all.end());
  return taken;
}

void end_series_before(AppointmentRecord& record, LocalSeconds moment, const Zone* zone) {
  take_exceptions(record, moment);
  if (record.pattern && record.start < moment) return end_pattern_before(*record.pattern, moment);
  RecurrenceSet set = recurrence_of(record, zone);
  end_before(set, moment);
  set_recurrence_of(record, set);
  if (record.start < moment) return;
  AppointmentException gone;  // the start always counts, but for this
  gone.original_start = record.start;
  gone.deleted = true;
  record.exceptions.push_back(std::move(gone));
}

bool shows_before(const AppointmentRecord& record, LocalSeconds moment, const Zone* zone) {
  std::vector<LocalSeconds> gone;
  for (std::size_t i = 0; i < exceptions_before(record, moment); ++i) {
    const AppointmentException& one = record.exceptions[i];
    if (!one.deleted) return true;
    gone.push_back(one.original_start);
  }
  const RecurrenceSet set = recurrence_of(record, zone);
  const auto first = set.dates.empty() ? set.start : std::min(set.start, set.dates.front());
  if (first >= moment) return false;
  std::vector<LocalSeconds> found;
  const auto effort = kEffort + 4 * static_cast<std::int64_t>(gone.size());
  InstanceStream(set, effort).append(first, moment, gone.size() + 1, found);
  return std::any_of(found.begin(), found.end(), [&](LocalSeconds each) {
    return !std::binary_search(gone.begin(), gone.end(), each);
  });
}

std::optional<AppointmentRecord> rest_of_series(const AppointmentRecord& record, LocalSeconds from,
                                                const Zone* zone) {
  AppointmentRecord rest = record;
  rest.oid = 0;
  rest.uid.clear();
  rest.exceptions = take_exceptions(rest, from);
  const auto start_at = [&](LocalSeconds start) {
    rest.start = start;
    rest.end = start + (record.end - record.start);
  };
  if (record.pattern && has_occurrence(*record.pattern, from)) {
    start_at(from);
    start_pattern_at(*rest.pattern, from);
    return rest;
  }
  const auto set = rest_of_set(recurrence_of(record, zone), from);
  if (!set) return std::nullopt;
  start_at(set->start);
  set_recurrence_of(rest, *set);
  return rest;
}

}  // namespace orvello
