// The instances of random rules, from a fixed seed, beside those of libical. Where the two differ
// on purpose the data file of rules says why.
#include <gtest/gtest.h>
#include <libical/ical.h>

#include <algorithm>

#include "tests/calendar/rule_case_file.h"
#include "tests/calendar/rule_random.h"

namespace orvello {
namespace {

// At most `most` instances before `to`; nothing for a rule that libical refuses. The start is added
// where libical leaves it out, as it always counts here.
std::optional<std::vector<LocalSeconds>> of_libical(const std::string& rule, LocalSeconds start,
                                                    LocalSeconds to, std::size_t most) {
  icalrecurrencetype recurrence = icalrecurrencetype_from_string(rule.c_str());
  const auto first = icaltime_from_string(moment_text(start).c_str());
  icalrecur_iterator* iterator = icalrecur_iterator_new(recurrence, first);
  if (!iterator) return std::nullopt;
  std::vector<LocalSeconds> found;
  while (found.size() < most) {
    const icaltimetype next = icalrecur_iterator_next(iterator);
    if (icaltime_is_null_time(next)) break;
    const auto moment = parse_moment(icaltime_as_ical_string(next)).value_or(LocalSeconds());
    if (moment >= to) break;
    found.push_back(moment);
  }
  icalrecur_iterator_free(iterator);
  if (found.empty() || found.front() != start) found.insert(found.begin(), start);
  if (found.size() > most) found.resize(most);
  return found;
}

bool counts_back(const std::vector<int>& values) {
  return std::any_of(values.begin(), values.end(), [](int value) { return value < 0; });
}

// Rules on which the two part, each kind as a case of the data file shows. Rules by the second are
// left out, and those by the hour or minute keep few parts: libical steps through all of them.
bool is_told_otherwise(const Rule& rule, LocalSeconds start) {
  if (!rule.by_week_no.empty()) return true;
  const bool several_times = rule.by_hour.size() > 1 || rule.by_minute.size() > 1;
  switch (rule.frequency) {
    case Frequency::secondly:
      return true;
    case Frequency::minutely:
    case Frequency::hourly:
      return !rule.by_month_day.empty() || !rule.by_year_day.empty() || !rule.by_month.empty() ||
             !rule.by_hour.empty() || !rule.by_minute.empty();
    case Frequency::daily:
      return counts_back(rule.by_month_day);
    case Frequency::weekly:
      return !rule.by_set_pos.empty() ||
             (rule.interval > 1 && (rule.week_start != 1 || !rule_produces(rule, start, start)));
    case Frequency::monthly:
      return !rule.by_set_pos.empty() && several_times;
    default:
      return (!rule.by_set_pos.empty() && several_times) ||
             (!rule.by_month_day.empty() && rule.by_month.empty());
  }
}

TEST(AgainstLibical, RandomRulesAgree) {
  RandomRules random(1997);
  int compared = 0;
  for (int round = 0; round < 3500; ++round) {
    const Rule rule = random.rule(kAllFrequencies[round % 7]);
    const auto start = random.start();
    if (is_told_otherwise(rule, start)) continue;
    const bool fine = rule.frequency < Frequency::daily;
    const auto to = start + (fine ? 40 : 3000) * kSecondsPerDay;
    const std::string text = rule_text(rule);
    std::vector<LocalSeconds> ours;
    append_instances(rule, start, start, to, ours);
    if (ours.size() > 400) ours.resize(400);
    if (ours.size() < 2) continue;  // libical may search such a rule for minutes
    const auto theirs = of_libical(text, start, to, 400);
    if (!theirs) continue;
    ++compared;
    EXPECT_EQ(moments_text(ours), moments_text(*theirs)) << moment_text(start) << " " << text;
  }
  EXPECT_GT(compared, 1000);
}

}  // namespace
}  // namespace orvello
