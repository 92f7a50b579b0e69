#include "resources/options_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate options_page_dialog(Language) {
  DialogTemplate dialog;
  dialog.id = kDialogOptionsPage;
  dialog.title = u"Options";
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
