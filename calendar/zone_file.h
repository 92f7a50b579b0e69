// Compiled files of the tz database, as systems have them below /usr/share/zoneinfo (RFC 8536).
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "calendar/zone.h"

namespace orvello {

// The zone that a file's bytes describe; nothing for any other file, and for one that counts leap
// seconds.
std::optional<Zone> zone_from_file(std::string name, std::string_view bytes);

// Whether a zone of the database may have this name, "Europe/Berlin" or "Etc/GMT+5": nothing that
// leads to other files. Names of what lies beside the zones are refused, too.
bool is_zone_name(std::string_view text);

}  // namespace orvello
