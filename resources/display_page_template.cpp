#include "resources/display_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate display_page_dialog(Language language) {
  DialogTemplate dialog;
  dialog.id = kDialogDisplayPage;
  dialog.title = load_string(StringId::tab_display, language);
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
