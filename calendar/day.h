// Whole days, counted from 30 December 1899, and the moments that lie in them.
#pragma once

#include <cstdint>

#include "calendar/seconds.h"

namespace orvello {

constexpr std::int64_t floor_div(std::int64_t value, std::int64_t by) {
  return value / by - (value % by < 0);
}
constexpr std::int64_t floor_mod(std::int64_t value, std::int64_t by) {
  const auto rest = value % by;
  return rest < 0 ? rest + by : rest;
}

template <typename Reading>
constexpr std::int64_t day_of(SecondCount<Reading> moment) {
  return floor_div(moment.count(), kSecondsPerDay);
}
template <typename Reading>
constexpr std::int64_t second_of_day(SecondCount<Reading> moment) {
  return floor_mod(moment.count(), kSecondsPerDay);
}
constexpr LocalSeconds midnight_of(std::int64_t day) { return LocalSeconds(day * kSecondsPerDay); }

}  // namespace orvello
