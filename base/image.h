// A picture as plain pixels. Icons, glyphs and arrows are images with magenta standing for
// "transparent".
#pragma once

#include <vector>

#include "base/color.h"
#include "base/geometry.h"

namespace orvello {

struct Image {
  int width = 0;
  int height = 0;
  std::vector<Color> pixels;  // row by row, 0x00BBGGRR

  bool empty() const { return width <= 0 || height <= 0; }
  Color at(int x, int y) const { return pixels[static_cast<std::size_t>(y) * width + x]; }
  friend bool operator==(const Image&, const Image&) = default;
};

}  // namespace orvello
