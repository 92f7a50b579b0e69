#include "settings/colors.h"

#include "settings/registry_access.h"
#include "settings/setting_table.h"

namespace orvello {
namespace {

constexpr std::array<ColorRow, kColorSlots> kColors = {{
    {ColorGroup::month, u"Month bar background", rgb(90, 90, 90)},
    {ColorGroup::month, u"Month bar text", rgb(255, 255, 255)},
    {ColorGroup::month, u"Month header background", rgb(255, 255, 255)},
    {ColorGroup::month, u"Month header text", rgb(0, 0, 170)},
    {ColorGroup::month, u"Day header background", rgb(222, 198, 181)},
    {ColorGroup::month, u"Day header text", rgb(0, 0, 0)},
    {ColorGroup::month, u"Date text", rgb(0, 0, 0)},
    {ColorGroup::month, u"Date background 1", rgb(255, 255, 255)},
    {ColorGroup::month, u"Date background 2", rgb(231, 231, 206)},
    {ColorGroup::month, u"Today Date background", rgb(255, 214, 57)},
    {ColorGroup::month, u"Week number text", rgb(247, 0, 0)},
    {ColorGroup::month, u"Line color", rgb(190, 188, 175)},
    {ColorGroup::month, u"Off month background", rgb(242, 255, 144)},
    {ColorGroup::month, u"Off month text", rgb(128, 128, 128)},
    {ColorGroup::day, u"Header background", rgb(9, 9, 165)},
    {ColorGroup::day, u"Header text", rgb(255, 255, 255)},
    {ColorGroup::day, u"'All Day' text", rgb(0, 0, 170)},
    {ColorGroup::day, u"Appointment text", rgb(0, 0, 0)},
    {ColorGroup::day, u"Row color 1", rgb(214, 222, 239)},
    {ColorGroup::day, u"Row color 2", rgb(247, 255, 247)},
    {ColorGroup::day, u"Line color", rgb(181, 198, 222)},
    {ColorGroup::day, u"'Location' text color", rgb(247, 0, 0)},
    {ColorGroup::day, u"Expired appointment text", rgb(128, 128, 128)},
    {ColorGroup::year, u"Year header background", rgb(255, 255, 255)},
    {ColorGroup::year, u"Year header text", rgb(0, 0, 170)},
    {ColorGroup::year, u"Month header background", rgb(0, 0, 165)},
    {ColorGroup::year, u"Month header text", rgb(255, 255, 255)},
    {ColorGroup::year, u"Month background 1", rgb(255, 255, 255)},
    {ColorGroup::year, u"Month background 2", rgb(231, 231, 181)},
    {ColorGroup::year, u"Day text", rgb(0, 0, 0)},
    {ColorGroup::year, u"Appointment day text", rgb(255, 0, 0)},
    {ColorGroup::year, u"Today date background", rgb(255, 214, 57)},
    {ColorGroup::popup_schedule, u"Header background", rgb(0, 0, 165)},
    {ColorGroup::popup_schedule, u"Header text", rgb(255, 255, 255)},
    {ColorGroup::popup_schedule, u"Window background", rgb(255, 255, 255)},
    {ColorGroup::popup_schedule, u"Window text", rgb(0, 0, 0)},
    {ColorGroup::popup_notes, u"Window background", rgb(255, 255, 132)},
    {ColorGroup::popup_notes, u"Text Color", rgb(0, 0, 0)},
}};

}  // namespace

const std::array<ColorRow, kColorSlots>& color_table() { return kColors; }

void ResetItemColors(SettingsRecord& settings, int group) {
  for (std::size_t slot = 0; slot < kColors.size(); ++slot)
    if (group == kAllColorGroups || group == static_cast<int>(kColors[slot].group))
      settings.item_colors[slot] = kColors[slot].factory;
}

void LoadItemColors(SettingsRecord& settings, Registry& registry) {
  ResetItemColors(settings, kAllColorGroups);
  load_settings_of(LoadStep::colors, registry, {}, settings);
}

bool HasItemColors(Registry& registry) {
  for (int slot = 0; slot < kColorSlots; ++slot) {
    Color stored = 0;
    if (ReadItemColor(registry, format(u"itemcolor%d", slot), stored) == 0) return true;
  }
  return false;
}

bool ChooseItemColors(SettingsRecord& settings, Registry& registry, const ItemColors& colors) {
  const ItemColors before = settings.item_colors;
  settings.item_colors = colors;
  for (int slot = 0; slot < kColorSlots; ++slot) {
    const auto at = static_cast<std::size_t>(slot);
    if (colors[at] != before[at])
      WriteItemColor(registry, format(u"itemcolor%d", slot), colors[at]);
  }
  return colors != before;
}

}  // namespace orvello
