#include "exchange/series_split.h"

#include <algorithm>

#include "calendar/rule_days.h"
#include "store/series_halves.h"

namespace orvello {
namespace {

constexpr LocalSeconds kNoEnd = LocalSeconds::max();
// As many moved occurrences are listed one by one where no rule can say them.
constexpr std::size_t kMostListed = 1000;
constexpr std::int64_t kYearsListed = 20 * 366 * kSecondsPerDay;
constexpr std::size_t kMostParts = 100;

// Moves a rule that produces `from` by whole days so that it produces what it did, that much later.
// False when no rule says that.
bool move_days(Rule& rule, LocalSeconds from, std::int64_t days) {
  if (days == 0) return true;
  const bool only_days = rule.by_month_day.empty() && rule.by_year_day.empty() &&
                         rule.by_week_no.empty() && rule.by_month.empty() &&
                         rule.by_set_pos.empty();
  if (!only_days) return false;
  if (rule.by_day.empty()) {
    if (rule.frequency <= Frequency::weekly) return true;
    const auto day = day_of(from);
    // Within one month, and in days that every month has.
    const auto month_day = [](Day of) { return civil_of(of).day; };
    return month_day(day) <= 28 && month_day(day + days) == month_day(day) + days &&
           month_day(day + days) <= 28;
  }
  const bool single = rule.by_day.size() == 1 || rule.interval == 1;
  if (rule.frequency != Frequency::weekly || !single || days > 6 || days < -6) return false;
  for (RuleDay& day : rule.by_day) day.weekday = static_cast<int>((day.weekday + days + 7) % 7);
  return true;
}

// The instances from `from` on, `shift` later, as a recurrence that starts at their first.
RecurrenceSet moved(const RecurrenceSet& all, LocalSeconds from, LocalSeconds to,
                    std::int64_t shift, bool& complete) {
  RecurrenceSet set;
  set.start = from + shift;
  const std::int64_t days = day_of(from + shift) - day_of(from);
  complete = true;
  if (all.rules.size() == 1 && all.excluded_rules.empty()) {
    Rule rule = all.rules[0];
    const bool of_days = rule.frequency >= Frequency::daily && rule.by_hour.empty() &&
                         rule.by_minute.empty() && rule.by_second.empty();
    RecurrenceSet rest{all.start, all.rules, all.dates, {}, {}};
    end_before(rest, to);
    if (of_days && !rest.rules.empty() && rule_produces(rule, all.start, from) &&
        move_days(rest.rules[0], from, days)) {
      set.rules = std::move(rest.rules);
      if (set.rules[0].until) *set.rules[0].until += shift;
      for (const LocalSeconds date : rest.dates)
        if (date > from) set.dates.push_back(date + shift);
      return set;
    }
  }
  const LocalSeconds end = std::min(to, from + kYearsListed);
  // Day by day: a rule of seconds must not be asked for years.
  for (LocalSeconds day = from; day < end && set.dates.size() <= kMostListed; day += kSecondsPerDay)
    append_instances(all, day, std::min(day + kSecondsPerDay, end), set.dates);
  const auto last = last_instance(all);
  complete = set.dates.size() <= kMostListed && (end == to || (last && *last < end));
  set.dates.resize(std::min(set.dates.size(), kMostListed));
  for (LocalSeconds& date : set.dates) date += shift;
  return set;
}

}  // namespace

void add_date(AppointmentRecord& record, LocalSeconds moment) {
  RecurrenceSet set = recurrence_of(record);
  set.dates.push_back(moment);
  set_recurrence_of(record, set);
}

std::vector<SeriesPart> split_series(ReadEvent& master, std::vector<FollowingChange>& changes,
                                     EventContext& context) {
  const RecurrenceSet all = recurrence_of(master.record);
  std::vector<std::pair<LocalSeconds, FollowingChange>> good;
  std::vector<FollowingChange> others;
  for (FollowingChange& change : changes) {
    const LocalSeconds from = reading_at(*change.event.recurrence_id, master.start, context.clock);
    if (good.size() < kMostParts && has_instance(all, from))
      good.emplace_back(from, std::move(change));
    else
      others.push_back(std::move(change));
  }
  changes = std::move(others);
  std::stable_sort(good.begin(), good.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<SeriesPart> parts;
  for (std::size_t i = good.size(); i-- > 0;) {
    const LocalSeconds from = good[i].first;
    const LocalSeconds to = i + 1 < good.size() ? good[i + 1].first : kNoEnd;
    if (from == to) continue;  // told twice: the later one stands
    SeriesPart part;
    part.from = from;
    part.record = std::move(good[i].second.event.record);
    part.record.residue = std::move(good[i].second.text);
    part.shift = part.record.start - from;
    bool complete = true;
    set_recurrence_of(part.record, moved(all, from, to, part.shift, complete));
    if (!complete)
      context.problems.add(good[i].second.line,
                           "a change of this and all later occurrences is shown for " +
                               std::to_string(kMostListed) + " of them or twenty years");
    part.record.exceptions = take_exceptions(master.record, from);
    for (AppointmentException& one : part.record.exceptions) one.original_start += part.shift;
    parts.push_back(std::move(part));
  }
  std::reverse(parts.begin(), parts.end());
  if (!parts.empty()) end_series_before(master.record, parts.front().from);
  return parts;
}

}  // namespace orvello
