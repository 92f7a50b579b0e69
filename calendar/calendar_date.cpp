#include "calendar/calendar_date.h"

#include <algorithm>
#include <cmath>

namespace orvello {
namespace {

constexpr std::int64_t kDaysPerEra = 146097;  // 400 Gregorian years
constexpr std::int64_t kEpochShift = 693899;  // days from 1 March of year 0 to 30 December 1899
constexpr double kMostDays = 1e8;             // far outside any date, far inside the integers

}  // namespace

Day day_of(int year, int month, int day) {
  const std::int64_t months = std::int64_t{year} * 12 + month - 1;
  // Years run from March, so that the leap day is a year's last.
  const std::int64_t march_months = months - 2;
  const std::int64_t y = floor_div(march_months, 12);
  const std::int64_t m = march_months - y * 12;
  const std::int64_t era = floor_div(y, 400);
  const std::int64_t year_of_era = y - era * 400;
  const std::int64_t first_of_month = (153 * m + 2) / 5;
  const std::int64_t day_of_era =
      year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + first_of_month;
  return Day(era * kDaysPerEra + day_of_era + day - 1 - kEpochShift);
}

SystemTime civil_of(Day day) {
  const std::int64_t z = day.number() + kEpochShift;
  const std::int64_t era = floor_div(z, kDaysPerEra);
  const std::int64_t doe = z - era * kDaysPerEra;
  const std::int64_t year_of_era = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const std::int64_t doy = doe - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t m = (5 * doy + 2) / 153;
  SystemTime time;
  time.day = static_cast<int>(doy - (153 * m + 2) / 5 + 1);
  time.month = static_cast<int>(m < 10 ? m + 3 : m - 9);
  time.year = static_cast<int>(era * 400 + year_of_era + (time.month <= 2));
  time.day_of_week = static_cast<int>(z + 3 - floor_div(z + 3, 7) * 7);
  return time;
}

bool SystemTimeToVariantTime(const SystemTime& time, CalendarDate& date) {
  const bool bare_time = time.month == 0 || time.day == 0;
  const Day day = bare_time ? Day() : day_of(time.year, time.month, time.day);
  // Milliseconds are dropped, not rounded: the last instant of a day stays in that day.
  date = to_calendar_date(midnight_of(day) + std::int64_t{time.hour} * 3600 +
                          std::int64_t{time.minute} * 60 + time.second);
  return true;
}

bool VariantTimeToSystemTime(CalendarDate date, SystemTime& time) {
  if (!(std::fabs(date) < kMostDays)) return false;
  const LocalSeconds moment = to_seconds(date);
  const auto second = static_cast<int>(second_of_day(moment));
  SystemTime result = civil_of(day_of(moment));
  if (result.year < 100 || result.year > 9999) return false;
  result.hour = second / 3600;
  result.minute = second / 60 % 60;
  result.second = second % 60;
  time = result;
  return true;
}

Day whole_day(CalendarDate date) {
  if (std::isnan(date)) return {};
  return Day(static_cast<std::int32_t>(std::clamp(date, -kMostDays, kMostDays)));  // toward zero
}

double time_of_day(CalendarDate date) {
  return std::isfinite(date) ? std::fabs(date - std::trunc(date)) : 0;
}

CalendarDate joined(Day day, double time_of_day) {
  return day < Day() ? day.number() - time_of_day : day.number() + time_of_day;
}

bool is_before(CalendarDate date, CalendarDate other) {
  return to_seconds(date) < to_seconds(other);
}

// The dates between -1 and 0 repeat those between 0 and 1.
LocalSeconds to_seconds(CalendarDate date) {
  const double bounded = std::isnan(date) ? 0 : std::clamp(date, -kMostDays, kMostDays);
  return midnight_of(whole_day(bounded)) +
         std::llround(time_of_day(bounded) * static_cast<double>(kSecondsPerDay));
}

CalendarDate to_calendar_date(LocalSeconds moment) {
  return joined(day_of(moment), static_cast<double>(second_of_day(moment)) / kSecondsPerDay);
}

CalendarDate to_calendar_date(Day day) { return day.number(); }

}  // namespace orvello
