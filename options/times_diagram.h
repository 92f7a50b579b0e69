// The lines that connect the time lists with the names of the periods between them.
#pragma once

#include <array>

#include "ports/canvas.h"
#include "ports/form_colors.h"

namespace orvello {

struct TimesDiagram {
  std::array<bool, 3> lasting{};  // periods that have any time: blue, the others grey
};

void paint_times_diagram(const TimesDiagram& diagram, Size size, const FormColors& colors,
                         Canvas& canvas);
void paint_times_separator(Size size, const FormColors& colors, Canvas& canvas);

}  // namespace orvello
