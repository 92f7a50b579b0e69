// Choosing a font in which texts fit the room they have.
#pragma once

#include <vector>

#include "draw/screen_layout.h"

namespace orvello {

// The largest size from `points` down, of this weight, in which each of the texts fits into
// `width`; the smallest size tried is 5 points.
FontSpec fitting_font(Canvas& canvas, const std::vector<Text>& texts, int width, int points,
                      int weight, const ScreenLayout& layout);

}  // namespace orvello
