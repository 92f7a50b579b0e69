// Strokes of a notes page as smooth pixels, where a platform's own lines are jagged.
#pragma once

#include <cstdint>

#include "base/geometry.h"
#include "hosts/shared/notes_ink.h"

namespace orvello {

// Rows of 0x00RRGGBB from the top; nothing outside of `clip` is touched.
struct InkTarget {
  std::uint32_t* pixels = nullptr;
  Size size;
  Rect clip;
};

// The page's corner stands at `origin` in the target; `unit` pixels are one of the page.
void draw_stroke(const InkTarget& target, const NotesStroke& stroke, PagePoint origin, double unit,
                 Color color);

}  // namespace orvello
