#include "hosts/win32/builtin_zones.h"

#include <algorithm>

#include "calendar/zone_aliases.h"
#include "calendar/zone_file.h"

namespace orvello {
namespace {

std::string_view bytes_of_zone(std::string_view name) {
  const BuiltinZone* const end = kBuiltinZones + kBuiltinZoneCount;
  const BuiltinZone* const found = std::lower_bound(
      kBuiltinZones, end, name,
      [](const BuiltinZone& one, std::string_view wanted) { return one.name < wanted; });
  if (found == end || found->name != name) return {};
  return {kBuiltinZoneBytes + found->at, found->size};
}

// How its clocks change from now on.
std::string_view last_rule(std::string_view zone) {
  std::string_view bytes = bytes_of_zone(zone);
  if (bytes.empty()) return {};
  bytes.remove_suffix(1);
  return bytes.substr(bytes.rfind('\n') + 1);
}

}  // namespace

std::optional<Zone> builtin_zone(std::string_view name) {
  const std::string_view bytes = bytes_of_zone(name);
  return bytes.empty() ? std::nullopt : zone_from_file(std::string(name), bytes);
}

std::string zone_of_system_name(std::string_view system_name, std::string_view country) {
  const auto place = std::find_if(std::begin(kZoneAliases), std::end(kZoneAliases),
                                  [&](const ZoneAlias& row) { return row.name == system_name; });
  if (place == std::end(kZoneAliases))
    return std::string(bytes_of_zone(system_name).empty() ? "" : system_name);
  // One name stands for the towns of many countries whose clocks go alike.
  const char* own = nullptr;
  for (std::size_t i = 0; i < kZoneOfCountryCount; ++i) {
    const ZoneOfCountry& row = kZonesOfCountries[i];
    if (row.country != country || last_rule(row.zone) != last_rule(place->place)) continue;
    if (row.zone == place->place) return row.zone;
    if (!own) own = row.zone;
  }
  return own ? own : std::string(place->place);
}

}  // namespace orvello
