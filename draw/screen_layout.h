// The sizes that every view shares: computed once from the work area and the screen's density, and
// again when the window is resized.
#pragma once

#include "base/geometry.h"
#include "ports/canvas.h"

namespace orvello {

// Horizontal logical pixels an inch below which a screen counts as low-resolution.
inline constexpr int kHighResolutionDpi = 130;

struct ScreenFonts {
  FontSpec normal8, normal9, normal10;
  FontSpec bold8, bold9, bold10, bold11, bold12;
  friend bool operator==(const ScreenFonts&, const ScreenFonts&) = default;
};

struct ScreenLayout {
  Size work;
  int dpi_x = 96;
  int dpi_y = 96;
  bool low_resolution = true;
  int scale = 1;
  int line_width = 2;
  int icon_width = 8;
  ScreenFonts fonts;
  int column_width = 0;  // of a seven-day grid
  int left_margin = 0;
  int header_height = 0;  // month strip, title band and day names
  int row_height = 0;     // of the month grid, always a sixth of what is left
  friend bool operator==(const ScreenLayout&, const ScreenLayout&) = default;
};

// `cleartype` as the setting of that name.
ScreenLayout layout_screen(Size work, int dpi_x, int dpi_y, bool cleartype);

// The sizes of what is drawn on a form that has another density than the views.
ScreenLayout form_layout(const ScreenLayout& views, int form_dpi);

// Points at a density; whole pixels, rounded down.
int font_height(int points, int dpi_y);

// The same face in another size of points.
FontSpec font_of(int points, int weight, const ScreenLayout& layout);

}  // namespace orvello
