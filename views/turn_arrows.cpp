#include "views/turn_arrows.h"

#include <utility>

#include "draw/readable.h"
#include "resources/bitmaps.h"

namespace orvello {

TurnArrows turn_arrows(const ScreenLayout& screen, const LocaleData& locale, Color ground) {
  const auto arrow = [&](int low, int high) {
    return visible_on(ground, load_bitmap(screen.low_resolution ? low : high), kMarkContrast);
  };
  TurnArrows arrows{arrow(kBitmapPreviousLow, kBitmapPreviousHigh),
                    arrow(kBitmapNextLow, kBitmapNextHigh)};
  if (locale.right_to_left) std::swap(arrows.previous, arrows.next);
  return arrows;
}

}  // namespace orvello
