#include "calendar/rule_series.h"

#include <algorithm>

#include "calendar/rule_days.h"

namespace orvello {
namespace {

constexpr std::uint32_t kDaysOfEveryMonth = 0x0FFFFFFF;

int weekday_mask(const std::vector<RuleDay>& days) {
  int mask = 0;
  for (const RuleDay& day : days) mask |= 1 << day.weekday;
  return mask;
}

bool has_ordinal(const Rule& rule) {
  return std::any_of(rule.by_day.begin(), rule.by_day.end(),
                     [](const RuleDay& day) { return day.ordinal != 0; });
}

// Chooses the one day of a month, or returns false where a month may hold several.
bool choose_month_day(const Rule& rule, int start_day, PlainSeries& series) {
  const auto& days = rule.by_month_day;
  if (days.size() == 1 && days[0] < 0 && rule.by_day.empty() && rule.by_set_pos.empty()) {
    series.nth = days[0];
    return true;
  }
  if (!days.empty()) series.month_days = 0;
  for (int day : days) {
    if (day < 0) return false;
    series.month_days |= 1u << (day - 1);
  }
  if (!rule.by_day.empty()) series.mask = weekday_mask(rule.by_day);
  if (has_ordinal(rule)) {
    series.nth = rule.by_day[0].ordinal;
    return rule.by_day.size() == 1 && days.empty() && rule.by_set_pos.empty();
  }
  if (!rule.by_set_pos.empty()) {
    series.nth = rule.by_set_pos[0];
    return rule.by_set_pos.size() == 1 && !(days.empty() && rule.by_day.empty());
  }
  if (days.empty() && rule.by_day.empty()) series.month_days = 1u << (start_day - 1);
  return std::has_single_bit(series.month_days);
}

std::uint32_t chosen_day(const PlainSeries& series, std::int64_t month, Day first) {
  const auto bits =
      weekday_bits(series.mask, weekday_of(first), month_length(month)) & series.month_days;
  return nth_bit(bits, series.nth);
}

// True where every month has its instance, so that a count can be multiplied out.
bool never_skips(const PlainSeries& series) {
  if (series.mask == 127) return nth_bit(series.month_days & kDaysOfEveryMonth, series.nth) != 0;
  return series.month_days == 0x7FFFFFFF &&
         std::abs(series.nth) <= 4 * std::popcount(static_cast<unsigned>(series.mask));
}

int week_bits(const PlainSeries& series) {  // bit 0 is the first day of the series' week
  const int twice = series.mask | series.mask << 7;
  return twice >> series.week_start & 127;
}

void append_weeks(const PlainSeries& series, LocalSeconds from, LocalSeconds to,
                  std::vector<LocalSeconds>& out) {
  const Day start_day = day_of(series.start);
  const Day base = week_of(start_day, series.week_start);
  // In seconds: an interval may be so long that its weeks lie beyond all days.
  const std::int64_t stride = 7 * series.step * kSecondsPerDay;
  const std::int64_t time = series.start - midnight_of(start_day);
  const int bits = week_bits(series);
  LocalSeconds week = midnight_of(base);
  for (week += floor_div(from - week, stride) * stride; week < to; week += stride) {
    for (int rest = bits; rest != 0; rest &= rest - 1) {
      const int day = std::countr_zero(static_cast<unsigned>(rest));
      const LocalSeconds moment = week + day * kSecondsPerDay + time;
      if (moment >= to) return;
      if (moment >= from) out.push_back(moment);
    }
  }
}

// Calls take(moment) for the instances from month `month` on until it returns false.
template <typename Take>
void walk_months(const PlainSeries& series, std::int64_t month, LocalSeconds to, Take take) {
  const std::int64_t time = second_of_day(series.start);
  for (;; month += series.step) {
    if (month >= 12 * 4501) return;
    const Day first = first_of_month(month);
    if (midnight_of(first) >= to) return;
    const auto day = chosen_day(series, month, first);
    if (day == 0) continue;
    const LocalSeconds moment = midnight_of(first + std::countr_zero(day)) + time;
    if (moment >= to || !take(moment)) return;
  }
}

std::int64_t first_month_from(const PlainSeries& series, LocalSeconds from) {
  const auto ahead = month_index(day_of(from)) - series.first_month;
  return series.first_month + std::max<std::int64_t>(0, ceil_div(ahead, series.step)) * series.step;
}

LocalSeconds end_of_weeks(const PlainSeries& series, std::int64_t left) {
  const Day start_day = day_of(series.start);
  const Day base = week_of(start_day, series.week_start);
  const auto bits = static_cast<std::uint32_t>(week_bits(series));
  const auto first_week = bits & ~((2u << (start_day - base)) - 1);
  std::int64_t week = 0;
  std::uint32_t day = nth_bit(first_week, static_cast<int>(std::min<std::int64_t>(left, 8)));
  if (left > std::popcount(first_week)) {
    left -= std::popcount(first_week) + 1;
    week = 1 + left / std::popcount(bits);
    day = nth_bit(bits, 1 + static_cast<int>(left % std::popcount(bits)));
  }
  return midnight_of(base) + (week * series.step * 7 + std::countr_zero(day)) * kSecondsPerDay +
         second_of_day(series.start);
}

LocalSeconds end_of_months(const PlainSeries& series, std::int64_t left) {
  std::int64_t month = series.first_month;
  LocalSeconds end = kEndOfRules;
  walk_months(series, month, kEndOfRules, [&](LocalSeconds moment) {
    if (moment > series.start && --left <= 0) {
      end = moment;
      return false;
    }
    if (moment <= series.start || !never_skips(series)) return true;
    month = month_index(day_of(moment)) + left * series.step;  // all the others at a leap
    end = moment;
    return false;
  });
  if (left <= 0 || end == kEndOfRules) return end;
  end = kEndOfRules;
  walk_months(series, month, kEndOfRules, [&](LocalSeconds moment) {
    end = moment;
    return false;
  });
  return end;
}

}  // namespace

PlainSeries plain_series(const Rule& rule, LocalSeconds start) {
  using Kind = PlainSeries::Kind;
  PlainSeries series;
  if (!rule.by_second.empty() || !rule.by_minute.empty() || !rule.by_hour.empty() ||
      !rule.by_year_day.empty() || !rule.by_week_no.empty())
    return series;
  series.start = start;
  series.step = rule.interval;
  series.week_start = rule.week_start;
  series.count = rule.count;
  if (rule.until) series.until = *rule.until;
  const bool by_weekday_only =
      rule.by_month.empty() && rule.by_month_day.empty() && rule.by_set_pos.empty();

  if (rule.frequency == Frequency::weekly ||
      (rule.frequency == Frequency::daily && rule.interval == 1 && !rule.by_day.empty())) {
    if (!by_weekday_only) return series;
    series.mask = rule.by_day.empty() ? 1 << weekday_of(day_of(start)) : weekday_mask(rule.by_day);
    series.kind = Kind::weeks;
  } else if (rule.frequency <= Frequency::daily) {
    if (!by_weekday_only || !rule.by_day.empty()) return series;
    constexpr int kUnits[] = {1, 60, 3600, static_cast<int>(kSecondsPerDay)};
    series.step *= kUnits[static_cast<int>(rule.frequency)];
    series.kind = Kind::steps;
  } else {
    const auto civil = civil_of(day_of(start));
    int month = civil.month;
    if (rule.frequency == Frequency::yearly) {
      if (rule.by_month.size() > 1) return series;
      if (rule.by_month.empty() && !(rule.by_day.empty() && rule.by_month_day.empty()))
        return series;
      if (!rule.by_month.empty()) month = rule.by_month[0];
      series.step *= 12;
    } else if (!rule.by_month.empty()) {
      return series;
    }
    series.first_month = civil.year * 12 + month - 1;
    if (choose_month_day(rule, civil.day, series)) series.kind = Kind::months;
  }
  return series;
}

bool suits(const PlainSeries& series, Day day) {
  if (series.kind == PlainSeries::Kind::weeks) {
    const auto weeks =
        (week_of(day, series.week_start) - week_of(day_of(series.start), series.week_start)) / 7;
    return (series.mask >> weekday_of(day) & 1) && weeks % series.step == 0;
  }
  const auto month = month_index(day);
  const auto first = first_of_month(month);
  return (month - series.first_month) % series.step == 0 &&
         chosen_day(series, month, first) == 1u << (day - first);
}

LocalSeconds counted_end(const PlainSeries& series) {
  const std::int64_t left = series.count - 1;
  if (left <= 0) return series.start;
  // So many that their end lies past the calendar (and perhaps past the integers): a week has at
  // most seven instances, and the calendar fewer than kMostDays days.
  constexpr std::int64_t kMostDays = 1'700'000;
  const std::int64_t shortest = series.kind == PlainSeries::Kind::steps ? kSecondsPerDay : 1;
  if (left / 7 > kMostDays * shortest / series.step) return kEndOfRules;
  if (series.kind == PlainSeries::Kind::steps) return series.start + left * series.step;
  if (series.kind == PlainSeries::Kind::weeks) return end_of_weeks(series, left);
  return end_of_months(series, left);
}

void append_series(const PlainSeries& series, LocalSeconds from, LocalSeconds to,
                   std::vector<LocalSeconds>& out) {
  from = std::max({from, series.start + 1, kFirstRuleSecond});
  to = std::min({to, series.until + 1, kEndOfRules});
  if (from >= to) return;
  if (series.count > 0) to = std::min(to, counted_end(series) + 1);
  if (from >= to) return;
  if (series.kind == PlainSeries::Kind::steps) {
    const auto skipped = ceil_div(from - series.start, series.step);
    for (auto at = series.start + skipped * series.step; at < to; at += series.step)
      out.push_back(at);
  } else if (series.kind == PlainSeries::Kind::weeks) {
    append_weeks(series, from, to, out);
  } else {
    walk_months(series, first_month_from(series, from), to, [&](LocalSeconds moment) {
      if (moment >= from) out.push_back(moment);
      return true;
    });
  }
}

}  // namespace orvello
