// Where the buttons of the menu bar stand: texts from where lines begin, then the images, which
// share one width. What does not fit first loses padding and then text size; nothing is cut.
#pragma once

#include <functional>
#include <vector>

#include "base/geometry.h"
#include "hosts/win32/win32_density.h"

namespace orvello {

struct BarButtonShape {
  bool separator = false;
  bool image = false;
  bool named = false;  // a highlighted image, whose text stands beside it as far as there is room
};

struct BarLayout {
  std::vector<Rect> places;  // of every button; empty for a separator
  int text_height = 0;       // of the font, pixels
};

// `text_width` measures a button's text, by position, in a font of some pixels.
BarLayout lay_out_bar(const std::vector<BarButtonShape>& buttons, const Win32Density& density,
                      Size bar, const std::function<int(std::size_t, int)>& text_width);

}  // namespace orvello
