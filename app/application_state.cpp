#include "app/application_state.h"

namespace orvello {

int platform_generation(int os_major, int os_minor) {
  if (os_major == 3) return 1;
  if (os_major == 4 && os_minor >= 20) return 2;
  if (os_major == 5) return 3;
  return 0;
}

int menu_bar_height(int dpi_y) { return (dpi_y * 27 + 48) / 96; }

Size work_size(const Rect& work_area, int menu_bar_height, int dpi_x) {
  const int gap = dpi_x < kHighResolutionDpi ? 2 : 4;
  return {work_area.width, work_area.height - menu_bar_height - gap};
}

}  // namespace orvello
