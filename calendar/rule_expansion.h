// Any recurrence rule, expanded period by period with the expand and limit table of RFC 5545. The
// days of a month that suit a rule are bits of one word, so a rule that seldom or never matches is
// still searched quickly.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "calendar/rule.h"

namespace orvello {

class RuleExpansion {
 public:
  // Keeps a reference to `rule`. Its COUNT and UNTIL are the caller's business, and the start
  // itself is an instance here only where the rule produces it.
  RuleExpansion(const Rule& rule, LocalSeconds start);

  // Calls take(instance) for each instance in [from, to), ascending, until it returns false.
  using Take = std::function<bool(LocalSeconds)>;
  void walk(LocalSeconds from, LocalSeconds to, const Take& take);

 private:
  void set_defaults();
  void set_times();
  bool times_can_match() const;
  std::uint32_t days_of_month(std::int64_t month);
  std::uint32_t ordinal_bits(std::int64_t month, Day first, int length) const;
  std::uint32_t year_day_bits(std::int64_t month, Day first, int length) const;
  std::uint32_t week_no_bits(std::int64_t month, Day first, int length) const;
  Day first_week(std::int64_t year) const;
  std::int64_t period_of(Day day) const;
  Day period_start(std::int64_t period) const;
  void collect_days(Day from, Day to);
  void walk_periods(LocalSeconds from, LocalSeconds to, const Take& take);
  void walk_days(LocalSeconds from, LocalSeconds to, const Take& take);
  bool take_positions(LocalSeconds from, LocalSeconds to, const Take& take) const;
  bool take_times(Day day, LocalSeconds from, LocalSeconds to, const Take& take) const;
  bool take_units(Day day, LocalSeconds from, LocalSeconds to, const Take& take) const;

  const Rule& rule_;
  LocalSeconds start_;
  std::uint32_t months_ = 0xFFF;           // bit 0 is January
  std::uint32_t month_days_ = 0;           // bit 0 is the first
  std::uint32_t month_days_from_end_ = 0;  // bit 0 is the last
  int weekdays_ = 0;                       // those without an ordinal
  bool ordinals_count_ = false;
  std::uint64_t hours_ = 0, minutes_ = 0, seconds_ = 0;
  std::vector<int> times_;  // seconds into the day, or into the hour or minute that recurs
  std::int64_t cached_month_ = -1;
  std::uint32_t cached_days_ = 0;
  std::vector<Day> days_;  // of the period at hand
};

}  // namespace orvello
