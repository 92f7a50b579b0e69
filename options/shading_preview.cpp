#include "options/shading_preview.h"

#include "resources/bitmaps.h"

namespace orvello {

int shading_bitmap(int calendarcolorstyle, int firstdayofweek, bool low_resolution) {
  if (calendarcolorstyle == 0) return low_resolution ? kBitmapShadedRowsLow : kBitmapShadedRowsHigh;
  if (calendarcolorstyle != 1) return 0;
  if (firstdayofweek != 0) return low_resolution ? kBitmapShadedMondayLow : kBitmapShadedMondayHigh;
  return low_resolution ? kBitmapShadedSundayLow : kBitmapShadedSundayHigh;
}

void paint_shading_preview(const SettingsRecord& settings, bool low_resolution, Color ground,
                           Canvas& canvas) {
  const Size size = canvas.size();
  canvas.fill_rect({0, 0, size.width, size.height}, ground);
  const Image image = load_bitmap(
      shading_bitmap(settings.calendarcolorstyle, settings.firstdayofweek, low_resolution));
  if (image.empty()) return;
  canvas.draw_image(image, {0, 0, image.width, image.height},
                    {(size.width - image.width) / 2, (size.height - image.height) / 2});
}

}  // namespace orvello
