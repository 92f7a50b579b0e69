// Small day arithmetic that the recurrence code shares: weekdays, weeks, and the days of a month as
// the bits of a word (bit 0 is the first).
#pragma once

#include <bit>
#include <cstdint>

#include "calendar/calendar_date.h"

namespace orvello {

// Instances are sought in these years only; an endless search ends at the border.
inline constexpr LocalSeconds kFirstRuleSecond = midnight_of(Day(-657434));  // 1 January 100
inline constexpr LocalSeconds kEndOfRules = midnight_of(Day(949998));        // 1 January 4501

constexpr std::int64_t ceil_div(std::int64_t value, std::int64_t by) {
  return -floor_div(-value, by);
}

// The first day of the week that holds `day`.
constexpr Day week_of(Day day, int week_start) {
  return day - floor_mod(weekday_of(day) - week_start, 7);
}

// Months are counted from year 0: 12 * year + month - 1.
inline std::int64_t month_index(Day day) {
  const auto civil = civil_of(day);
  return civil.year * 12 + civil.month - 1;
}
inline Day first_of_month(std::int64_t index) {
  return day_of(static_cast<int>(floor_div(index, 12)), static_cast<int>(floor_mod(index, 12)) + 1,
                1);
}
constexpr bool is_leap(std::int64_t year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}
constexpr int month_length(std::int64_t index) {
  const int month = static_cast<int>(floor_mod(index, 12));
  if (month == 1) return is_leap(floor_div(index, 12)) ? 29 : 28;
  return month == 3 || month == 5 || month == 8 || month == 10 ? 30 : 31;
}

// The days of a month of `length` whose weekdays are in `mask` (Sunday 1 .. Saturday 64).
constexpr std::uint32_t weekday_bits(int mask, int first_weekday, int length) {
  const auto weeks = static_cast<std::uint64_t>(mask) * 0x0810204081ULL;  // six weeks of the mask
  return static_cast<std::uint32_t>(weeks >> first_weekday) & (0xFFFFFFFFu >> (32 - length));
}

// The n-th set bit (from the end for a negative n) alone; 0 where there are fewer.
constexpr std::uint32_t nth_bit(std::uint32_t bits, int n) {
  for (; n > 1 && bits != 0; --n) bits &= bits - 1;
  for (; n < -1 && bits != 0; ++n) bits &= ~(0x80000000u >> std::countl_zero(bits));
  if (bits == 0) return 0;
  return n > 0 ? bits & -bits : 0x80000000u >> std::countl_zero(bits);
}

}  // namespace orvello
