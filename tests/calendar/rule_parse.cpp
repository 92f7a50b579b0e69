#include <gtest/gtest.h>

#include "tests/calendar/rule_case_file.h"
#include "tests/calendar/rule_random.h"

namespace orvello {
namespace {

TEST(RuleText, ReadsBackWhatItWrites) {
  RandomRules random(11);
  for (int round = 0; round < 700; ++round) {
    Rule rule = random.rule(kAllFrequencies[round % 7]);
    if (random.chance(30)) rule.count = 7;
    const auto again = parse_rule(rule_text(rule));
    ASSERT_TRUE(again) << again.reason();
    EXPECT_EQ(*again, rule) << rule_text(rule);
  }
  for (const RuleCase& one : read_rule_cases())
    EXPECT_EQ(*parse_rule(rule_text(one.rule)), one.rule) << one.line;
}

TEST(RuleText, TellsTheKindsOfUntilApart) {
  const auto day = parse_rule("FREQ=DAILY;UNTIL=20260131");
  EXPECT_TRUE(day->until_is_date && !day->until_is_utc);
  EXPECT_EQ(moment_text(*day->until), "20260131T235959");
  const auto utc = parse_rule("UNTIL=20260131T080000Z;FREQ=DAILY");
  EXPECT_TRUE(utc->until_is_utc && !utc->until_is_date);
  EXPECT_EQ(rule_text(*utc), "FREQ=DAILY;UNTIL=20260131T080000Z");
  EXPECT_EQ(rule_text(*day), "FREQ=DAILY;UNTIL=20260131");
}

TEST(RuleText, TakesWhatOtherProgramsWrite) {
  const auto rule = parse_rule("freq=weekly;byday=+1MO,-1fr;wkst=su;");
  ASSERT_TRUE(rule) << rule.reason();
  EXPECT_EQ(rule->by_day, (std::vector<RuleDay>{{1, 1}, {-1, 5}}));
  EXPECT_EQ(rule->week_start, 0);
}

TEST(RuleText, ReadsOddRulesForWhatTheySay) {
  const struct {
    const char *text, *meant, *oddities;
  } kOdd[] = {
      {"RSCALE=GREGORIAN;FREQ=MONTHLY;SKIP=OMIT", "FREQ=MONTHLY", ""},
      {"FREQ=DAILY;X-FOO=1;COUNT=3", "FREQ=DAILY;COUNT=3", "X-FOO=1 "},
      {"FREQ=DAILY;BYEASTER=0;;WHAT", "FREQ=DAILY", "BYEASTER=0  WHAT "},
      {"FREQ=WEEKLY;BYDAY=;BYMONTH=,;UNTIL=", "FREQ=WEEKLY", "BYDAY= BYMONTH=, UNTIL= "},
      {"FREQ=MONTHLY;BYMONTHDAY=1,,2", "FREQ=MONTHLY;BYMONTHDAY=1,2", ""},
      {"FREQ=DAILY;INTERVAL=0", "FREQ=DAILY", "INTERVAL=0 "},
      {"FREQ=DAILY;COUNT=3;COUNT=3", "FREQ=DAILY;COUNT=3", "COUNT=3 "},
  };
  for (const auto& odd : kOdd) {
    std::vector<std::string> oddities;
    const auto rule = parse_rule(odd.text, &oddities);
    ASSERT_TRUE(rule) << rule.reason();
    EXPECT_EQ(rule_text(*rule), odd.meant);
    std::string list;
    for (const std::string& one : oddities) list += one + " ";
    EXPECT_EQ(list, odd.oddities) << odd.text;
  }
  std::vector<std::string> oddities;
  const auto both = parse_rule("FREQ=DAILY;COUNT=9;UNTIL=20260103", &oddities);
  EXPECT_EQ(rule_text(*both), "FREQ=DAILY;UNTIL=20260103;COUNT=9");
  EXPECT_EQ(oddities.size(), 1u);
}

TEST(RuleText, OfWholeDaysHasNoTimes) {
  const auto days = [](const char* text) { return rule_text(by_whole_days(*parse_rule(text))); };
  EXPECT_EQ(days("FREQ=WEEKLY;BYDAY=MO;BYHOUR=9,10,11;BYMINUTE=0;BYSECOND=1"),
            "FREQ=WEEKLY;BYDAY=MO");
  EXPECT_EQ(days("FREQ=HOURLY;INTERVAL=48"), "FREQ=DAILY;INTERVAL=2");
  EXPECT_EQ(days("FREQ=SECONDLY;BYMONTH=2"), "FREQ=DAILY;BYMONTH=2");
}

TEST(RuleText, RefusesWithThePartAtFault) {
  const struct {
    const char *text, *part;
  } kBad[] = {
      {"", "FREQ"},
      {"COUNT=3", "FREQ"},
      {"FREQ=FORTNIGHTLY", "FORTNIGHTLY"},
      {"FREQ=DAILY;COUNT=3;COUNT=4", "COUNT=4 is there twice"},
      {"FREQ=DAILY;INTERVAL=99999999999", "INTERVAL"},
      {"FREQ=DAILY;COUNT=-1", "COUNT"},
      {"FREQ=DAILY;UNTIL=20260230", "UNTIL"},
      {"FREQ=DAILY;UNTIL=20260131T250000", "UNTIL"},
      {"FREQ=DAILY;UNTIL=00000101", "UNTIL"},
      {"FREQ=WEEKLY;BYDAY=XX", "BYDAY"},
      {"FREQ=MONTHLY;BYDAY=0MO", "BYDAY"},
      {"FREQ=YEARLY;BYDAY=54MO", "BYDAY"},
      {"FREQ=MONTHLY;BYMONTHDAY=0", "BYMONTHDAY"},
      {"FREQ=YEARLY;BYMONTH=-1", "BYMONTH"},
      {"FREQ=YEARLY;BYYEARDAY=367", "BYYEARDAY"},
      {"FREQ=DAILY;BYHOUR=24", "BYHOUR"},
      {"FREQ=DAILY;BYSECOND=61", "BYSECOND"},
      {"FREQ=DAILY;BYSETPOS=0", "BYSETPOS"},
      {"FREQ=DAILY;WKST=X", "WKST"},
      {"FREQ=YEARLY;RSCALE=HEBREW", "RSCALE"},
  };
  for (const auto& bad : kBad) {
    const auto rule = parse_rule(bad.text);
    ASSERT_FALSE(rule) << bad.text;
    EXPECT_NE(rule.reason().find(bad.part), std::string::npos) << rule.reason();
  }
}

}  // namespace
}  // namespace orvello
