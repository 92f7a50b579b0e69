#include "resources/settings_templates.h"
#include "resources/times_page_ids.h"

namespace orvello {

DialogTemplate times_page_dialog(Language) {
  DialogTemplate dialog;
  dialog.id = kDialogTimesPage;
  dialog.title = u"Times";
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
