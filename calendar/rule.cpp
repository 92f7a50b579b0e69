#include "calendar/rule.h"

#include <algorithm>
#include <deque>
#include <limits>

#include "calendar/instance_stream.h"
#include "calendar/rule_days.h"
#include "calendar/rule_expansion.h"
#include "calendar/rule_series.h"

namespace orvello {
namespace {

// A count is walked this far; a larger one is taken as none. Only a rule of hours, minutes or
// seconds gets here, and nothing but a hostile file asks for so many.
constexpr std::int64_t kMaxWalk = 2'000'000;

LocalSeconds end_of_until(const Rule& rule, LocalSeconds to) {
  return rule.until && *rule.until < to ? *rule.until + 1 : to;
}

// The instances that the rule produces after the start.
void append_later(const Rule& rule, LocalSeconds start, LocalSeconds from, LocalSeconds to,
                  std::vector<LocalSeconds>& out) {
  from = std::max(from, start + 1);
  to = end_of_until(rule, std::min(to, kEndOfRules));
  if (from >= to || rule.count == 1) return;
  const PlainSeries series = plain_series(rule, start);
  if (series.kind != PlainSeries::Kind::none) return append_series(series, from, to, out);
  std::int64_t left = rule.count > 0 ? rule.count - 1 : kMaxWalk;
  if (left >= kMaxWalk) left = std::numeric_limits<std::int64_t>::max();
  const bool counts = left < kMaxWalk;
  RuleExpansion(rule, start).walk(counts ? start + 1 : from, to, [&](LocalSeconds moment) {
    if (moment >= from) out.push_back(moment);
    return --left > 0;
  });
}

// Calls found(from, to) for spans of growing length that end at `to` and go back to `start`, until
// it answers with the last instance of one; `start` where there is none.
template <typename Found>
LocalSeconds last_before(LocalSeconds start, LocalSeconds to, std::int64_t span, Found found) {
  for (; to > start; to -= span, span *= 2)
    if (const std::optional<LocalSeconds> last = found(std::max(start, to - span), to))
      return *last;
  return start;
}

std::int64_t first_span(const Rule& rule) {
  return rule.frequency < Frequency::daily ? 3600 : 40 * kSecondsPerDay;
}

std::optional<LocalSeconds> walked_end(const Rule& rule, LocalSeconds start) {
  if (rule.count > kMaxWalk) return std::nullopt;
  LocalSeconds last = start;
  std::int64_t left = rule.count - 1;
  if (left > 0)
    RuleExpansion(rule, start).walk(start + 1, kEndOfRules, [&](LocalSeconds moment) {
      last = moment;
      return --left > 0;
    });
  return last;
}

void sort_and_unite(std::vector<LocalSeconds>& moments, std::size_t begin) {
  const auto first = moments.begin() + static_cast<std::ptrdiff_t>(begin);
  std::sort(first, moments.end());
  moments.erase(std::unique(first, moments.end()), moments.end());
}

// How much is looked at for the end of a series that excludes nearly everything.
constexpr std::int64_t kEndEffort = 2'000'000;

}  // namespace

// Any other start stands alone.
bool can_recur(const Rule& rule, LocalSeconds start) {
  constexpr LocalSeconds kFirstStart = midnight_of(Day(-693593));  // 1 January 1
  return rule.interval >= 1 && start >= kFirstStart && start < kEndOfRules;
}

bool rule_produces(const Rule& rule, LocalSeconds start, LocalSeconds moment) {
  bool found = false;
  if (!can_recur(rule, start) || end_of_until(rule, moment + 1) <= moment) return false;
  RuleExpansion(rule, start).walk(moment, moment + 1, [&](LocalSeconds) {
    found = true;
    return false;
  });
  return found;
}

void append_instances(const Rule& rule, LocalSeconds start, LocalSeconds from, LocalSeconds to,
                      std::vector<LocalSeconds>& out) {
  if (start >= from && start < to) out.push_back(start);
  if (can_recur(rule, start)) append_later(rule, start, from, to, out);
}

std::optional<LocalSeconds> last_instance(const Rule& rule, LocalSeconds start) {
  if (rule.count == 0 && !rule.until) return std::nullopt;
  if (!can_recur(rule, start)) return start;
  const LocalSeconds end = end_of_until(rule, kEndOfRules);
  const PlainSeries series = plain_series(rule, start);
  const bool plain = series.kind != PlainSeries::Kind::none;
  if (rule.count > 0) {
    const auto last = plain ? counted_end(series) : walked_end(rule, start);
    if (last ? *last < end : !rule.until) return last;
  }
  RuleExpansion expansion(rule, start);
  return last_before(start, end, first_span(rule), [&](LocalSeconds from, LocalSeconds to) {
    std::vector<LocalSeconds> found;
    std::optional<LocalSeconds> last;
    if (plain)
      append_series(series, from, to, found);
    else
      expansion.walk(std::max(from, start + 1), to, [&](LocalSeconds moment) {
        last = moment;
        return true;
      });
    return found.empty() ? last : found.back();
  });
}

void append_instances(const RecurrenceSet& set, LocalSeconds from, LocalSeconds to,
                      std::vector<LocalSeconds>& out) {
  const std::size_t begin = out.size();
  if (set.rules.empty() && set.start >= from && set.start < to) out.push_back(set.start);
  for (const Rule& rule : set.rules) append_instances(rule, set.start, from, to, out);
  const auto first_date = std::lower_bound(set.dates.begin(), set.dates.end(), from);
  for (auto date = first_date; date != set.dates.end() && *date < to; ++date) out.push_back(*date);
  if (set.rules.size() > 1 || !set.dates.empty()) sort_and_unite(out, begin);
  if (out.size() == begin || (set.excluded_dates.empty() && set.excluded_rules.empty())) return;

  std::deque<RuleMembers> excluded;
  for (const Rule& rule : set.excluded_rules) excluded.emplace_back(rule, set.start);
  const auto is_excluded = [&](LocalSeconds moment) {
    if (std::binary_search(set.excluded_dates.begin(), set.excluded_dates.end(), moment))
      return true;
    return std::any_of(excluded.begin(), excluded.end(),
                       [moment](RuleMembers& rule) { return rule.has(moment); });
  };
  const auto first = out.begin() + static_cast<std::ptrdiff_t>(begin);
  out.erase(std::remove_if(first, out.end(), is_excluded), out.end());
}

std::optional<LocalSeconds> last_instance(const RecurrenceSet& set) {
  LocalSeconds last = set.start;
  if (!set.dates.empty()) last = std::max(last, set.dates.back());
  std::int64_t span = 40 * kSecondsPerDay;
  for (const Rule& rule : set.rules) {
    const auto end = last_instance(rule, set.start);
    if (!end) return std::nullopt;
    last = std::max(last, *end);
    span = std::min(span, first_span(rule));
  }
  if (set.excluded_dates.empty() && set.excluded_rules.empty()) return last;
  // A date may lie before the start, so the search goes on to the first of them.
  const auto first = set.dates.empty() ? set.start : std::min(set.start, set.dates.front());
  InstanceStream stream(set, kEndEffort);
  const LocalSeconds end =
      last_before(first, last + 1, span, [&](LocalSeconds from, LocalSeconds to) {
        std::vector<LocalSeconds> none;
        const LeftOut found = stream.append(from, to, 0, none);
        return found.count != 0 ? std::optional(found.last) : std::nullopt;
      });
  return end == first ? set.start : end;
}

}  // namespace orvello
