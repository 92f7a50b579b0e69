// The pictures of the way back and the way on, as they point on the screen, and of that to today.
#pragma once

#include "base/image.h"
#include "calendar/locale_data.h"
#include "draw/screen_layout.h"
#include "ports/canvas.h"

namespace orvello {

struct TurnArrows {
  Image previous, next, today;
};

// On a right-to-left screen the way back is to the right. They are seen on the ground.
TurnArrows turn_arrows(const ScreenLayout& screen, const LocaleData& locale, Color ground);

// A title in the middle of its room, with the picture behind it where that is not empty: the title
// gives way as far as it has to. `points` is the largest size.
void draw_title(TextView title, const Rect& room, const Image& picture, int points, Color color,
                const ScreenLayout& screen, Canvas& canvas);

}  // namespace orvello
