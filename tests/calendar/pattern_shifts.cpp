#include <gtest/gtest.h>

#include <random>

#include "calendar/shifted_pattern.h"

namespace orvello {
namespace {

std::vector<LocalSeconds> occurrences(const RecurrencePattern& pattern) {
  std::vector<LocalSeconds> found;
  append_occurrences(pattern, LocalSeconds(), midnight_of(Day(60000)), found);
  return found;
}

// What is held is the same series, seconds later; and what is easy to hold is held.
TEST(ShiftedPattern, HoldsTheSameOccurrencesOrNothing) {
  std::mt19937 random(8);
  const auto pick = [&](int low, int high) {
    return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
  };
  int held = 0, simple = 0;
  for (int round = 0; round < 2000; ++round) {
    RecurrencePattern pattern;
    constexpr RecurrenceType kTypes[] = {RecurrenceType::daily,   RecurrenceType::weekly,
                                         RecurrenceType::monthly, RecurrenceType::month_nth,
                                         RecurrenceType::yearly,  RecurrenceType::year_nth};
    pattern.type = kTypes[pick(0, 5)];
    pattern.pattern_start_date = pick(36000, 46000);
    pattern.interval = pick(0, 3);
    pattern.day_of_week_mask = pick(0, 127);
    pattern.day_of_month = pick(1, 31);
    pattern.month_of_year = pick(1, 12);
    pattern.instance = pick(1, 5);
    pattern.start_time = pick(0, 23) / 24.0;
    pattern.end_time = pattern.start_time;
    if (pick(0, 2) == 0) {
      pattern.no_end_date = false;
      pattern.occurrences = pick(-1, 20);
      pattern.pattern_end_date = pattern.pattern_start_date + pick(0, 900);
    }
    const std::int64_t seconds = pick(-26, 26) * 3600;
    const auto shifted = shifted_pattern(pattern, seconds);
    const bool easy = pattern.type == RecurrenceType::daily ||
                      (pattern.type == RecurrenceType::weekly && pattern.interval < 2);
    simple += easy;
    EXPECT_TRUE(shifted || !easy);
    if (!shifted) continue;
    ++held;
    auto expected = occurrences(pattern);
    for (LocalSeconds& each : expected) each += seconds;
    auto found = occurrences(*shifted);
    const auto common = std::min(expected.size(), found.size());
    if (pattern.no_end_date) {  // the last days of the span
      expected.resize(common);
      found.resize(common);
    }
    ASSERT_EQ(found, expected) << static_cast<int>(pattern.type) << " by " << seconds;
  }
  EXPECT_GT(held, 700);
  EXPECT_GT(simple, 250);
}

}  // namespace
}  // namespace orvello
