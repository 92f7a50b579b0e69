#include "hosts/linux/system_clock.h"

#include <unistd.h>

#include <array>
#include <cctype>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <ctime>

#include "hosts/linux/zone_files.h"

namespace orvello {
namespace {

constexpr UtcSeconds kUnixEpoch = utc_at_offset(midnight_of(Day(25569)), 0);  // 1 January 1970

int offset_at(UtcSeconds utc) {
  const std::time_t time = static_cast<std::time_t>(utc - kUnixEpoch);
  std::tm local{};
  ::localtime_r(&time, &local);
  return static_cast<int>(local.tm_gmtoff);
}

SystemTime broken_down(LocalSeconds moment) {
  SystemTime time = civil_of(day_of(moment));
  const std::int64_t rest = second_of_day(moment);
  time.hour = static_cast<int>(rest / 3600);
  time.minute = static_cast<int>(rest / 60 % 60);
  time.second = static_cast<int>(rest % 60);
  return time;
}

}  // namespace

SystemClock::SystemClock(std::optional<LocalSeconds> fixed)
    : fixed_(fixed), zone_folders_(zone_folders(std::getenv("TZDIR"))) {
  ::tzset();
}

SystemTime SystemClock::local_time() const {
  if (fixed_) return broken_down(*fixed_);
  using namespace std::chrono;
  const auto now = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
  SystemTime time = broken_down(to_local(kUnixEpoch + now / 1000));
  time.milliseconds = static_cast<int>(now % 1000);
  return time;
}

UtcSeconds SystemClock::utc_now() const {
  if (fixed_) return to_utc(*fixed_);
  return kUnixEpoch + static_cast<std::int64_t>(std::time(nullptr));
}

std::string SystemClock::zone_name() const {
  std::array<char, PATH_MAX> target{};
  const ssize_t length = ::readlink("/etc/localtime", target.data(), target.size() - 1);
  return zone_name_from(std::getenv("TZ"), length > 0 ? target.data() : "");
}

LocalSeconds SystemClock::to_local(UtcSeconds utc) const {
  return local_at_offset(utc, offset_at(utc));
}

// A time that occurs twice means the first one, and a skipped one is read with the offset before
// the gap: both are the offset of the day before, unless the change lies behind already.
UtcSeconds SystemClock::to_utc(LocalSeconds local) const {
  const UtcSeconds about = utc_at_offset(local, 0);
  const UtcSeconds before = utc_at_offset(local, offset_at(about - kSecondsPerDay));
  if (to_local(before) == local) return before;
  const UtcSeconds after = utc_at_offset(local, offset_at(about + kSecondsPerDay));
  return to_local(after) == local ? after : before;
}

std::optional<Zone> SystemClock::known_zone(std::string_view name) const {
  return read_zone(zone_folders_, name);
}

std::string zone_name_from(const char* tz_variable, const std::string& link_target) {
  static const std::string kFolder = "zoneinfo/";
  const auto below_folder = [](std::string path) -> std::string {
    const std::size_t place = path.rfind(kFolder);
    if (place == std::string::npos) return {};
    path.erase(0, place + kFolder.size());
    for (const char* variant : {"posix/", "right/"})
      if (path.rfind(variant, 0) == 0) path.erase(0, 6);
    return path;
  };
  if (!tz_variable) return below_folder(link_target);
  std::string name = tz_variable;
  if (!name.empty() && name.front() == ':') name.erase(0, 1);
  if (name.empty()) return "UTC";  // an empty variable means Coordinated Universal Time
  if (name.front() == '/') return below_folder(name);
  // A rule such as "CET-1CEST,M3.5.0,M10.5.0/3" names no zone. Names with digits have a region.
  const bool has_region =
      name.find('/') != std::string::npos && name.find(',') == std::string::npos;
  for (char c : name)
    if ((std::isdigit(static_cast<unsigned char>(c)) && !has_region) || c == ',' || c == '<')
      return {};
  return name;
}

}  // namespace orvello
