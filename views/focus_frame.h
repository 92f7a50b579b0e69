// The frame around the day that the keyboard stands on: a dark line with a light one inside, so
// that it shows on every background.
#pragma once

#include "ports/canvas.h"

namespace orvello {

// Inside the rectangle's edge, two lines of `scale` pixels.
inline void draw_focus_frame(const Rect& rect, int scale, Canvas& canvas) {
  canvas.frame_rect(rect, kBlack, scale);
  canvas.frame_rect(rect.inset(scale, scale), kWhite, scale);
}

}  // namespace orvello
