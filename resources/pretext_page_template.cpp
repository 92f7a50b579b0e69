#include "resources/pretext_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate pretext_page_dialog(Language) {
  DialogTemplate dialog;
  dialog.id = kDialogPretextPage;
  dialog.title = u"Pretext";
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
