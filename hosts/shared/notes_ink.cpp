#include "hosts/shared/notes_ink.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace orvello {
namespace {

constexpr double kLeastStep = 0.75;
constexpr double kLeastWidth = 0.3;  // of the width at full pressure

PagePoint place_of(const StrokePoint& point) { return {point.x, point.y}; }

PagePoint middle(PagePoint a, PagePoint b) { return {(a.x + b.x) / 2, (a.y + b.y) / 2}; }

double distance(PagePoint a, PagePoint b) { return std::hypot(a.x - b.x, a.y - b.y); }

double distance(PagePoint point, PagePoint from, PagePoint to) {
  const PagePoint along{to.x - from.x, to.y - from.y};
  const double length = along.x * along.x + along.y * along.y;
  const double ahead = (point.x - from.x) * along.x + (point.y - from.y) * along.y;
  const double share = length > 0 ? std::clamp(ahead / length, 0.0, 1.0) : 0;
  return distance(point, {from.x + along.x * share, from.y + along.y * share});
}

// Two pieces cross when each has the other's ends on its two sides.
bool cross(PagePoint a, PagePoint b, PagePoint c, PagePoint d) {
  const auto side = [](PagePoint from, PagePoint to, PagePoint point) {
    return (to.x - from.x) * (point.y - from.y) - (to.y - from.y) * (point.x - from.x);
  };
  return side(a, b, c) * side(a, b, d) < 0 && side(c, d, a) * side(c, d, b) < 0;
}

PageBox box_of(std::initializer_list<PagePoint> points, double width) {
  const auto [left, right] =
      std::minmax(points, [](const PagePoint& a, const PagePoint& b) { return a.x < b.x; });
  const auto [top, bottom] =
      std::minmax(points, [](const PagePoint& a, const PagePoint& b) { return a.y < b.y; });
  const double half = width / 2;
  return {left.x - half, top.y - half, right.x + half, bottom.y + half};
}

double width_at(const NotesStroke& stroke, const StrokePoint& point) {
  const double pressure = std::clamp<double>(point.pressure, 0, 1);
  return stroke.width * (kLeastWidth + (1 - kLeastWidth) * pressure);
}

}  // namespace

std::vector<InkCurve> curves_of(const NotesStroke& stroke) {
  const auto& points = stroke.points;
  std::vector<InkCurve> curves;
  if (points.empty()) return curves;
  PagePoint last = place_of(points[0]);
  if (points.size() == 1) curves.push_back({last, last, last, width_at(stroke, points[0])});
  for (std::size_t i = 1; i < points.size(); ++i) {
    const bool ends = i + 1 == points.size();
    const PagePoint here = place_of(points[i]);
    const PagePoint next = ends ? here : middle(here, place_of(points[i + 1]));
    curves.push_back({last, here, next, width_at(stroke, points[i])});
    last = next;
  }
  return curves;
}

PageBox bounds_of(const InkCurve& curve) {
  return box_of({curve.from, curve.bend, curve.to}, curve.width);
}

PageBox bounds_of_end(const NotesStroke& stroke) {
  // The last three: a curve ends in the middle between two of them.
  const std::size_t first = stroke.points.size() > 3 ? stroke.points.size() - 3 : 0;
  NotesStroke end;
  end.width = stroke.width;
  end.points.assign(stroke.points.begin() + static_cast<std::ptrdiff_t>(first),
                    stroke.points.end());
  return bounds_of(end);
}

PageBox bounds_of(const NotesStroke& stroke) {
  if (stroke.points.empty()) return {};
  float left = stroke.points[0].x, right = left, top = stroke.points[0].y, bottom = top;
  for (const StrokePoint& point : stroke.points) {
    left = std::min(left, point.x);
    right = std::max(right, point.x);
    top = std::min(top, point.y);
    bottom = std::max(bottom, point.y);
  }
  const double half = stroke.width / 2.0;
  return {left - half, top - half, right + half, bottom + half};
}

PagePoint extent_of(const std::vector<NotesStroke>& ink) {
  PagePoint extent;
  for (const NotesStroke& stroke : ink) {
    const PageBox bounds = bounds_of(stroke);
    extent = {std::max(extent.x, bounds.right), std::max(extent.y, bounds.bottom)};
  }
  return extent;
}

bool touches(const NotesStroke& stroke, PagePoint from, PagePoint to, double reach) {
  reach += stroke.width / 2.0;
  for (std::size_t i = 0; i < stroke.points.size(); ++i) {
    const PagePoint here = place_of(stroke.points[i]);
    const PagePoint next = place_of(stroke.points[std::min(i + 1, stroke.points.size() - 1)]);
    if (distance(here, from, to) <= reach || distance(from, here, next) <= reach ||
        distance(to, here, next) <= reach || cross(from, to, here, next))
      return true;
  }
  return false;
}

bool add_point(NotesStroke& stroke, PagePoint at, double pressure) {
  if (!stroke.points.empty() && distance(place_of(stroke.points.back()), at) < kLeastStep)
    return false;
  stroke.points.push_back(
      {static_cast<float>(at.x), static_cast<float>(at.y), static_cast<float>(pressure)});
  return true;
}

}  // namespace orvello
