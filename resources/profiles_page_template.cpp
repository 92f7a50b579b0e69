#include "resources/profiles_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate profiles_page_dialog(Language language) {
  DialogTemplate dialog;
  dialog.id = kDialogProfilesPage;
  dialog.title = load_string(StringId::tab_profiles, language);
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
