#include "hosts/win32/win32_clock.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "base/text.h"
#include "calendar/posix_zone.h"
#include "calendar/zone_file.h"
#include "hosts/win32/builtin_zones.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

// This system counts tenths of microseconds from the beginning of 1601.
constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr UtcSeconds kFirstMoment = utc_at_offset(midnight_of(Day(-109205)), 0);

std::int64_t ticks_now() {
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  return static_cast<std::int64_t>(std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime);
}

SystemTime parts_of_moment(LocalSeconds moment) {
  SystemTime time = civil_of(day_of(moment));
  const std::int64_t rest = second_of_day(moment);
  time.hour = static_cast<int>(rest / 3600);
  time.minute = static_cast<int>(rest / 60 % 60);
  time.second = static_cast<int>(rest % 60);
  return time;
}

PosixZone::YearDay day_of_change(const SYSTEMTIME& change) {
  PosixZone::YearDay day{};
  day.kind = PosixZone::YearDay::Kind::weekday_of_month;
  day.month = change.wMonth, day.week = change.wDay, day.weekday = change.wDayOfWeek;
  day.time = change.wHour * 3600 + change.wMinute * 60 + change.wSecond;
  return day;
}

std::string country_of_person() {
  wchar_t country[8] = {};
  const GEOID place = GetUserGeoID(GEOCLASS_NATION);
  if (place == GEOID_NOT_AVAILABLE || GetGeoInfoW(place, GEO_ISO2, country, 8, 0) == 0) return {};
  return to_utf8(from_wide(country));
}

// Both ways to count from now on over a year, so that a zone that only happens to agree is found.
bool same_time_this_year(const Zone& one, const Zone& other) {
  constexpr int kWeeks = 53;
  const UtcSeconds now = kFirstMoment + ticks_now() / kTicksPerSecond;
  for (int week = 0; week < kWeeks; ++week) {
    const UtcSeconds at = now + week * 7 * kSecondsPerDay;
    if (one.from_utc(at) != other.from_utc(at)) return false;
  }
  return true;
}

}  // namespace

Zone zone_of_rules(const TIME_ZONE_INFORMATION& rules) {
  PosixZone zone;
  zone.standard = static_cast<int>(-(rules.Bias + rules.StandardBias) * 60);
  // A year would make it one change for ever.
  if (rules.DaylightDate.wMonth != 0 && rules.StandardDate.wMonth != 0 &&
      rules.DaylightDate.wYear == 0 && rules.StandardDate.wYear == 0)
    zone.summer = {static_cast<int>(-(rules.Bias + rules.DaylightBias) * 60),
                   day_of_change(rules.DaylightDate), day_of_change(rules.StandardDate)};
  auto observances = zone.observances_after(kFirstMoment);
  if (observances.empty())
    observances.push_back(
        {local_at_offset(kFirstMoment, 0), zone.standard, zone.standard, std::nullopt, {}});
  return Zone("", std::move(observances));
}

DYNAMIC_TIME_ZONE_INFORMATION machine_zone() {
  DYNAMIC_TIME_ZONE_INFORMATION told{};
  if (GetDynamicTimeZoneInformation(&told) == TIME_ZONE_ID_INVALID) return {};
  return told;
}

Zone device_zone(const DYNAMIC_TIME_ZONE_INFORMATION& told) {
  TIME_ZONE_INFORMATION rules{};
  rules.Bias = told.Bias;
  rules.StandardBias = told.StandardBias, rules.StandardDate = told.StandardDate;
  rules.DaylightBias = told.DaylightBias, rules.DaylightDate = told.DaylightDate;
  Zone own = zone_of_rules(rules);
  const std::string name =
      zone_of_system_name(to_utf8(from_wide(told.TimeZoneKeyName)), country_of_person());
  const auto known = builtin_zone(name);
  // A machine whose clock does not change in summer, or whose rules are older or newer than the
  // database, shows its own time everywhere else.
  return known && same_time_this_year(*known, own) ? *known : own;
}

Win32Clock::Win32Clock(std::optional<LocalSeconds> fixed, ZoneSource source)
    : fixed_(fixed), source_(std::move(source)) {
  follow_machine();
}

// Asked where somebody looks at the clock, and not for each of thousands of moments.
void Win32Clock::follow_machine() const {
  if (!source_) return;
  const DYNAMIC_TIME_ZONE_INFORMATION told = source_();
  const std::lock_guard lock(lock_);
  const bool same =
      told.Bias == told_.Bias && told.StandardBias == told_.StandardBias &&
      told.DaylightBias == told_.DaylightBias &&
      std::memcmp(&told.StandardDate, &told_.StandardDate, sizeof told.StandardDate) == 0 &&
      std::memcmp(&told.DaylightDate, &told_.DaylightDate, sizeof told.DaylightDate) == 0 &&
      std::wcscmp(told.TimeZoneKeyName, told_.TimeZoneKeyName) == 0;
  if (zone_ && same) return;
  told_ = told;
  zone_ = std::make_shared<const Zone>(device_zone(told));
}

std::shared_ptr<const Zone> Win32Clock::zone() const {
  const std::lock_guard lock(lock_);
  return zone_;
}

std::string Win32Clock::zone_name() const {
  follow_machine();
  return zone()->name();
}

SystemTime Win32Clock::local_time() const {
  follow_machine();
  if (fixed_) return parts_of_moment(*fixed_);
  const std::int64_t now = ticks_now();
  SystemTime time = parts_of_moment(to_local(kFirstMoment + now / kTicksPerSecond));
  time.milliseconds = static_cast<int>(now % kTicksPerSecond / (kTicksPerSecond / 1000));
  return time;
}

UtcSeconds Win32Clock::utc_now() const {
  return fixed_ ? to_utc(*fixed_) : kFirstMoment + ticks_now() / kTicksPerSecond;
}

std::optional<Zone> Win32Clock::known_zone(std::string_view name) const {
  return is_zone_name(name) ? builtin_zone(name) : std::nullopt;
}

}  // namespace orvello
