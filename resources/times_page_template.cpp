#include "resources/settings_templates.h"
#include "resources/times_page_ids.h"

namespace orvello {

DialogTemplate times_page_dialog(Language language) {
  DialogTemplate dialog;
  dialog.id = kDialogTimesPage;
  dialog.title = load_string(StringId::tab_times, language);
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
