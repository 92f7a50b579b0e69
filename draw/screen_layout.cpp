#include "draw/screen_layout.h"

#include <algorithm>

namespace orvello {

int font_height(int points, int dpi_y) { return points * dpi_y / 72; }

FontSpec font_of(int points, int weight, const ScreenLayout& layout) {
  return {font_height(points, layout.dpi_y), weight, layout.fonts.normal9.cleartype};
}

ScreenLayout layout_screen(Size work, int dpi_x, int dpi_y, bool cleartype) {
  ScreenLayout layout;
  layout.work = work;
  layout.dpi_x = dpi_x;
  layout.dpi_y = dpi_y;
  layout.low_resolution = dpi_x < kHighResolutionDpi;
  layout.scale = layout.low_resolution ? 1 : 2;
  layout.line_width = layout.low_resolution ? 2 : 4;
  layout.icon_width = layout.low_resolution ? 8 : 16;

  const auto font = [&](int points, int weight) {
    return FontSpec{font_height(points, dpi_y), weight, cleartype};
  };
  layout.fonts = {font(8, 400), font(9, 400),  font(10, 400), font(8, 700),
                  font(9, 700), font(10, 700), font(11, 700), font(12, 700)};

  layout.column_width = work.width / 7;
  layout.left_margin = (work.width - 7 * layout.column_width) / 2;
  layout.header_height =
      static_cast<int>(layout.fonts.bold11.height * 1.275 + layout.fonts.normal9.height * 2.65);
  layout.row_height = std::max(0, (work.height - layout.header_height - 2) / 6);
  return layout;
}

ScreenLayout form_layout(const ScreenLayout& views, int form_dpi) {
  if (form_dpi <= 0 || form_dpi == views.dpi_y) return views;
  ScreenLayout layout = views;
  const ScreenLayout grown =
      layout_screen(views.work, form_dpi, form_dpi, views.fonts.normal9.cleartype);
  layout.dpi_x = layout.dpi_y = form_dpi;
  layout.fonts = grown.fonts;
  return layout;
}

}  // namespace orvello
