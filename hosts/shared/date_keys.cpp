#include "hosts/shared/date_keys.h"

#include <algorithm>

#include "ports/messages.h"

namespace orvello {
namespace {

// Of a month that may lie outside of its year: the same day, or the last one that it has.
MonthDayYear in_month(int year, int month, int day) {
  const Day first = day_of(year, month, 1);
  const int days = day_of(year, month + 1, 1) - first;
  MonthDayYear moved = triple_of(first);
  moved.day = std::min(day, days);
  return moved;
}

}  // namespace

bool is_real_date(const MonthDayYear& date) {
  return date.year > 0 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
         in_month(date.year, date.month, date.day).day == date.day;
}

MonthDayYear within_dates(const MonthDayYear& date) {
  if (date.year < 1601) return {1, 1, 1601};
  return date.year > 9999 ? MonthDayYear{12, 31, 9999} : date;
}

std::optional<MonthDayYear> date_after_key(const MonthDayYear& date, std::uint32_t key,
                                           bool by_years) {
  const auto by_days = [&](int days) {
    return within_dates(triple_of(day_of(date.year, date.month, date.day + days)));
  };
  const auto by_months = [&](int months) {
    return within_dates(in_month(date.year, date.month + months, date.day));
  };
  switch (key) {
    case kKeyLeft:
      return by_days(-1);
    case kKeyRight:
      return by_days(1);
    case kKeyUp:
      return by_days(-7);
    case kKeyDown:
      return by_days(7);
    case kKeyPageUp:
      return by_months(by_years ? -12 : -1);
    case kKeyPageDown:
      return by_months(by_years ? 12 : 1);
    case kKeyHome:
      return MonthDayYear{date.month, 1, date.year};
    case kKeyEnd:
      return in_month(date.year, date.month, 31);
    default:
      return {};
  }
}

}  // namespace orvello
