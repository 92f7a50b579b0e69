// Keeping text readable on colours that a person has chosen.
#pragma once

#include "base/image.h"

namespace orvello {

// The ratio of two colours' luminances, 1 to 21, as the web's accessibility guidelines define it.
double contrast(Color a, Color b);

// The text's colour, or black or white where it could hardly be read on the background.
Color readable_on(Color background, Color text);

bool is_dark(Color background);

// A mark's colour, drawn towards black or white as far as it takes to be told from the background.
inline constexpr double kMarkContrast = 3.0;
Color visible_on(Color background, Color mark, double least = kMarkContrast);

// A picture that was drawn for light paper, with its dark parts lighter on a dark background: an
// outline is helped a little, a mark that has nothing else is seen by them alone.
inline constexpr double kOutlineContrast = 1.8;
Image visible_on(Color background, Image picture, double least = kOutlineContrast);

// The same for texts, of which the web's guidelines ask more.
inline constexpr double kTextContrast = 4.5;
inline Color legible_on(Color background, Color text) {
  return visible_on(background, text, kTextContrast);
}

// A colour between two: `share` of 256 parts of the second.
Color mixed(Color a, Color b, int share);

}  // namespace orvello
