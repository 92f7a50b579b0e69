// Names of time zones as other programs write them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvello {

// The places to look for a zone of this name, best first: the name itself, what is left of it
// behind each slash of a prefix, and the place that a Windows zone name stands for.
std::vector<std::string> zone_name_candidates(std::string_view tzid);

// "UTC", "GMT", "Etc/UTC", "Z" ...
bool is_utc_name(std::string_view tzid);

}  // namespace orvello
