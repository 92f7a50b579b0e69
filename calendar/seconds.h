// Moments in whole seconds since 30 December 1899, 00:00. What a clock on the wall shows and what
// Coordinated Universal Time says are two types: neither turns into the other nor into a number by
// itself. A Zone or a Clock converts them; who knows an offset uses the two functions below.
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>

namespace orvello {

inline constexpr std::int64_t kSecondsPerDay = 86400;

template <typename Reading>
class SecondCount {
 public:
  constexpr SecondCount() = default;
  template <std::integral Count>
  explicit constexpr SecondCount(Count count) : count_(count) {}

  constexpr std::int64_t count() const { return count_; }
  static constexpr SecondCount max() {
    return SecondCount(std::numeric_limits<std::int64_t>::max());
  }

  constexpr SecondCount& operator+=(std::int64_t seconds) {
    count_ += seconds;
    return *this;
  }
  constexpr SecondCount& operator-=(std::int64_t seconds) {
    count_ -= seconds;
    return *this;
  }
  friend constexpr SecondCount operator+(SecondCount moment, std::int64_t seconds) {
    return moment += seconds;
  }
  friend constexpr SecondCount operator-(SecondCount moment, std::int64_t seconds) {
    return moment -= seconds;
  }
  friend constexpr std::int64_t operator-(SecondCount moment, SecondCount other) {
    return moment.count_ - other.count_;
  }
  friend constexpr auto operator<=>(SecondCount, SecondCount) = default;

 private:
  std::int64_t count_ = 0;
};

// A local moment: the unit of recurrence arithmetic.
using LocalSeconds = SecondCount<struct LocalReading>;
using UtcSeconds = SecondCount<struct UtcReading>;

// The two readings of one moment where the clock is `offset` seconds east of Greenwich.
constexpr UtcSeconds utc_at_offset(LocalSeconds local, std::int64_t offset) {
  return UtcSeconds(local.count() - offset);
}
constexpr LocalSeconds local_at_offset(UtcSeconds utc, std::int64_t offset) {
  return LocalSeconds(utc.count() + offset);
}

}  // namespace orvello

// Without this the limits of a moment would be zero.
template <typename Reading>
class std::numeric_limits<orvello::SecondCount<Reading>>;

template <typename Reading>
struct std::hash<orvello::SecondCount<Reading>> {
  std::size_t operator()(orvello::SecondCount<Reading> moment) const noexcept {
    return std::hash<std::int64_t>()(moment.count());
  }
};
