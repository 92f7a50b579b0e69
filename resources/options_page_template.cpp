#include "resources/options_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate options_page_dialog(Language language) {
  DialogTemplate dialog;
  dialog.id = kDialogOptionsPage;
  dialog.title = load_string(StringId::tab_options, language);
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
