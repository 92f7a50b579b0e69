#include "resources/color_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate color_page_dialog(Language language) {
  DialogTemplate dialog;
  dialog.id = kDialogColorPage;
  dialog.title = load_string(StringId::tab_color, language);
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
