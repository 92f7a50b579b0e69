// The Month view's shading in small, beside the choice of it.
#pragma once

#include "ports/canvas.h"
#include "settings/settings_record.h"

namespace orvello {

// The picture's number; 0 for a style that there is none for.
int shading_bitmap(int calendarcolorstyle, int firstdayofweek, bool low_resolution);

// In the middle of the canvas, over the ground.
void paint_shading_preview(const SettingsRecord& settings, bool low_resolution, Color ground,
                           Canvas& canvas);

}  // namespace orvello
