// Cells of icons, as the Icons page and the choice of an icon draw them.
#pragma once

#include "options/cell_grid.h"
#include "options/options_context.h"

namespace orvello {

// How wide and high a cell is at least, for a pen: device pixels.
int icon_cell_side(const ScreenLayout& screen);
// How far a pen may slip in a tap.
int icon_grid_tremble(const ScreenLayout& screen);

struct IconCell {
  Image icon;
  Text label;  // beside the icon, or below it where the cell is narrow; what fits of it
};

// The ground, then each cell that is seen; the chosen one is framed.
void paint_icon_cells(const OptionsContext& context, const CellGrid& grid,
                      const std::vector<IconCell>& cells, Size size, Canvas& canvas);

}  // namespace orvello
