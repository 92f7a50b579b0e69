#include "resources/profiles_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate profiles_page_dialog(Language) {
  DialogTemplate dialog;
  dialog.id = kDialogProfilesPage;
  dialog.title = u"Profiles";
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
