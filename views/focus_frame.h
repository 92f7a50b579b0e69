// The frame around the day that the keyboard stands on: a dark line with a light one inside, so
// that it shows on every background.
#pragma once

#include "ports/canvas.h"

namespace orvello {

// Inside the rectangle's edge, the dark line `width` pixels wide, the light one half of that.
inline void draw_focus_frame(const Rect& rect, int width, Canvas& canvas) {
  canvas.frame_rect(rect, kBlack, width);
  canvas.frame_rect(rect.inset(width, width), kWhite, std::max(1, width / 2));
}

}  // namespace orvello
