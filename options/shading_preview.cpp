#include "options/shading_preview.h"

#include "resources/bitmaps.h"

namespace orvello {

int shading_bitmap(int calendarcolorstyle, int firstdayofweek, bool low_resolution) {
  if (calendarcolorstyle == 0) return low_resolution ? kBitmapShadedRowsLow : kBitmapShadedRowsHigh;
  if (calendarcolorstyle != 1) return 0;
  if (firstdayofweek != 0) return low_resolution ? kBitmapShadedMondayLow : kBitmapShadedMondayHigh;
  return low_resolution ? kBitmapShadedSundayLow : kBitmapShadedSundayHigh;
}

void paint_shading_preview(const SettingsRecord& settings, bool low_resolution, const Rect& free,
                           Color ground, Canvas& canvas) {
  canvas.fill_rect({0, 0, canvas.size().width, canvas.size().height}, ground);
  const Image image = load_bitmap(
      shading_bitmap(settings.calendarcolorstyle, settings.firstdayofweek, low_resolution));
  if (image.empty()) return;
  const Point at{free.x + (free.width - image.width) / 2,
                 free.y + (free.height - image.height) / 2};
  canvas.draw_image(image, {0, 0, image.width, image.height}, at);
}

}  // namespace orvello
