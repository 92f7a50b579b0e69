// Three units of length: design units (pixels of a 96-dpi screen), device pixels, which the program
// works in, and the toolkit's logical pixels.
#pragma once

#include <QPointF>
#include <QRect>
#include <cmath>

#include "base/geometry.h"

namespace orvello {

struct Density {
  double ratio = 1;  // device pixels in a logical pixel
  int dpi = 96;      // of the device's pixels

  double unit() const { return dpi / 96.0 / ratio; }  // logical pixels in a design unit
  int scaled(double design) const { return static_cast<int>(std::lround(design * unit())); }
  int logical(int device) const { return static_cast<int>(std::lround(device / ratio)); }
  int device(double logical) const { return static_cast<int>(std::lround(logical * ratio)); }
  Point device(const QPointF& point) const {
    // A pointer's place is the pixel that it lies in.
    return {static_cast<int>(std::floor(point.x() * ratio)),
            static_cast<int>(std::floor(point.y() * ratio))};
  }
  Rect device(const QRect& r) const {
    return {device(r.x()), device(r.y()), device(r.width()), device(r.height())};
  }
  QRect logical(const Rect& r) const {
    return {logical(r.x), logical(r.y), logical(r.width), logical(r.height)};
  }
};

}  // namespace orvello
