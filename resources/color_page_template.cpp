#include "resources/color_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate color_page_dialog(Language) {
  DialogTemplate dialog;
  dialog.id = kDialogColorPage;
  dialog.title = u"Color";
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
