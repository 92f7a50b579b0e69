// Strokes over what a window has painted.
#pragma once

#include <windows.h>

#include "hosts/shared/notes_ink.h"

namespace orvello {

struct InkOverlay {
  const std::vector<NotesStroke>& strokes;
  const NotesStroke* drawing = nullptr;  // the one under the pen
  PagePoint origin;                      // where the page's corner stands in the window
  double unit = 1;                       // pixels in a unit of the page
  Color ground = kWhite;                 // on which they are kept readable
};

// Within the region, which was painted just before.
void draw_over(HWND window, HRGN region, const InkOverlay& ink);

}  // namespace orvello
