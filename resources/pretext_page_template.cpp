#include "resources/pretext_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate pretext_page_dialog(Language language) {
  using Kind = ControlTemplate::Kind;
  using Across = ControlTemplate::Across;
  using Down = ControlTemplate::Down;
  constexpr int kInner = kSettingsPageWidth - 8, kRow = 27, kButton = 80, kList = 66;
  constexpr int kRight = kSettingsPageWidth - 4 - kButton, kBottom = kSettingsPageHeight - 4 - kRow;
  const auto text = [language](StringId id) { return load_string(id, language); };
  DialogTemplate dialog;
  dialog.id = kDialogPretextPage;
  dialog.title = text(StringId::tab_pretext);
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  dialog.controls = {
      {Kind::drop_list, kPretextChoice, {}, {4, 4, kInner, kRow}, Across::stretch},
      {Kind::edit, kPretextEdit, {}, {4, 35, kRight - 8, kRow}, Across::stretch},
      {Kind::default_button,
       kPretextAdd,
       text(StringId::pretext_add),
       {kRight, 35, kButton, kRow},
       Across::right},
      {Kind::multi_list,
       kPretextList,
       {},
       {4, kList, kInner, kBottom - 4 - kList},
       Across::stretch,
       Down::stretch},
      {Kind::button,
       kPretextDelete,
       text(StringId::pretext_delete),
       {kRight, kBottom, kButton, kRow},
       Across::right,
       Down::bottom},
  };
  dialog.controls[1].limit = 80;
  return dialog;
}

}  // namespace orvello
