#include "resources/category_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate category_page_dialog(Language) {
  DialogTemplate dialog;
  dialog.id = kDialogCategoryPage;
  dialog.title = u"Category";
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
