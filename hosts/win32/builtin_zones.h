// The time-zone database that is built into the program, since this system has another one.
// tools/pack_zones.py makes it of the building machine's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "calendar/zone.h"

namespace orvello {

struct BuiltinZone {
  const char* name;
  std::uint32_t at, size;  // in kBuiltinZoneBytes: a compiled file of the database
};
extern const BuiltinZone kBuiltinZones[];  // by name
extern const std::size_t kBuiltinZoneCount;
extern const char kBuiltinZoneBytes[];

struct ZoneOfCountry {
  const char* country;  // two letters
  const char* zone;
};
extern const ZoneOfCountry kZonesOfCountries[];
extern const std::size_t kZoneOfCountryCount;

std::optional<Zone> builtin_zone(std::string_view name);

// The zone that this system calls so ("W. Europe Standard Time"), as it is named in that country
// (two letters, or empty): "Europe/Vienna". Empty for an unknown name.
std::string zone_of_system_name(std::string_view system_name, std::string_view country);

}  // namespace orvello
