#include "hosts/shared/ink_raster.h"

#include <algorithm>
#include <cmath>

namespace orvello {
namespace {

// How much of each pixel of a rectangle the stroke covers.
struct Coverage {
  explicit Coverage(const Rect& rect)
      : place(rect), share(static_cast<std::size_t>(rect.width * rect.height)) {}

  // A line with round ends.
  void add_line(PagePoint from, PagePoint to, double radius) {
    const double reach = radius + 1;
    const auto low = [](double a, double b, double by) {
      return static_cast<int>(std::floor(std::min(a, b) - by));
    };
    const auto high = [](double a, double b, double by) {
      return static_cast<int>(std::ceil(std::max(a, b) + by));
    };
    const int x = low(from.x, to.x, reach), y = low(from.y, to.y, reach);
    const Rect near =
        intersection(place, {x, y, high(from.x, to.x, reach) - x, high(from.y, to.y, reach) - y});
    const double dx = to.x - from.x, dy = to.y - from.y, length = dx * dx + dy * dy;
    for (int row = near.y; row < near.bottom(); ++row)
      for (int column = near.x; column < near.right(); ++column) {
        const double px = column + 0.5 - from.x, py = row + 0.5 - from.y;
        const double along = length > 0 ? std::clamp((px * dx + py * dy) / length, 0.0, 1.0) : 0.0;
        const double away = std::hypot(px - along * dx, py - along * dy);
        const double covered = std::clamp(radius + 0.5 - away, 0.0, 1.0);
        std::uint8_t& kept =
            share[static_cast<std::size_t>((row - place.y) * place.width + column - place.x)];
        kept = std::max(kept, static_cast<std::uint8_t>(covered * 255));
      }
  }

  Rect place;
  std::vector<std::uint8_t> share;
};

PagePoint on_curve(const InkCurve& curve, double t) {
  const double a = (1 - t) * (1 - t), b = 2 * t * (1 - t), c = t * t;
  return {a * curve.from.x + b * curve.bend.x + c * curve.to.x,
          a * curve.from.y + b * curve.bend.y + c * curve.to.y};
}

std::uint32_t blended(std::uint32_t pixel, Color color, int share) {
  const auto mix = [share](int from, int to) {
    return static_cast<std::uint32_t>(from + (to - from) * share / 255);
  };
  return mix((pixel >> 16) & 0xFF, red_of(color)) << 16 |
         mix((pixel >> 8) & 0xFF, green_of(color)) << 8 | mix(pixel & 0xFF, blue_of(color));
}

Rect pixels_of(const PageBox& box) {
  const int x = static_cast<int>(std::floor(box.left)), y = static_cast<int>(std::floor(box.top));
  return {x, y, static_cast<int>(std::ceil(box.right)) - x,
          static_cast<int>(std::ceil(box.bottom)) - y};
}

}  // namespace

void draw_stroke(const InkTarget& target, const NotesStroke& stroke, PagePoint origin, double unit,
                 Color color) {
  const auto placed = [&](PagePoint point) {
    return PagePoint{origin.x + point.x * unit, origin.y + point.y * unit};
  };
  const PageBox bounds = bounds_of(stroke);
  const PagePoint corner = placed({bounds.left, bounds.top}),
                  end = placed({bounds.right, bounds.bottom});
  const Rect whole = pixels_of({corner.x, corner.y, end.x, end.y}).inset(-1, -1);
  const Rect seen =
      intersection(whole, intersection(target.clip, {0, 0, target.size.width, target.size.height}));
  if (seen.empty()) return;
  Coverage coverage(seen);
  for (const InkCurve& curve : curves_of(stroke)) {
    const PagePoint from = placed(curve.from), bend = placed(curve.bend), to = placed(curve.to);
    const double length =
        std::hypot(bend.x - from.x, bend.y - from.y) + std::hypot(to.x - bend.x, to.y - bend.y);
    const int steps = std::clamp(static_cast<int>(length / 3), 1, 32);
    PagePoint last = from;
    for (int i = 1; i <= steps; ++i) {
      const PagePoint next = on_curve({from, bend, to}, static_cast<double>(i) / steps);
      coverage.add_line(last, next, curve.width * unit / 2);
      last = next;
    }
  }
  for (int y = seen.y; y < seen.bottom(); ++y)
    for (int x = seen.x; x < seen.right(); ++x) {
      const int share =
          coverage.share[static_cast<std::size_t>((y - seen.y) * seen.width + x - seen.x)];
      std::uint32_t& pixel = target.pixels[static_cast<std::size_t>(y * target.size.width + x)];
      if (share > 0) pixel = blended(pixel, color, share);
    }
}

}  // namespace orvello
