#include "views/turn_arrows.h"

#include <utility>

#include "resources/bitmaps.h"

namespace orvello {

TurnArrows turn_arrows(const ScreenLayout& screen, const LocaleData& locale) {
  TurnArrows arrows{load_bitmap(screen.low_resolution ? kBitmapPreviousLow : kBitmapPreviousHigh),
                    load_bitmap(screen.low_resolution ? kBitmapNextLow : kBitmapNextHigh)};
  if (locale.right_to_left) std::swap(arrows.previous, arrows.next);
  return arrows;
}

}  // namespace orvello
