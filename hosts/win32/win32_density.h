// How large and in which colours the host's own windows are drawn. Lengths are device pixels;
// design units are pixels of a 96-dpi screen, grown with the text.
#pragma once

#include <cmath>

#include "draw/look_colors.h"

namespace orvello {

struct Win32Density {
  int dpi = 96;
  double text = 1;  // how much larger than usual texts are, and with them all that is measured
  const LookColors* colors = &kLightColors;  // never null

  double unit() const { return dpi * text / 96.0; }  // pixels in a design unit
  int scaled(double design) const { return static_cast<int>(std::lround(design * unit())); }
  // What the layout of a form counts in.
  int form_dpi() const { return static_cast<int>(std::lround(dpi * text)); }
};

}  // namespace orvello
