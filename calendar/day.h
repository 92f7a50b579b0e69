// A whole day, counted from 30 December 1899, as a type of its own: neither a number nor a calendar
// date nor a moment by itself. Its conversions have names: here, and beside what they convert to
// (calendar_date.h, dates.h). It has 32 bits: steps that may lead beyond, such as an interval that
// a file gives, are counted in seconds.
#pragma once

#include <compare>
#include <concepts>
#include <cstdint>
#include <limits>

#include "calendar/seconds.h"

namespace orvello {

class Day {
 public:
  constexpr Day() = default;
  template <std::integral Number>
  explicit constexpr Day(Number number) : number_(static_cast<std::int32_t>(number)) {}

  constexpr std::int32_t number() const { return number_; }

  constexpr Day& operator+=(std::int64_t days) { return *this = Day(number_ + days); }
  constexpr Day& operator-=(std::int64_t days) { return *this = Day(number_ - days); }
  constexpr Day& operator++() { return *this += 1; }
  constexpr Day& operator--() { return *this -= 1; }
  friend constexpr Day operator+(Day day, std::int64_t days) { return day += days; }
  friend constexpr Day operator-(Day day, std::int64_t days) { return day -= days; }
  friend constexpr std::int32_t operator-(Day day, Day other) {
    return day.number_ - other.number_;
  }
  friend constexpr auto operator<=>(Day, Day) = default;

 private:
  std::int32_t number_ = 0;
};

constexpr std::int64_t floor_div(std::int64_t value, std::int64_t by) {
  return value / by - (value % by < 0);
}
constexpr std::int64_t floor_mod(std::int64_t value, std::int64_t by) {
  const auto rest = value % by;
  return rest < 0 ? rest + by : rest;
}

// The day in which a moment lies, how far it lies in it, and the moment that begins a day.
template <typename Reading>
constexpr Day day_of(SecondCount<Reading> moment) {
  return Day(floor_div(moment.count(), kSecondsPerDay));
}
template <typename Reading>
constexpr std::int64_t second_of_day(SecondCount<Reading> moment) {
  return floor_mod(moment.count(), kSecondsPerDay);
}
constexpr LocalSeconds midnight_of(Day day) {
  return LocalSeconds(std::int64_t{day.number()} * kSecondsPerDay);
}

// 0 Sunday .. 6 Saturday; 30 December 1899 was a Saturday.
constexpr int weekday_of(Day day) {
  return static_cast<int>(floor_mod(std::int64_t{day.number()} + 6, 7));
}

}  // namespace orvello

template <>
class std::numeric_limits<orvello::Day>;  // see seconds.h
