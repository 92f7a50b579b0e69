// How large and in which colours the host's widgets are drawn. There are three units of length:
// design units (pixels of a 96-dpi screen, grown with the text), device pixels, which the program
// works in, and the toolkit's logical pixels.
#pragma once

#include <QPointF>
#include <QRect>
#include <cmath>

#include "base/geometry.h"
#include "draw/look_colors.h"

namespace orvello {

struct Density {
  double ratio = 1;  // device pixels in a logical pixel
  int dpi = 96;      // of the device's pixels
  double text = 1;   // how much larger than usual texts are, and with them all that is measured
  double desktop_text = 1;                   // the same, as the desktop asks for it
  const LookColors* colors = &kLightColors;  // of the desktop's scheme; never null

  // The program draws its views in sizes of its own. What is the host's grows with the desktop's
  // texts: menus, boxes and forms.
  Density grown() const {
    Density all = *this;
    all.text = desktop_text;
    return all;
  }
  double unit() const { return dpi * text / 96.0 / ratio; }  // logical pixels in a design unit
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
