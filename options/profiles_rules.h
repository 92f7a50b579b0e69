// Rules of the Profiles page.
#pragma once

#include <vector>

#include "base/text.h"

namespace orvello {

// Characters of a name that is new; one that is there already is taken whole.
inline constexpr std::size_t kNewProfileLength = 24;

// The profile that stands in the box: one of `names`, or up to `most` characters of what was typed,
// without blanks at the ends.
Text meant_profile(TextView standing, const std::vector<Text>& names, std::size_t most);

// Whether the box went from one row to the next, as an arrow key takes it, and not by a letter that
// was typed or taken back.
bool stepped_to_row(TextView before, TextView after, const std::vector<Text>& names);

// Where the labels that are wanted stand among all.
std::vector<int> rows_of_labels(const std::vector<Text>& labels, const std::vector<Text>& wanted);

}  // namespace orvello
