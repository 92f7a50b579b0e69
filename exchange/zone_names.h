// Names of time zones as other programs write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/content_line.h"

namespace orvello {

// What a TZID says: without the quotes, backslashes and blanks that programs put around and into
// it, so that a parameter and the text of a definition meet in every way to write them.
std::string tzid_text(std::string_view written);
// The same of a property's TZID parameter; nothing without one, or with an empty one.
std::optional<std::string> tzid_of(const Property& property);

// The database's names to look for, best first: the name itself, what is left of it behind each
// slash of a prefix, the place that a mail program's or Windows' name stands for, the towns of a
// name such as "(UTC+01:00) Amsterdam, Berlin". A handful, however long the text.
std::vector<std::string> zone_name_candidates(std::string_view tzid);

// The offset that such a name tells, in seconds: "(GMT-05:00) Lima", "UTC+1", "GMT+0530".
std::optional<int> offset_in_name(std::string_view tzid);

// "UTC", "GMT", "Etc/UTC", "Z" ...
bool is_utc_name(std::string_view tzid);

}  // namespace orvello
