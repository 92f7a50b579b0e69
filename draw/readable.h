// Keeping text readable on colours that a person has chosen.
#pragma once

#include "base/color.h"

namespace orvello {

// The ratio of two colours' luminances, 1 to 21, as the web's accessibility guidelines define it.
double contrast(Color a, Color b);

// The text's colour, or black or white where it could hardly be read on the background.
Color readable_on(Color background, Color text);

// A colour between two: `share` of 256 parts of the second.
Color mixed(Color a, Color b, int share);

}  // namespace orvello
