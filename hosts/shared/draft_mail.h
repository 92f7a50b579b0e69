// A mail that has not been sent, as a file that a mail program opens to be looked at and sent.
#pragma once

#include <string>
#include <vector>

#include "base/text.h"

namespace orvello {

// With the calendar attached as NAME.ics. Addresses that could be taken for something else in a
// mail's head come back in `left_out`.
std::string draft_mail(TextView subject, const std::string& name, const std::string& calendar,
                       const std::vector<std::string>& addresses,
                       std::vector<std::string>& left_out);

}  // namespace orvello
