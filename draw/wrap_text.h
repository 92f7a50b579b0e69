// Breaking text into lines by measuring it, so that what is drawn is what was measured.
#pragma once

#include <vector>

#include "ports/canvas.h"

namespace orvello {

// How many UTF-16 units of the text's start fit into the width, never half of a surrogate pair and
// at least one character.
std::size_t fitting_units(Canvas& canvas, TextView text, const FontSpec& font, int width);

// Lines no wider than `width`, broken at blanks where there are any and at line ends always.
std::vector<Text> word_wrapped(Canvas& canvas, TextView text, const FontSpec& font, int width);

}  // namespace orvello
