#include "resources/icons_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate icons_page_dialog(Language) {
  DialogTemplate dialog;
  dialog.id = kDialogIconsPage;
  dialog.title = u"Icons";
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
