#include "calendar/rule_expansion.h"

#include <algorithm>
#include <numeric>

#include "calendar/rule_days.h"

namespace orvello {
namespace {

// The bits of a month for the days [from, to), which may lie outside of it.
std::uint32_t span_bits(Day from, Day to, Day first, int length) {
  const auto low = std::clamp(from - first, 0, length);
  const auto high = std::clamp(to - first, 0, length);
  return static_cast<std::uint32_t>((1ULL << high) - (1ULL << low));
}

std::uint64_t value_bits(const std::vector<int>& values, int fallback, int limit) {
  if (values.empty()) return fallback < 0 ? (1ULL << limit) - 1 : 1ULL << fallback;
  std::uint64_t bits = 0;
  for (int value : values)
    if (value < limit) bits |= 1ULL << value;  // drops second 60: no clock here shows it
  return bits;
}

// Indices that BYSETPOS names in a set of `size`, ascending.
std::vector<std::size_t> positions_in(const std::vector<int>& positions, std::size_t size) {
  std::vector<std::size_t> found;
  for (int position : positions) {
    const auto index = position > 0 ? position - 1 : static_cast<std::int64_t>(size) + position;
    if (index >= 0 && index < static_cast<std::int64_t>(size)) found.push_back(index);
  }
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

Day first_of_year(std::int64_t year) { return first_of_month(year * 12); }

// The lowest set bit at or above `value`; 64 where there is none.
int next_bit(std::uint64_t bits, int value) {
  return value > 63 ? 64 : std::countr_zero(bits >> value << value);
}

constexpr int kUnitSeconds[] = {1, 60, 3600};  // by Frequency

}  // namespace

RuleExpansion::RuleExpansion(const Rule& rule, LocalSeconds start) : rule_(rule), start_(start) {
  set_defaults();
  set_times();
}

// What a rule leaves open is taken from the start.
void RuleExpansion::set_defaults() {
  const auto civil = civil_of(day_of(start_));
  if (!rule_.by_month.empty()) months_ = 0;
  for (int month : rule_.by_month) months_ |= 1u << (month - 1);
  for (int day : rule_.by_month_day) {
    if (day > 0) month_days_ |= 1u << (day - 1);
    if (day < 0) month_days_from_end_ |= 1u << (-day - 1);
  }
  ordinals_count_ = rule_.frequency == Frequency::monthly ||
                    (rule_.frequency == Frequency::yearly && rule_.by_week_no.empty());
  for (const RuleDay& day : rule_.by_day)
    if (day.ordinal == 0 || !ordinals_count_) weekdays_ |= 1 << day.weekday;

  if (!rule_.by_day.empty() || !rule_.by_month_day.empty() || !rule_.by_year_day.empty()) return;
  const int weekday = 1 << weekday_of(day_of(start_));
  if (!rule_.by_week_no.empty()) {
    if (rule_.frequency >= Frequency::weekly) weekdays_ = weekday;
  } else if (rule_.frequency == Frequency::weekly) {
    weekdays_ = weekday;
  } else if (rule_.frequency >= Frequency::monthly) {
    month_days_ = 1u << (civil.day - 1);
    if (rule_.frequency == Frequency::yearly && rule_.by_month.empty())
      months_ = 1u << (civil.month - 1);
  }
}

void RuleExpansion::set_times() {
  const int time = static_cast<int>(second_of_day(start_));
  const auto frequency = rule_.frequency;
  hours_ = value_bits(rule_.by_hour, frequency > Frequency::hourly ? time / 3600 : -1, 24);
  minutes_ = value_bits(rule_.by_minute, frequency > Frequency::minutely ? time / 60 % 60 : -1, 60);
  seconds_ = value_bits(rule_.by_second, frequency > Frequency::secondly ? time % 60 : -1, 60);
  // A unit that recurs by itself is at zero in the list of times.
  const auto hours = frequency <= Frequency::hourly ? 1 : hours_;
  const auto minutes = frequency <= Frequency::minutely ? 1 : minutes_;
  const auto seconds = frequency == Frequency::secondly ? 1 : seconds_;
  for (int hour = 0; (hour = next_bit(hours, hour)) < 24; ++hour)
    for (int minute = 0; (minute = next_bit(minutes, minute)) < 60; ++minute)
      for (int second = 0; (second = next_bit(seconds, second)) < 60; ++second)
        times_.push_back(hour * 3600 + minute * 60 + second);
  if (rule_.by_set_pos.empty() || frequency > Frequency::daily) return;
  std::vector<int> chosen;
  for (std::size_t index : positions_in(rule_.by_set_pos, times_.size()))
    chosen.push_back(times_[index]);
  times_ = chosen;
}

// Whether a unit that recurs can ever fall on the hours, minutes and seconds asked for: its place
// in the day repeats with the common divisor of the step and a day.
bool RuleExpansion::times_can_match() const {
  const std::int64_t unit = kUnitSeconds[static_cast<int>(rule_.frequency)];
  const auto divisor = std::gcd(unit * rule_.interval, kSecondsPerDay);
  const auto rest = floor_mod(floor_div(start_.count(), unit) * unit, divisor);
  for (std::int64_t at = rest; at < kSecondsPerDay; at += divisor) {
    const bool minute_suits = rule_.frequency == Frequency::hourly || minutes_ >> at / 60 % 60 & 1;
    const bool second_suits = rule_.frequency != Frequency::secondly || seconds_ >> at % 60 & 1;
    if ((hours_ >> at / 3600 & 1) && minute_suits && second_suits) return true;
  }
  return false;
}

// The first day of week 1: the first week with at least four days in the year.
Day RuleExpansion::first_week(std::int64_t year) const {
  return week_of(first_of_year(year) + 3, rule_.week_start);
}

std::uint32_t RuleExpansion::ordinal_bits(std::int64_t month, Day first, int length) const {
  const bool in_year = rule_.frequency == Frequency::yearly && rule_.by_month.empty();
  const auto year = floor_div(month, 12);
  const auto from = in_year ? first_of_year(year) : first;
  const auto to = in_year ? first_of_year(year + 1) : first + length;
  std::uint32_t bits = 0;
  for (const RuleDay& day : rule_.by_day) {
    Day at;
    if (day.ordinal > 0)
      at = from + floor_mod(day.weekday - weekday_of(from), 7) + 7 * (day.ordinal - 1);
    else if (day.ordinal < 0)
      at = to - 1 - floor_mod(weekday_of(to - 1) - day.weekday, 7) + 7 * (day.ordinal + 1);
    else
      continue;
    if (at >= from && at < to) bits |= span_bits(at, at + 1, first, length);
  }
  return bits;
}

std::uint32_t RuleExpansion::year_day_bits(std::int64_t month, Day first, int length) const {
  const auto from = first_of_year(floor_div(month, 12));
  const auto to = first_of_year(floor_div(month, 12) + 1);
  std::uint32_t bits = 0;
  for (int day : rule_.by_year_day) {
    const auto at = day > 0 ? from + day - 1 : to + day;
    if (at >= from && at < to) bits |= span_bits(at, at + 1, first, length);
  }
  return bits;
}

std::uint32_t RuleExpansion::week_no_bits(std::int64_t month, Day first, int length) const {
  std::uint32_t bits = 0;
  const auto year = floor_div(month, 12);
  Day from, to = first_week(year - 1);
  for (auto week_year = year - 1; week_year <= year + 1; ++week_year) {
    from = to;
    to = first_week(week_year + 1);
    const auto weeks = (to - from) / 7;
    for (int number : rule_.by_week_no) {
      const auto week = number > 0 ? number - 1 : weeks + number;
      if (week < 0 || week >= weeks) continue;
      bits |= span_bits(from + 7 * week, from + 7 * week + 7, first, length);
    }
  }
  return bits;
}

// The days of a month that suit every day part of the rule.
std::uint32_t RuleExpansion::days_of_month(std::int64_t month) {
  if (!(months_ >> floor_mod(month, 12) & 1)) return 0;
  if (month == cached_month_) return cached_days_;
  const auto first = first_of_month(month);
  const int length = month_length(month);
  std::uint32_t bits = span_bits(first, first + length, first, length);
  if (month_days_ != 0 || month_days_from_end_ != 0) {
    std::uint32_t days = month_days_;
    for (auto rest = month_days_from_end_; rest != 0; rest &= rest - 1)
      if (std::countr_zero(rest) < length) days |= 1u << (length - 1 - std::countr_zero(rest));
    bits &= days;
  }
  if (weekdays_ != 0 || !rule_.by_day.empty()) {
    auto days = weekday_bits(weekdays_, weekday_of(first), length);
    if (ordinals_count_) days |= ordinal_bits(month, first, length);
    bits &= days;
  }
  if (bits != 0 && !rule_.by_year_day.empty()) bits &= year_day_bits(month, first, length);
  if (bits != 0 && !rule_.by_week_no.empty()) bits &= week_no_bits(month, first, length);
  cached_month_ = month;
  return cached_days_ = bits;
}

void RuleExpansion::collect_days(Day from, Day to) {
  days_.clear();
  if (from >= to) return;
  const auto last = month_index(to - 1);
  for (auto month = month_index(from); month <= last; ++month) {
    auto bits = days_of_month(month);
    if (bits == 0) continue;
    const auto first = first_of_month(month);
    bits &= span_bits(from, to, first, month_length(month));
    for (; bits != 0; bits &= bits - 1) days_.push_back(first + std::countr_zero(bits));
  }
}

// Periods are numbered weeks, months or years. A year of week numbers runs from its week 1 to the
// next, so that no week is cut.
std::int64_t RuleExpansion::period_of(Day day) const {
  if (rule_.frequency == Frequency::weekly)
    return floor_div(day.number() - rule_.week_start - 1, 7);
  const auto month = month_index(day);
  if (rule_.frequency == Frequency::monthly) return month;
  const auto year = floor_div(month, 12);
  if (rule_.by_week_no.empty()) return year;
  return year - (day < first_week(year)) + (day >= first_week(year + 1));
}

Day RuleExpansion::period_start(std::int64_t period) const {
  if (rule_.frequency == Frequency::weekly) return Day(period * 7 + rule_.week_start + 1);
  if (rule_.frequency == Frequency::monthly) return first_of_month(period);
  return rule_.by_week_no.empty() ? first_of_year(period) : first_week(period);
}

void RuleExpansion::walk_periods(LocalSeconds from, LocalSeconds to, const Take& take) {
  const auto base = period_of(day_of(start_));
  auto period = base + (period_of(day_of(from)) - base) / rule_.interval * rule_.interval;
  // The end of the search also keeps the calendar's arithmetic within its range.
  for (const auto end = period_of(day_of(to)); period <= end; period += rule_.interval) {
    const auto first = period_start(period);
    const auto last = period_start(period + 1);
    if (!rule_.by_set_pos.empty()) {
      collect_days(first, last);
      if (!take_positions(from, to, take)) return;
      continue;
    }
    collect_days(std::max(first, day_of(from)), std::min(last, day_of(to) + 1));
    for (auto day : days_)
      if (!take_times(day, from, to, take)) return;
  }
}

bool RuleExpansion::take_positions(LocalSeconds from, LocalSeconds to, const Take& take) const {
  for (auto index : positions_in(rule_.by_set_pos, days_.size() * times_.size())) {
    const auto moment = midnight_of(days_[index / times_.size()]) + times_[index % times_.size()];
    if (moment >= to) return false;
    if (moment >= from && !take(moment)) return false;
  }
  return true;
}

bool RuleExpansion::take_times(Day day, LocalSeconds from, LocalSeconds to,
                               const Take& take) const {
  const LocalSeconds midnight = midnight_of(day);
  const auto earliest = std::max<std::int64_t>(0, from - midnight);
  for (auto time = std::lower_bound(times_.begin(), times_.end(), earliest); time != times_.end();
       ++time) {
    if (midnight + *time >= to) return false;
    if (!take(midnight + *time)) return false;
  }
  return true;
}

// The hours, minutes or seconds of a day that recur. A unit that does not suit is left by a jump to
// the next hour, minute or second that does.
bool RuleExpansion::take_units(Day day, LocalSeconds from, LocalSeconds to,
                               const Take& take) const {
  const std::int64_t unit = kUnitSeconds[static_cast<int>(rule_.frequency)];
  const auto base = floor_div(start_.count(), unit);
  const auto midnight = midnight_of(day).count() / unit;
  const auto on_step = [&](std::int64_t seconds) {  // the first unit of the series from there on
    const auto at = midnight + ceil_div(seconds, unit);
    return at + floor_mod(base - at, rule_.interval);
  };
  const auto earliest =
      std::max<std::int64_t>(0, floor_div(from.count(), unit) * unit - midnight_of(day).count());
  for (auto at = on_step(earliest); at < midnight + kSecondsPerDay / unit;) {
    const int time = static_cast<int>((at - midnight) * unit);
    const int hour = time / 3600, minute = time / 60 % 60, second = time % 60;
    if (const int next = next_bit(hours_, hour); next != hour) {
      if (next > 23) return true;
      at = on_step(next * 3600);
    } else if (const int due = next_bit(minutes_, minute); unit <= 60 && due != minute) {
      at = on_step(hour * 3600 + std::min(due, 60) * 60);
    } else if (const int soon = next_bit(seconds_, second); unit == 1 && soon != second) {
      at = on_step(time - second + std::min(soon, 60));
    } else {
      for (int offset : times_) {
        const LocalSeconds moment(at * unit + offset);
        if (moment >= to) return false;
        if (moment >= from && !take(moment)) return false;
      }
      at += rule_.interval;
    }
  }
  return true;
}

void RuleExpansion::walk_days(LocalSeconds from, LocalSeconds to, const Take& take) {
  const bool daily = rule_.frequency == Frequency::daily;
  if (!daily && !times_can_match()) return;
  const auto start_day = day_of(start_);
  const auto first_day = day_of(from);
  const auto end_day = day_of(to - 1) + 1;
  const auto last = month_index(end_day - 1);
  for (auto month = month_index(first_day); month <= last; ++month) {
    auto bits = days_of_month(month);
    if (bits == 0) continue;
    const auto first = first_of_month(month);
    bits &= span_bits(first_day, end_day, first, month_length(month));
    for (; bits != 0; bits &= bits - 1) {
      const auto day = first + std::countr_zero(bits);
      if (daily && floor_mod(day - start_day, rule_.interval) != 0) continue;
      if (!(daily ? take_times(day, from, to, take) : take_units(day, from, to, take))) return;
    }
  }
}

void RuleExpansion::walk(LocalSeconds from, LocalSeconds to, const Take& take) {
  from = std::max({from, start_, kFirstRuleSecond});
  to = std::min(to, kEndOfRules);
  if (from >= to || times_.empty()) return;
  if (rule_.frequency > Frequency::daily)
    walk_periods(from, to, take);
  else
    walk_days(from, to, take);
}

}  // namespace orvello
