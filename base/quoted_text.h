// Text between quotation marks, on one line of a file that a person may read and edit.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"

namespace orvello {

// In UTF-8, with \" and \\ and \n; whatever UTF-8 or a line cannot hold is written as \uXXXX, lone
// surrogates too.
std::string quoted(TextView text);

// The quoted text at the start of `rest`, which is moved behind it.
std::optional<Text> take_quoted(std::string_view& rest);

}  // namespace orvello
