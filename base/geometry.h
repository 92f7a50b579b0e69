// Small value types for places on a screen. All lengths are device pixels, y grows downwards.
#pragma once

#include <algorithm>
#include <cstdint>

namespace orvello {

struct Point {
  int x = 0;
  int y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
  int width = 0;
  int height = 0;
  friend bool operator==(const Size&, const Size&) = default;
};

// A half-open rectangle: `right()` and `bottom()` are the first pixels outside.
struct Rect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  int right() const { return x + width; }
  int bottom() const { return y + height; }
  Point center() const { return {x + width / 2, y + height / 2}; }
  bool empty() const { return width <= 0 || height <= 0; }
  bool contains(Point p) const { return p.x >= x && p.x < right() && p.y >= y && p.y < bottom(); }
  Rect inset(int dx, int dy) const { return {x + dx, y + dy, width - 2 * dx, height - 2 * dy}; }
  Rect moved(int dx, int dy) const { return {x + dx, y + dy, width, height}; }
  friend bool operator==(const Rect&, const Rect&) = default;
};

inline Rect intersection(const Rect& a, const Rect& b) {
  const int x = std::max(a.x, b.x), y = std::max(a.y, b.y);
  const int right = std::min(a.right(), b.right()), bottom = std::min(a.bottom(), b.bottom());
  if (right <= x || bottom <= y) return {};
  return {x, y, right - x, bottom - y};
}

}  // namespace orvello
