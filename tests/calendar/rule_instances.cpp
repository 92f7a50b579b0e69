#include <gtest/gtest.h>

#include <algorithm>

#include "calendar/instance_stream.h"

#include "tests/calendar/rule_case_file.h"
#include "tests/calendar/rule_random.h"

namespace orvello {
namespace {

constexpr std::int64_t kDay = kSecondsPerDay;

LocalSeconds at(const char* text) { return parse_moment(text).value(); }

std::vector<LocalSeconds> between(const Rule& rule, LocalSeconds start, LocalSeconds from,
                                  LocalSeconds to) {
  std::vector<LocalSeconds> found;
  append_instances(rule, start, from, to, found);
  return found;
}

TEST(RuleInstances, AreThoseOfTheCases) {
  const auto cases = read_rule_cases();
  ASSERT_GT(cases.size(), 80u);
  for (const RuleCase& one : cases) {
    SCOPED_TRACE(one.line);
    const auto last = one.expected.back();
    EXPECT_EQ(moments_text(between(one.rule, one.start, one.start, last + 1)),
              moments_text(one.expected));
    const auto end = last_instance(one.rule, one.start);
    if (one.ends) {
      ASSERT_TRUE(end);
      EXPECT_EQ(moment_text(*end), moment_text(last));
      EXPECT_EQ(between(one.rule, one.start, last + 1, at("21000101")).size(), 0u);
    } else if (!one.rule.until) {
      EXPECT_FALSE(end);
    }
  }
}

// A span found by a jump holds what a walk from the start finds there, with COUNT and UNTIL too.
TEST(RuleInstances, OfASpanAreThoseOfTheWholeSeries) {
  RandomRules random(20261121);
  for (int round = 0; round < 700; ++round) {
    const auto frequency = kAllFrequencies[round % 7];
    Rule rule = random.rule(frequency);
    if (frequency < Frequency::hourly) rule.interval *= 997;  // keeps the walk short
    const auto start = random.start();
    if (random.chance(30)) rule.count = random.number(1, 60);
    const std::int64_t length = frequency < Frequency::daily ? 60 * kDay : 9 * 366 * kDay;
    const auto whole = between(rule, start, start, start + length);
    SCOPED_TRACE(moment_text(start) + " " + rule_text(rule));
    ASSERT_EQ(whole.front(), start);
    ASSERT_TRUE(std::is_sorted(whole.begin(), whole.end(), std::less_equal<>()));
    for (int span = 0; span < 5; ++span) {
      const auto from = start + random.number(-1000, static_cast<int>(length / 70)) * 60LL;
      const LocalSeconds to =
          std::min<LocalSeconds>(from + random.number(1, 60 * 1440) * 60LL, start + length);
      std::vector<LocalSeconds> filtered;
      for (auto moment : whole)
        if (moment >= from && moment < to) filtered.push_back(moment);
      EXPECT_EQ(moments_text(between(rule, start, from, to)), moments_text(filtered));
    }
    // Ending the series at its middle instance makes that the last.
    if (rule.count > 0) continue;
    const auto middle = whole[whole.size() / 2];
    rule.until = middle + 1;
    EXPECT_EQ(last_instance(rule, start), middle);
    EXPECT_EQ(between(rule, start, start, start + length).size(), whole.size() / 2 + 1);
  }
}

// A count ends at the same instance whether it is multiplied out or walked: BYHOUR with the
// start's own hour changes nothing but keeps a rule from being plain.
TEST(RuleInstances, CountEndsPlainAndOtherRulesAlike) {
  RandomRules random(7);
  for (int round = 0; round < 700; ++round) {
    Rule rule = random.rule(kAllFrequencies[3 + round % 4]);
    const auto start = random.start();
    rule.by_hour.clear();
    rule.by_minute.clear();
    rule.count = random.number(1, 90);
    Rule walked = rule;
    walked.by_hour = {static_cast<int>(second_of_day(start) / 3600)};
    SCOPED_TRACE(moment_text(start) + " " + rule_text(rule));
    EXPECT_EQ(last_instance(rule, start), last_instance(walked, start));
    EXPECT_EQ(between(rule, start, start, start + 3000 * kDay),
              between(walked, start, start, start + 3000 * kDay));
  }
}

TEST(RuleInstances, KeepWithinTheYearsOfTheCalendar) {
  const Rule yearly = *parse_rule("FREQ=YEARLY");
  const auto start = at("44990315T100000");
  EXPECT_EQ(between(yearly, start, start, start + 9999 * kDay).size(), 2u);
  const Rule long_ago = *parse_rule("FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU");  // as zone files begin
  const auto found = between(long_ago, at("00010101T020000"), at("20260101"), at("20270101"));
  EXPECT_EQ(moments_text(found), "20260329T020000 ");
  // Absurd numbers neither overflow nor hang.
  for (const char* text :
       {"FREQ=YEARLY;INTERVAL=2147483647", "FREQ=DAILY;INTERVAL=2147483647;COUNT=2147483647",
        "FREQ=MONTHLY;INTERVAL=2147483647;BYDAY=MO", "FREQ=HOURLY;INTERVAL=2147483647;BYMONTH=5",
        "FREQ=SECONDLY;BYSECOND=1;COUNT=2147483647", "FREQ=WEEKLY;COUNT=2147483647"}) {
    SCOPED_TRACE(text);
    const Rule rule = *parse_rule(text);
    EXPECT_EQ(between(rule, start, start, start + 1).size(), 1u);
    last_instance(rule, start);
  }
  // Seven times as many days are three more than 32 bits hold.
  Rule seldom = *parse_rule("FREQ=WEEKLY;INTERVAL=613566757");
  const auto monday = at("20000103T100000");
  EXPECT_EQ(between(seldom, monday, monday, at("45000101")).size(), 1u);
  seldom.count = 3;
  EXPECT_EQ(last_instance(seldom, monday), monday);
  EXPECT_EQ(
      between(yearly, LocalSeconds(INT64_MAX / 2), LocalSeconds(INT64_MIN / 2), LocalSeconds::max())
          .size(),
      1u);
}

// Span by span a stream gives what the whole series holds there, and counts what it leaves out.
TEST(InstanceStream, GivesTheFirstOfASpanAndCountsTheRest) {
  RandomRules random(42);
  int counted = 0;
  for (int round = 0; round < 400; ++round) {
    const auto frequency = kAllFrequencies[round % 7];
    RecurrenceSet set;
    set.start = random.start();
    set.rules = {random.rule(frequency)};
    if (frequency < Frequency::hourly) set.rules[0].interval *= 997;
    if (random.chance(30)) set.rules.push_back(random.rule(Frequency::daily));
    if (random.chance(30)) set.excluded_rules = {random.rule(Frequency::daily)};
    if (random.chance(20)) set.rules[0].count = random.number(1, 40);
    for (int i = 0; i < 5; ++i) set.dates.push_back(random.start());
    std::sort(set.dates.begin(), set.dates.end());
    set.excluded_dates = {set.dates[1], set.dates[3]};
    InstanceStream stream(set, 1 << 30);
    LocalSeconds from = set.start - kDay;
    for (int span = 0; span < 8; ++span) {
      const LocalSeconds to = from + random.number(1, 40 * 1440) * 60LL;
      const auto most = static_cast<std::size_t>(random.number(0, 20));
      std::vector<LocalSeconds> whole, some;
      append_instances(set, from, to, whole);
      const LeftOut left = stream.append(from, to, most, some);
      ASSERT_EQ(some.size(), std::min(most, whole.size()));
      ASSERT_TRUE(std::equal(some.begin(), some.end(), whole.begin())) << rule_text(set.rules[0]);
      ASSERT_EQ(left.count, static_cast<std::int64_t>(whole.size() - some.size()));
      from = to;
      if (left.count == 0) continue;
      ++counted;
      EXPECT_EQ(left.first, whole[most]);
      EXPECT_EQ(left.last, whole.back());
    }
  }
  EXPECT_GT(counted, 100);
}

TEST(InstanceStream, OfAPlainSeriesMultipliesOut) {
  for (const char* text : {"FREQ=SECONDLY;INTERVAL=7", "FREQ=MINUTELY;UNTIL=20260103T120000",
                           "FREQ=DAILY", "FREQ=WEEKLY;BYDAY=MO,FR", "FREQ=HOURLY;COUNT=30"}) {
    const auto start = at("20260102T093000");
    const PlainSeries series = plain_series(*parse_rule(text), start);
    for (const LocalSeconds from : {start - kDay, start, start + 1, start + kDay + 5}) {
      std::vector<LocalSeconds> whole, some;
      append_instances(*parse_rule(text), start, from, from + 10 * kDay, whole);
      const LeftOut left = append_some(series, from, from + 10 * kDay, 3, some);
      ASSERT_EQ(some.size(), std::min<std::size_t>(3, whole.size())) << text;
      EXPECT_TRUE(std::equal(some.begin(), some.end(), whole.begin())) << text;
      ASSERT_EQ(left.count, static_cast<std::int64_t>(whole.size() - some.size())) << text;
      if (left.count == 0) continue;
      EXPECT_EQ(left.first, whole[3]) << text;
      EXPECT_EQ(left.last, whole.back()) << text;
    }
  }
}

// What would take too long is said to be more, not looked at one by one.
TEST(InstanceStream, GivesUpWhereNearlyAllIsExcluded) {
  RecurrenceSet set;
  set.start = at("20260102T000000");
  set.rules = {*parse_rule("FREQ=SECONDLY;UNTIL=20991231T235959")};
  set.excluded_rules = {*parse_rule("FREQ=SECONDLY")};
  const auto end = last_instance(set);
  EXPECT_TRUE(end && *end > at("20990101") && *end <= at("20991231T235959"));
  InstanceStream stream(set, 100000);
  std::vector<LocalSeconds> found;
  EXPECT_EQ(stream.append(set.start, set.start + 3600, 10, found).count, 0);
  EXPECT_EQ(stream.append(set.start, set.start + kDay, 10, found).count, LeftOut::kUncounted);
  EXPECT_TRUE(found.empty());
}

TEST(RecurrenceSet, UnitesRulesAndDatesAndTakesTheExcludedAway) {
  RecurrenceSet set;
  set.start = at("20260105T090000");  // a Monday
  set.rules = {*parse_rule("FREQ=WEEKLY;COUNT=4"), *parse_rule("FREQ=MONTHLY;COUNT=2")};
  set.dates = {at("20260107T090000"), at("20260112T090000"), at("20260301T100000")};
  const auto all = [&] {
    std::vector<LocalSeconds> found{LocalSeconds(-1)};  // what is there already stays
    append_instances(set, at("20260101"), at("20270101"), found);
    EXPECT_EQ(found.front(), LocalSeconds(-1));
    found.erase(found.begin());
    return moments_text(found);
  };
  EXPECT_EQ(all(),
            "20260105T090000 20260107T090000 20260112T090000 20260119T090000 20260126T090000 "
            "20260205T090000 20260301T100000 ");
  EXPECT_EQ(last_instance(set), at("20260301T100000"));
  set.excluded_dates = {at("20260105T090000"), at("20260301T100000")};
  set.excluded_rules = {*parse_rule("FREQ=WEEKLY;INTERVAL=2"), *parse_rule("FREQ=DAILY;COUNT=2")};
  EXPECT_EQ(all(), "20260107T090000 20260112T090000 20260126T090000 20260205T090000 ");
  EXPECT_EQ(last_instance(set), at("20260205T090000"));
  // An excluding rule that the start does not suit leaves the start alone.
  set.excluded_dates.clear();
  set.excluded_rules = {*parse_rule("FREQ=WEEKLY;BYDAY=WE")};
  EXPECT_EQ(all().substr(0, 31), "20260105T090000 20260112T090000");
  set.rules.push_back(*parse_rule("FREQ=DAILY"));
  EXPECT_FALSE(last_instance(set));
}

}  // namespace
}  // namespace orvello
