// The files that somebody means who names files and folders to import.
#pragma once

#include <string>
#include <vector>

#include "base/result.h"

namespace orvello {

// A file stays as it is named, whatever it is. Of a folder, and those in it, come the calendar and
// contact files (.ics, .ical, .vcs, .vcf), by name. Fails for a folder that cannot be read or has
// none, with a sentence that names it.
Result<std::vector<std::string>> calendar_files(const std::vector<std::string>& paths);

}  // namespace orvello
