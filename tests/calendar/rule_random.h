// Random recurrence rules from a fixed seed, over every frequency and the parts it may have.
#pragma once

#include <algorithm>
#include <random>

#include "calendar/rule.h"

namespace orvello {

class RandomRules {
 public:
  explicit RandomRules(unsigned seed) : engine_(seed) {}

  int number(int low, int high) {  // the same on every machine, unlike the library's distributions
    return low + static_cast<int>(engine_() % static_cast<unsigned>(high - low + 1));
  }
  bool chance(int percent) { return number(1, 100) <= percent; }
  LocalSeconds start() {  // 1999 to 2027, whole minutes
    return midnight_of(Day(number(36161, 46752))) + number(0, 1439) * 60;
  }

  Rule rule(Frequency frequency) {
    Rule rule;
    rule.frequency = frequency;
    rule.interval = chance(50) ? 1 : number(2, frequency < Frequency::daily ? 50 : 5);
    if (chance(40)) rule.week_start = number(0, 6);
    if (chance(25)) fill(rule.by_month, 1, 12, 3, false);
    if (frequency != Frequency::weekly && chance(25)) fill(rule.by_month_day, 1, 31, 3, true);
    const bool yearly = frequency == Frequency::yearly;
    if ((yearly || frequency < Frequency::daily) && chance(10))
      fill(rule.by_year_day, 1, 366, 5, true);
    if (yearly && rule.by_month_day.empty() && rule.by_year_day.empty() && chance(15))
      fill(rule.by_week_no, 1, 53, 3, true);
    if (chance(40)) add_days(rule);
    if (chance(10)) fill(rule.by_hour, 0, 23, 2, false);
    if (chance(10)) fill(rule.by_minute, 0, 59, 2, false);
    const bool chooses = !rule.by_day.empty() || !rule.by_month_day.empty();
    if (chooses && frequency > Frequency::daily && chance(25)) fill(rule.by_set_pos, 1, 4, 2, true);
    return rule;
  }

 private:
  void fill(std::vector<int>& values, int low, int high, int most, bool may_be_negative) {
    for (int left = number(1, most); left > 0; --left) {
      int value = number(low, high);
      if (may_be_negative && chance(25)) value = -value;
      bool known = false;
      for (int each : values) known |= each == value;
      if (!known) values.push_back(value);
    }
    std::sort(values.begin(), values.end());
  }
  void add_days(Rule& rule) {
    const bool monthly = rule.frequency == Frequency::monthly;
    const bool yearly = rule.frequency == Frequency::yearly && rule.by_week_no.empty();
    const bool ordinals =
        (monthly || yearly) && rule.by_month_day.empty() && rule.by_year_day.empty() && chance(50);
    const bool in_year = yearly && rule.by_month.empty();
    for (int weekday = 0; weekday < 7; ++weekday) {
      if (!chance(30)) continue;
      const int ordinal = ordinals ? number(1, in_year ? 53 : 5) * (chance(30) ? -1 : 1) : 0;
      rule.by_day.push_back({ordinal, weekday});
    }
  }

  std::mt19937 engine_;
};

inline constexpr Frequency kAllFrequencies[] = {
    Frequency::secondly, Frequency::minutely, Frequency::hourly, Frequency::daily,
    Frequency::weekly,   Frequency::monthly,  Frequency::yearly};

}  // namespace orvello
