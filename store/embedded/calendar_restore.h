// A copy takes the calendar's place.
#pragma once

#include <string>

#include "base/result.h"

namespace orvello {

// False, too, when the file cannot be opened as a database: then nobody uses it as one.
bool is_in_use(const std::string& calendar);

// The calendar is a copy of `copy` from now on, and the file that was in its place is kept under
// the first free name that begins with `kept` ("calendar-replaced-2026-11-06"; the value is the
// whole path, empty when there was no file). One step: a process that dies leaves the one or the
// other. Nobody may have the calendar open. Fails with the reason; the calendar is as it was then.
Result<std::string> replace_calendar(const std::string& calendar, const std::string& copy,
                                     const std::string& kept);

}  // namespace orvello
