// The system's time-zone database: compiled files in folders.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/zone.h"

namespace orvello {

// Where it may be, best first: the variable TZDIR (null: not set), then the usual places.
std::vector<std::string> zone_folders(const char* tzdir_variable);

// The zone of that name, from the first folder that has it.
std::optional<Zone> read_zone(const std::vector<std::string>& folders, std::string_view name);

}  // namespace orvello
