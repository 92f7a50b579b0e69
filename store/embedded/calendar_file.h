// The calendar's file before SQLite sees it.
#pragma once

#include <string>

namespace orvello {

// Why the file must not be opened, as a sentence that names it: foreign, damaged, of a newer
// format. Empty: it may be. Writes nothing, and does not wait.
std::string fault_in_calendar_file(const std::string& path);

// The same for who will write: makes a missing file, readable by its owner alone, and brings one of
// an older format to this one.
std::string make_calendar_file_ready(const std::string& path);

}  // namespace orvello
