// Texts as they are compared where neither letter case nor accents matter: "Théo" and "theo",
// "Straße" and "STRASSE", "ИЮЛЬ" and "июль", in any way that a text may be composed.
#pragma once

#include <string>

#include "base/text.h"

namespace orvello {

// Appends the text in UTF-8: small letters without marks, digits as 0 to 9, ligatures and wide or
// narrow forms as the letters they stand for. Blanks, line breaks and what is not seen become one
// blank between words.
void append_folded(std::string& out, TextView text);
std::string folded(TextView text);

}  // namespace orvello
