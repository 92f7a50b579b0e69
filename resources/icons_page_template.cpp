#include "resources/icons_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate icons_page_dialog(Language language) {
  DialogTemplate dialog;
  dialog.id = kDialogIconsPage;
  dialog.title = load_string(StringId::tab_icons, language);
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
