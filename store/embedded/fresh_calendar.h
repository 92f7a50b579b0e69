// A calendar file from its birth: an empty one, or one with everything that a file of an older
// format holds. It takes its name when it is whole, so that a process that dies in between leaves
// no half of one, and a file without content is never taken for a new calendar.
#pragma once

#include <string>

namespace orvello {

// Answer with nothing when the name stands for a calendar of this format, also by somebody else's
// doing; else with the reason as a sentence, and what was there is as it was.
std::string create_calendar_file(const std::string& path);
// Holds other processes off meanwhile.
std::string upgrade_calendar_file(const std::string& path);

}  // namespace orvello
