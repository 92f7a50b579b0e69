#include "hosts/win32/pixel_shapes.h"

#include <algorithm>
#include <cmath>

namespace orvello {
namespace {

constexpr int kSubRows = 4;  // looked at in each row of pixels; sideways it is exact

struct ShapeEdge {
  double x = 0, top = 0, bottom = 0, slope = 0;  // x at the top
  int turn = 0;                                  // down or up
};
struct Crossing {
  double x = 0;
  int turn = 0;
};

double doubled_area(const Shape& shape) {
  double area = 0;
  for (std::size_t i = 0; i < shape.size(); ++i) {
    const ShapePoint &a = shape[i], &b = shape[(i + 1) % shape.size()];
    area += a.x * b.y - b.x * a.y;
  }
  return area;
}

std::vector<ShapeEdge> edges_of(std::vector<Shape>& shapes) {
  std::vector<ShapeEdge> edges;
  for (Shape& shape : shapes) {
    if (doubled_area(shape) < 0) std::reverse(shape.begin(), shape.end());
    for (std::size_t i = 0; i < shape.size(); ++i) {
      ShapePoint a = shape[i], b = shape[(i + 1) % shape.size()];
      if (a.y == b.y) continue;
      const int turn = a.y < b.y ? 1 : -1;
      if (turn < 0) std::swap(a, b);
      edges.push_back({a.x, a.y, b.y, (b.x - a.x) / (b.y - a.y), turn});
    }
  }
  return edges;
}

// Adds how much of each pixel from `left` on lies between two places.
void cover(std::vector<double>& covered, int left, double from, double to) {
  const double last = static_cast<double>(covered.size());
  from = std::clamp(from - left, 0.0, last), to = std::clamp(to - left, 0.0, last);
  for (int x = static_cast<int>(from); x < to; ++x)
    covered[static_cast<std::size_t>(x)] +=
        (std::min(to, x + 1.0) - std::max(from, static_cast<double>(x))) / kSubRows;
}

void cover_row(const std::vector<ShapeEdge>& edges, int y, int left, std::vector<double>& covered) {
  std::vector<Crossing> crossings;
  for (int part = 0; part < kSubRows; ++part) {
    const double at = y + (part + 0.5) / kSubRows;
    crossings.clear();
    for (const ShapeEdge& edge : edges)
      if (at >= edge.top && at < edge.bottom)
        crossings.push_back({edge.x + (at - edge.top) * edge.slope, edge.turn});
    std::sort(crossings.begin(), crossings.end(),
              [](const Crossing& a, const Crossing& b) { return a.x < b.x; });
    int inside = 0;
    for (std::size_t i = 0; i + 1 < crossings.size(); ++i) {
      inside += crossings[i].turn;
      if (inside != 0) cover(covered, left, crossings[i].x, crossings[i + 1].x);
    }
  }
}

std::uint32_t blended(std::uint32_t below, Color color, double share) {
  const auto mix = [share](std::uint32_t under, int over) {
    return static_cast<std::uint32_t>(
        std::lround(under + (over - static_cast<int>(under)) * share));
  };
  return mix((below >> 16) & 0xFF, red_of(color)) << 16 |
         mix((below >> 8) & 0xFF, green_of(color)) << 8 | mix(below & 0xFF, blue_of(color));
}

}  // namespace

void fill_shapes(const PixelBlock& block, const Rect& clip, std::vector<Shape> shapes,
                 Color color) {
  const std::vector<ShapeEdge> edges = edges_of(shapes);
  const Rect room = intersection(clip, {0, 0, block.size.width, block.size.height});
  if (edges.empty() || room.empty()) return;
  double top = room.bottom(), bottom = room.y;
  for (const ShapeEdge& edge : edges)
    top = std::min(top, edge.top), bottom = std::max(bottom, edge.bottom);
  const int first = std::max(room.y, static_cast<int>(std::floor(std::max(top, -1.0))));
  const int end = static_cast<int>(std::ceil(std::min(bottom, room.bottom() * 1.0)));
  std::vector<double> covered(static_cast<std::size_t>(room.width));
  for (int y = first; y < end; ++y) {
    std::fill(covered.begin(), covered.end(), 0.0);
    cover_row(edges, y, room.x, covered);
    std::uint32_t* row = block.pixels + static_cast<std::size_t>(y) * block.size.width + room.x;
    for (std::size_t x = 0; x < covered.size(); ++x)
      if (covered[x] > 0.999)
        row[x] = pixel_of(color);
      else if (covered[x] > 0)
        row[x] = blended(row[x], color, covered[x]);
  }
}

std::vector<Shape> line_shapes(const std::vector<Point>& points, int width) {
  std::vector<Shape> shapes;
  const double shift = width % 2 ? 0.5 : 0.0, half = width / 2.0;
  for (std::size_t i = 1; i < points.size(); ++i) {
    double ax = points[i - 1].x + shift, ay = points[i - 1].y + shift;
    double bx = points[i].x + shift, by = points[i].y + shift;
    const double length = std::hypot(bx - ax, by - ay);
    const double dx = length > 0 ? (bx - ax) / length * half : half;
    const double dy = length > 0 ? (by - ay) / length * half : 0;
    if (i == 1) ax -= dx, ay -= dy;
    if (i + 1 == points.size()) bx += dx, by += dy;
    shapes.push_back(
        {{ax - dy, ay + dx}, {ax + dy, ay - dx}, {bx + dy, by - dx}, {bx - dy, by + dx}});
    if (i + 1 == points.size() || width < 2) continue;
    Shape joint;
    for (int corner = 0; corner < 12; ++corner) {
      const double angle = corner * std::acos(-1.0) / 6;
      joint.push_back({bx + std::cos(angle) * half, by + std::sin(angle) * half});
    }
    shapes.push_back(joint);
  }
  return shapes;
}

}  // namespace orvello
