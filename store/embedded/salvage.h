// What can still be read of a damaged calendar, put into a new one.
#pragma once

#include <cstdint>
#include <string>

#include "base/result.h"

namespace orvello {

struct Salvaged {
  std::int64_t appointments = 0;
  std::int64_t doubtful = 0;  // of those, read from pages that changed on the disk
};

// Reads the pages of `damaged` by themselves, since nothing that leads to them can be relied on.
// `fresh` is a calendar without content, and in nobody's use. Nothing is written to `damaged`.
Result<Salvaged> salvage_calendar(const std::string& damaged, const std::string& fresh);

}  // namespace orvello
