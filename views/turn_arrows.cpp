#include "views/turn_arrows.h"

#include <algorithm>
#include <utility>

#include "draw/fit_text.h"
#include "draw/readable.h"
#include "resources/bitmaps.h"

namespace orvello {

TurnArrows turn_arrows(const ScreenLayout& screen, const LocaleData& locale, Color ground) {
  const auto arrow = [&](int low, int high) {
    return visible_on(ground, load_bitmap(screen.low_resolution ? low : high), kMarkContrast);
  };
  TurnArrows arrows{arrow(kBitmapPreviousLow, kBitmapPreviousHigh),
                    arrow(kBitmapNextLow, kBitmapNextHigh),
                    arrow(kBitmapTodayLow, kBitmapTodayHigh)};
  if (locale.right_to_left) std::swap(arrows.previous, arrows.next);
  return arrows;
}

void draw_title(TextView title, const Rect& room, const Image& picture, int points, Color color,
                const ScreenLayout& screen, Canvas& canvas) {
  const int gap = picture.empty() ? 0 : 4 * screen.scale;
  const int aside = picture.width + gap;
  const FontSpec font =
      fitting_font(canvas, {Text(title)}, room.width - aside, points, 700, screen);
  const int width = canvas.measure(title, font).width;
  const int x = std::min(room.x + (room.width - width) / 2, room.right() - aside - width);
  canvas.draw_text(title, {x, room.y, width, room.height}, {font, color, Align::center});
  if (!picture.empty())
    canvas.draw_image(picture, {0, 0, picture.width, picture.height},
                      {x + width + gap, room.y + (room.height - picture.height) / 2});
}

}  // namespace orvello
