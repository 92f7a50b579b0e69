#include "options/icon_paint.h"

#include <algorithm>

namespace orvello {
namespace {

constexpr int kSide = 28, kTrembleAt96 = 6, kPad = 4, kRoomForLabel = 64;  // at 96 dpi

int scaled(const ScreenLayout& screen, int at_96) { return at_96 * screen.dpi_y / 96; }

void paint_icon_cell(const OptionsContext& context, const IconCell& cell, const Rect& place,
                     Canvas& canvas) {
  const ScreenLayout& screen = context.screen;
  const int pad = scaled(screen, kPad);
  const Image& icon = cell.icon;
  const Rect whole{0, 0, icon.width, icon.height};
  TextStyle style;
  style.font = screen.fonts.normal9;
  style.color = context.host.dialogs.colors().text;
  if (place.width >= scaled(screen, kRoomForLabel)) {
    if (!icon.empty())
      canvas.draw_image(icon, whole, {place.x + pad, place.y + (place.height - icon.height) / 2});
    const int left = pad + std::max(icon.width, screen.icon_width) + pad;
    canvas.draw_text(cell.label, {place.x + left, place.y, place.width - left - pad, place.height},
                     style);
    return;
  }
  style.font = screen.fonts.normal8;
  const int line = cell.label.empty() ? 0 : style.font.height;
  const int top = place.y + std::max(1, (place.height - line - icon.height) / 2);
  if (!icon.empty())
    canvas.draw_image(icon, whole, {place.x + (place.width - icon.width) / 2, top});
  // A text that is wider than the cell begins at its left edge.
  const bool fits = canvas.measure(cell.label, style.font).width <= place.width - 2;
  style.align = fits ? Align::center : Align::left;
  canvas.draw_text(cell.label,
                   {place.x + 1, place.y + place.height - line - 2, place.width - 2, line + 2},
                   style);
}

// How much of a grid that is longer than its place is seen.
void paint_mark(const CellGrid& grid, Size size, int width, Color color, Canvas& canvas) {
  if (grid.length() <= size.height) return;
  const int high = std::max(4 * width, size.height * size.height / grid.length());
  const int room = grid.length() - size.height;
  const int top = (size.height - high) * grid.scrolled() / std::max(1, room);
  canvas.fill_rect({size.width - width, top, width, high}, color);
}

}  // namespace

int icon_cell_side(const ScreenLayout& screen) { return scaled(screen, kSide); }
int icon_grid_tremble(const ScreenLayout& screen) { return scaled(screen, kTrembleAt96); }

void paint_icon_cells(const OptionsContext& context, const CellGrid& grid,
                      const std::vector<IconCell>& cells, Size size, Canvas& canvas) {
  const FormColors colors = context.host.dialogs.colors();
  const int line = std::max(1, context.screen.dpi_y / 96);
  canvas.fill_rect({0, 0, size.width, size.height}, colors.field);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const Rect place = grid.place(static_cast<int>(i));
    if (place.bottom() <= 0 || place.y >= size.height) continue;
    const bool chosen = static_cast<int>(i) == grid.chosen();
    if (chosen) canvas.fill_rect(place, colors.accent_tint);
    paint_icon_cell(context, cells[i], place, canvas);
    canvas.frame_rect(place, chosen ? colors.accent : colors.line, chosen ? 2 * line : line);
  }
  paint_mark(grid, size, 3 * line, colors.dim_text, canvas);
}

}  // namespace orvello
