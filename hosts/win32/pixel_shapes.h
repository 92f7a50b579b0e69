// Filled shapes with smooth edges, in a block of pixels. Any thread.
#pragma once

#include <cstdint>
#include <vector>

#include "base/color.h"
#include "base/geometry.h"

namespace orvello {

struct PixelBlock {
  std::uint32_t* pixels = nullptr;  // rows of `size.width`, 0x00RRGGBB
  Size size;
};
constexpr std::uint32_t pixel_of(Color color) {
  return static_cast<std::uint32_t>((red_of(color) << 16) | (green_of(color) << 8) |
                                    blue_of(color));
}

struct ShapePoint {
  double x = 0, y = 0;  // corners between pixels are whole
};
using Shape = std::vector<ShapePoint>;

// All shapes as one, whichever way round they run.
void fill_shapes(const PixelBlock& block, const Rect& clip, std::vector<Shape> shapes, Color color);
// A line through pixels as shapes, with square ends and round joints.
std::vector<Shape> line_shapes(const std::vector<Point>& points, int width);

}  // namespace orvello
