// What the chosen colours look like: a group's view or popup, drawn by its own painter, with
// examples that show each of the group's colours.
#pragma once

#include "app/view_preview.h"
#include "settings/colors.h"

namespace orvello {

void draw_color_preview(ColorGroup group, const PreviewInput& input, Canvas& canvas);

}  // namespace orvello
