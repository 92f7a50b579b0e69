// The pictures of the way back and the way on, as they point on the screen.
#pragma once

#include "base/image.h"
#include "calendar/locale_data.h"
#include "draw/screen_layout.h"

namespace orvello {

struct TurnArrows {
  Image previous, next;
};

// On a right-to-left screen the way back is to the right. They are seen on the ground.
TurnArrows turn_arrows(const ScreenLayout& screen, const LocaleData& locale, Color ground);

}  // namespace orvello
