#include "resources/display_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate display_page_dialog(Language) {
  DialogTemplate dialog;
  dialog.id = kDialogDisplayPage;
  dialog.title = u"Display";
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
