#include "hosts/qt/notes_ink.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

constexpr double kLeastStep = 0.75;
constexpr double kLeastWidth = 0.3;  // of the width at full pressure

QPointF place_of(const StrokePoint& point) { return {point.x, point.y}; }

double distance(QPointF a, QPointF b) { return std::hypot(a.x() - b.x(), a.y() - b.y()); }

double distance(QPointF point, QPointF from, QPointF to) {
  const QPointF along = to - from;
  const double length = QPointF::dotProduct(along, along);
  const double share =
      length > 0 ? std::clamp(QPointF::dotProduct(point - from, along) / length, 0.0, 1.0) : 0;
  return distance(point, from + along * share);
}

// Two pieces cross when each has the other's ends on its two sides.
bool cross(QPointF a, QPointF b, QPointF c, QPointF d) {
  const auto side = [](QPointF from, QPointF to, QPointF point) {
    return (to.x() - from.x()) * (point.y() - from.y()) -
           (to.y() - from.y()) * (point.x() - from.x());
  };
  return side(a, b, c) * side(a, b, d) < 0 && side(c, d, a) * side(c, d, b) < 0;
}

QRectF box_of(std::initializer_list<QPointF> points, double width) {
  const auto [left, right] =
      std::minmax(points, [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
  const auto [top, bottom] =
      std::minmax(points, [](const QPointF& a, const QPointF& b) { return a.y() < b.y(); });
  const double half = width / 2;
  return QRectF(left.x(), top.y(), right.x() - left.x(), bottom.y() - top.y())
      .adjusted(-half, -half, half, half);
}

double width_at(const NotesStroke& stroke, const StrokePoint& point) {
  const double pressure = std::clamp<double>(point.pressure, 0, 1);
  return stroke.width * (kLeastWidth + (1 - kLeastWidth) * pressure);
}

}  // namespace

void paint_stroke(QPainter& painter, const NotesStroke& stroke, const QRectF& seen, Color color) {
  const auto& points = stroke.points;
  if (points.empty()) return;
  QPen pen(qt_color(color), 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  if (points.size() == 1) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(pen.color());
    const double radius = width_at(stroke, points[0]) / 2;
    painter.drawEllipse(place_of(points[0]), radius, radius);
    return;
  }
  QPointF last = place_of(points[0]);
  for (std::size_t i = 1; i < points.size(); ++i) {
    const bool ends = i + 1 == points.size();
    const QPointF here = place_of(points[i]);
    const QPointF next = ends ? here : (here + place_of(points[i + 1])) / 2;
    if (box_of({last, here, next}, stroke.width).intersects(seen)) {
      QPainterPath path(last);
      path.quadTo(here, next);
      pen.setWidthF(width_at(stroke, points[i]));
      painter.strokePath(path, pen);
    }
    last = next;
  }
}

QRectF bounds_of_end(const NotesStroke& stroke) {
  // The last three: a curve ends in the middle between two of them.
  const std::size_t first = stroke.points.size() > 3 ? stroke.points.size() - 3 : 0;
  NotesStroke end;
  end.width = stroke.width;
  end.points.assign(stroke.points.begin() + static_cast<std::ptrdiff_t>(first),
                    stroke.points.end());
  return bounds_of(end);
}

QRectF bounds_of(const NotesStroke& stroke) {
  if (stroke.points.empty()) return {};
  float left = stroke.points[0].x, right = left, top = stroke.points[0].y, bottom = top;
  for (const StrokePoint& point : stroke.points) {
    left = std::min(left, point.x);
    right = std::max(right, point.x);
    top = std::min(top, point.y);
    bottom = std::max(bottom, point.y);
  }
  const double half = stroke.width / 2.0;
  return QRectF(QPointF(left, top), QPointF(right, bottom)).adjusted(-half, -half, half, half);
}

QPointF extent_of(const std::vector<NotesStroke>& ink) {
  QPointF extent(0, 0);
  for (const NotesStroke& stroke : ink) {
    const QRectF bounds = bounds_of(stroke);
    extent = {std::max(extent.x(), bounds.right()), std::max(extent.y(), bounds.bottom())};
  }
  return extent;
}

bool touches(const NotesStroke& stroke, QPointF from, QPointF to, double reach) {
  reach += stroke.width / 2.0;
  for (std::size_t i = 0; i < stroke.points.size(); ++i) {
    const QPointF here = place_of(stroke.points[i]);
    const QPointF next = place_of(stroke.points[std::min(i + 1, stroke.points.size() - 1)]);
    if (distance(here, from, to) <= reach || distance(from, here, next) <= reach ||
        distance(to, here, next) <= reach || cross(from, to, here, next))
      return true;
  }
  return false;
}

bool add_point(NotesStroke& stroke, QPointF at, double pressure) {
  if (!stroke.points.empty() && distance(place_of(stroke.points.back()), at) < kLeastStep)
    return false;
  stroke.points.push_back(
      {static_cast<float>(at.x()), static_cast<float>(at.y()), static_cast<float>(pressure)});
  return true;
}

}  // namespace orvello
