#include "settings/icon_picture.h"

namespace orvello {
namespace {

Image cut_icon(const Image& strip, int index, int side) {
  Image icon{side, side, {}};
  if (index < 0 || (index + 1) * side > strip.width || side > strip.height) return {};
  icon.pixels.reserve(static_cast<std::size_t>(side) * side);
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x) icon.pixels.push_back(strip.at(index * side + x, y));
  return icon;
}

}  // namespace

Image icon_picture(const SettingsRecord& settings, int number) {
  if (number < 0) return {};
  if (number < settings.builtin_icon_count)
    return cut_icon(settings.builtin_icons, number, settings.icon_cell);
  if (!settings.has_user_icons) return {};
  return cut_icon(settings.user_icons, number - settings.builtin_icon_count, settings.icon_cell);
}

Image category_icon(const SettingsRecord& settings, TextView label) {
  if (label.empty()) return {};
  for (int slot = 0; slot < kDisplayIconSlots; ++slot)
    if (settings.displayiconstring[slot] == label)
      return icon_picture(settings, settings.displayicon[slot]);
  return {};
}

}  // namespace orvello
