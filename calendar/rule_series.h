// Plain series: the shapes nearly every appointment has (every n days, weekdays of every n-th week,
// one day of every n-th month or year). They are computed directly, without looking at single days.
#pragma once

#include <cstdint>
#include <vector>

#include "calendar/rule.h"

namespace orvello {

struct PlainSeries {
  enum class Kind { none, steps, weeks, months };
  Kind kind = Kind::none;
  LocalSeconds start;
  std::int64_t step = 1;  // seconds, weeks or months
  int mask = 127;         // weekdays of weeks and months: Sunday 1 .. Saturday 64
  int week_start = 1;
  std::int64_t first_month = 0;           // as month_index counts
  std::uint32_t month_days = 0x7FFFFFFF;  // the days to choose from, bit 0 is the first
  int nth = 1;                            // which of the days that also suit `mask`
  std::int64_t count = 0;                 // instances with the start; 0 without
  LocalSeconds until = LocalSeconds::max() - 1;
};

// Kind none where the rule is not plain.
PlainSeries plain_series(const Rule& rule, LocalSeconds start);

// Whether a series of weeks or months has an instance on that day, leaving out start and end.
bool suits(const PlainSeries& series, Day day);

// The instances after the start in [from, to).
void append_series(const PlainSeries& series, LocalSeconds from, LocalSeconds to,
                   std::vector<LocalSeconds>& out);

// The moment at which a series with a count ends; at or past kEndOfRules when it does not end
// before.
LocalSeconds counted_end(const PlainSeries& series);

}  // namespace orvello
