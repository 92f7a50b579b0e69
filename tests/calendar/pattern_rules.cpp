#include <gtest/gtest.h>

#include "calendar/recurrence_pattern.h"
#include "tests/calendar/rule_case_file.h"
#include "tests/calendar/rule_random.h"

namespace orvello {
namespace {

LocalSeconds at(const char* text) { return parse_moment(text).value(); }

std::vector<LocalSeconds> of_pattern(const RecurrencePattern& pattern, LocalSeconds from,
                                     LocalSeconds to) {
  std::vector<LocalSeconds> found;
  append_occurrences(pattern, from, to, found);
  return found;
}

std::vector<LocalSeconds> of_rule(const Rule& rule, LocalSeconds start, LocalSeconds from,
                                  LocalSeconds to) {
  std::vector<LocalSeconds> found;
  append_instances(rule, start, from, to, found);
  return found;
}

std::optional<RecurrencePattern> read(const char* start, const char* rule) {
  return pattern_from_rule(*parse_rule(rule), at(start), 3600);
}

TEST(Pattern, HoldsTheRulesItCanMean) {
  const struct {
    const char *start, *rule;
    RecurrenceType type;
    int interval, mask, day, instance, month;
  } kRules[] = {
      {"20260107T0900", "FREQ=DAILY;INTERVAL=3", RecurrenceType::daily, 3, 0, 0, 0, 0},
      {"20260107T0900", "FREQ=DAILY;BYDAY=MO,TU,WE,TH,FR", RecurrenceType::weekly, 1, 62, 0, 0, 0},
      {"20260107T0900", "FREQ=WEEKLY;INTERVAL=2;WKST=SU", RecurrenceType::weekly, 2, 8, 0, 0, 0},
      {"20260107T0900", "FREQ=WEEKLY;BYDAY=SU,WE;WKST=SU", RecurrenceType::weekly, 1, 9, 0, 0, 0},
      {"20260107T0900", "FREQ=MONTHLY;INTERVAL=2", RecurrenceType::monthly, 2, 0, 7, 0, 0},
      {"20260131T0900", "FREQ=MONTHLY;BYMONTHDAY=31,28,29,30;BYSETPOS=-1", RecurrenceType::monthly,
       1, 0, 31, 0, 0},
      {"20260131T0900", "FREQ=MONTHLY;BYMONTHDAY=-1", RecurrenceType::month_nth, 1, 127, 0, 5, 0},
      {"20260107T0900", "FREQ=MONTHLY;BYDAY=1WE", RecurrenceType::month_nth, 1, 8, 0, 1, 0},
      {"20260130T0900", "FREQ=MONTHLY;BYDAY=FR,TH,WE,TU,MO;BYSETPOS=-1", RecurrenceType::month_nth,
       1, 62, 0, 5, 0},
      {"20260430T0900", "FREQ=YEARLY;INTERVAL=2", RecurrenceType::yearly, 2, 0, 30, 0, 4},
      {"20240229T0900", "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=28,29;BYSETPOS=-1",
       RecurrenceType::yearly, 1, 0, 29, 0, 2},
      {"20261126T0900", "FREQ=YEARLY;BYMONTH=11;BYDAY=4TH;BYHOUR=9", RecurrenceType::year_nth, 1,
       16, 0, 4, 11},
  };
  for (const auto& one : kRules) {
    const auto pattern = read((std::string(one.start) + "00").c_str(), one.rule);
    ASSERT_TRUE(pattern) << one.rule;
    EXPECT_EQ(pattern->type, one.type) << one.rule;
    EXPECT_EQ(pattern->interval, one.interval) << one.rule;
    EXPECT_EQ(pattern->day_of_week_mask, one.mask) << one.rule;
    EXPECT_EQ(pattern->day_of_month, one.day) << one.rule;
    EXPECT_EQ(pattern->instance, one.instance) << one.rule;
    EXPECT_EQ(pattern->month_of_year, one.month) << one.rule;
    EXPECT_EQ(pattern->duration, 60);
  }
}

TEST(Pattern, RefusesWhatItWouldAlter) {
  const struct {
    const char *start, *rule;
  } kRules[] = {
      {"20260131T090000", "FREQ=MONTHLY"},  // a pattern would clip where the rule skips
      {"20260131T090000", "FREQ=MONTHLY;BYMONTHDAY=31"},
      {"20240229T090000", "FREQ=YEARLY"},
      {"20260130T090000", "FREQ=MONTHLY;BYDAY=5FR"},
      {"20260104T090000", "FREQ=WEEKLY;INTERVAL=2;BYDAY=SU,WE;WKST=SU"},
      {"20260106T090000", "FREQ=WEEKLY;BYDAY=MO"},  // the start is no instance of its own
      {"20260107T090000", "FREQ=MONTHLY;BYDAY=1WE,3WE"},
      {"20260107T090000", "FREQ=MONTHLY;BYDAY=WE,TH;BYSETPOS=1"},  // no kind of day
      {"20260107T090000", "FREQ=MONTHLY;BYMONTHDAY=7,14"},
      {"20260107T090000", "FREQ=YEARLY;BYDAY=1WE"},
      {"20260107T090000", "FREQ=YEARLY;BYMONTHDAY=7"},
      {"20260107T090000", "FREQ=WEEKLY;BYMONTH=1"},
      {"20260107T090000", "FREQ=DAILY;INTERVAL=2;BYDAY=MO,WE"},
      {"20260107T090000", "FREQ=DAILY;BYHOUR=9,12"},
      {"20260107T090000", "FREQ=DAILY;UNTIL=20260301T080000Z"},
      {"20260107T090030", "FREQ=DAILY"},
      {"20260107T090000", "FREQ=HOURLY;INTERVAL=24"},
  };
  for (const auto& one : kRules) EXPECT_FALSE(read(one.start, one.rule)) << one.rule;
}

// Whatever rule becomes a pattern has the same occurrences as one, and comes back as a rule that
// has them too.
TEST(Pattern, AndItsRuleHaveTheSameOccurrences) {
  RandomRules random(3);
  int patterns = 0;
  for (int round = 0; round < 2500; ++round) {
    Rule rule = random.rule(kAllFrequencies[3 + round % 4]);
    if (random.chance(20)) rule.count = random.number(1, 40);
    auto start = random.start();
    std::vector<LocalSeconds> found = of_rule(rule, start, start, start + 800 * kSecondsPerDay);
    if (found.size() > 1 && random.chance(70)) start = found[1];
    if (rule.count == 0 && random.chance(30)) rule.until = start + random.number(0, 900000) * 60LL;
    const auto pattern = pattern_from_rule(rule, start, 0);
    if (!pattern) continue;
    ++patterns;
    SCOPED_TRACE(moment_text(start) + " " + rule_text(rule));
    const auto far = start + 2000 * kSecondsPerDay;
    const auto expected = moments_text(of_rule(rule, start, start, far));
    ASSERT_EQ(moments_text(of_pattern(*pattern, start, far)), expected);
    EXPECT_EQ(pattern_start(*pattern), start);
    EXPECT_EQ(last_instance(*pattern), last_instance(rule, start));
    const Rule again = rule_from_pattern(*pattern);
    EXPECT_EQ(moments_text(of_rule(again, start, start, far)), expected) << rule_text(again);
    EXPECT_EQ(pattern_from_rule(again, start, 0), pattern) << rule_text(again);
  }
  EXPECT_GT(patterns, 300);
}

RecurrencePattern pattern_from(RecurrenceType type, const char* start) {
  RecurrencePattern pattern;
  pattern.type = type;
  pattern.pattern_start_date = to_calendar_date(day_of(at(start)));
  pattern.start_time = 0.375;
  return pattern;
}

TEST(Pattern, BeginsOnTheFirstDayThatSuits) {
  auto pattern = pattern_from(RecurrenceType::month_nth, "20260120");
  pattern.instance = 1;
  pattern.day_of_week_mask = 62;
  pattern.interval = 2;
  EXPECT_EQ(moments_text(of_pattern(pattern, at("20260101"), at("20260701"))),
            "20260202T090000 20260401T090000 20260601T090000 ");
  pattern = pattern_from(RecurrenceType::weekly, "20260109");  // a Friday
  pattern.interval = 0;  // as the editor leaves it for every weekday
  pattern.day_of_week_mask = 2;
  pattern.no_end_date = false;
  pattern.occurrences = 2;
  pattern.pattern_end_date = pattern.pattern_start_date;  // the count wins over it
  EXPECT_EQ(moments_text(of_pattern(pattern, at("20260101"), at("20260701"))),
            "20260112T090000 20260119T090000 ");
  EXPECT_EQ(last_instance(pattern), at("20260119T090000"));
}

TEST(Pattern, ClipsADayThatAMonthLacks) {
  auto pattern = pattern_from(RecurrenceType::monthly, "20260130");
  pattern.day_of_month = 30;
  pattern.no_end_date = false;
  pattern.pattern_end_date = to_calendar_date(day_of(at("20260330")));
  EXPECT_EQ(moments_text(of_pattern(pattern, at("20260101"), at("20270701"))),
            "20260130T090000 20260228T090000 20260330T090000 ");
  pattern = pattern_from(RecurrenceType::yearly, "20240229");
  pattern.day_of_month = 29;
  pattern.month_of_year = 2;
  EXPECT_EQ(moments_text(of_pattern(pattern, at("20270101"), at("20290101"))),
            "20270228T090000 20280229T090000 ");
}

// A record from a damaged file is bounded, never followed into nonsense.
TEST(Pattern, SurvivesDamagedFields) {
  for (auto type : {0, 1, 2, 3, 4, 5, 6, 99})
    for (int value : {INT32_MIN, -1, 0, 99, INT32_MAX}) {
      auto pattern = pattern_from(static_cast<RecurrenceType>(type), "20260120");
      pattern.interval = pattern.day_of_week_mask = pattern.day_of_month = value;
      pattern.instance = pattern.month_of_year = pattern.occurrences = value;
      pattern.no_end_date = false;
      const auto found = of_pattern(pattern, at("20260101"), at("20270201"));
      EXPECT_GE(found.size(), 1u);
      EXPECT_LE(found.size(), 400u);
      EXPECT_TRUE(parse_rule(rule_text(rule_from_pattern(pattern))));
      EXPECT_EQ(last_instance(pattern).has_value(), pattern.occurrences > 0);
    }
}

}  // namespace
}  // namespace orvello
