// The direction that a text is read in: that of its first letter which has one.
#pragma once

#include <optional>

#include "base/text.h"

namespace orvello {

enum class Reading { left_to_right, right_to_left };

std::optional<Reading> reading_of(TextView text);  // nothing: digits and signs alone

// A line that was broken off a paragraph, read as that is: where it begins with a letter of the
// other direction, or with none, an unseen mark is put before it.
Text line_of(TextView paragraph, TextView line);

}  // namespace orvello
