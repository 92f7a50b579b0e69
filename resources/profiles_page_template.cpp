#include "resources/profiles_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

// The name has no limit here: a stored one is shown whole, and a new one is cut by the page.
DialogTemplate profiles_page_dialog(Language language) {
  using Kind = ControlTemplate::Kind;
  using Across = ControlTemplate::Across;
  constexpr int kInner = kSettingsPageWidth - 8, kRow = 27, kList = 84;
  const auto text = [language](StringId id) { return load_string(id, language); };
  DialogTemplate dialog;
  dialog.id = kDialogProfilesPage;
  dialog.title = text(StringId::tab_profiles);
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  dialog.controls = {
      {Kind::label, kProfilesLabel, text(StringId::profiles_profile), {4, 4, 56, kRow}},
      {Kind::combo, kProfilesName, {}, {60, 4, kInner - 56, kRow}, Across::stretch},
      {Kind::button, kProfilesSave, text(StringId::profiles_save), {4, 35, 76, kRow}},
      {Kind::button,
       kProfilesDelete,
       text(StringId::profiles_delete),
       {84, 35, 72, kRow},
       Across::center},
      {Kind::button,
       kProfilesClear,
       text(StringId::profiles_clear),
       {160, 35, 76, kRow},
       Across::right},
      {Kind::label,
       kProfilesHint,
       text(StringId::profiles_labels),
       {4, 66, kInner, 16},
       Across::stretch},
      {Kind::multi_list,
       kProfilesList,
       {},
       {4, kList, kInner, kSettingsPageHeight - 4 - kList},
       Across::stretch,
       ControlTemplate::Down::stretch},
  };
  return dialog;
}

}  // namespace orvello
