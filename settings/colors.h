// The table of chosen colours: labels, groups and factory colours.
#pragma once

#include "base/text.h"
#include "ports/registry.h"
#include "settings/settings_record.h"

namespace orvello {

enum class ColorGroup { month, day, year, popup_schedule, popup_notes };
inline constexpr int kAllColorGroups = 1000;

// A label is shown on the Color page within its group: it repeats between groups on purpose.
struct ColorRow {
  ColorGroup group;
  TextView label;
  Color factory;
};
const std::array<ColorRow, kColorSlots>& color_table();

// Restores one group (0 to 4) or all (1000) in the record; the registry is not touched.
void ResetItemColors(SettingsRecord& settings, int group);
void LoadItemColors(SettingsRecord& settings, Registry& registry);
// Whether any of them is stored. True also where the settings have no key to be kept in.
bool HasItemColors(Registry& registry);
// Into the record, and those that changed into the registry. Whether any did.
bool ChooseItemColors(SettingsRecord& settings, Registry& registry, const ItemColors& colors);

}  // namespace orvello
