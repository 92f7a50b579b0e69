// vCalendar 1.0, the older form of the same thing.
#pragma once

#include <string>
#include <string_view>

#include "exchange/problem_list.h"

namespace orvello {

// A component in the words of iCalendar 2.0. Times without a Z and a TZID of their own are put into
// that zone; without one they stay local.
std::string component_from_vcalendar1(std::string_view text, int first_line,
                                      const std::string& zone, ProblemList& problems);

// A component of iCalendar 2.0 whose writer kept the older form's quoted-printable values, without.
std::string without_quoted_printable(std::string_view text);

// A rule of the older grammar ("W1 MO TU #10", "MD1 15+ 20211231T000000") in the newer one; empty
// when it cannot be read.
std::string rule_from_vcalendar1(std::string_view rule);

}  // namespace orvello
