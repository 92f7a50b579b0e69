#include "resources/pretext_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate pretext_page_dialog(Language language) {
  DialogTemplate dialog;
  dialog.id = kDialogPretextPage;
  dialog.title = load_string(StringId::tab_pretext, language);
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
