// The lines that connect the time lists with the names of the periods between them.
#pragma once

#include <array>

#include "ports/canvas.h"
#include "ports/form_colors.h"

namespace orvello {

// The names are on the left, the lists on the right. The periods that have any time are blue, the
// others grey.
void paint_times_diagram(const std::array<bool, 3>& lasting, Size size, const FormColors& colors,
                         Canvas& canvas);
void paint_times_separator(Size size, const FormColors& colors, Canvas& canvas);

}  // namespace orvello
