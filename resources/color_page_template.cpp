// The Color page: the group's slots above what they look like, or beside it where there is room.
#include "resources/color_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Across = ControlTemplate::Across;
using Down = ControlTemplate::Down;

constexpr int kGrid = 4, kFingerSide = 27;
constexpr int kListTop = kGrid + kFingerSide + kGrid, kListHeight = 86;
constexpr int kPreviewTop = kListTop + kListHeight + kGrid;

}  // namespace

DialogTemplate color_page_dialog(Language language) {
  const auto text = [language](StringId id) { return load_string(id, language); };
  constexpr int width = kSettingsPageWidth;
  DialogTemplate dialog;
  dialog.id = kDialogColorPage;
  dialog.title = text(StringId::tab_color);
  dialog.size = {width, kSettingsPageHeight};
  const auto add = [&](Kind kind, int id, StringId name, const Rect& place, Across across) {
    dialog.controls.push_back({kind, id, text(name), place, across});
  };
  const Rect group{kGrid, kGrid, 120, kFingerSide};
  add(Kind::label, kColorGroupLabel, StringId::color_group_label, group, Across::stretch);
  dialog.controls.back().hidden = true;
  dialog.controls.push_back({Kind::drop_list, kColorGroupList, {}, group, Across::stretch});
  // Without a picture they show their texts; they are such buttons for the menus that they open.
  add(Kind::picture_button, kColorSchemes, StringId::color_scheme,
      {group.right() + kGrid, kGrid, 52, kFingerSide}, Across::right);
  add(Kind::picture_button, kColorReset, StringId::color_reset,
      {group.right() + 2 * kGrid + 52, kGrid, 52, kFingerSide}, Across::right);
  // From edge to edge: beside each other at 320 pixels they need all of it.
  add(Kind::report, kColorSlotList, StringId::color_slots, {0, kListTop, width, kListHeight},
      Across::stretch);
  dialog.controls.back().section = 1;
  dialog.controls.back().down = Down::stretch;
  add(Kind::custom, kColorPreview, StringId::color_preview,
      {0, kPreviewTop, width, kSettingsPageHeight - kPreviewTop}, Across::stretch);
  dialog.controls.back().section = 2;
  dialog.controls.back().down = Down::stretch;
  return dialog;
}

}  // namespace orvello
