#include "resources/category_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate category_page_dialog(Language language) {
  DialogTemplate dialog;
  dialog.id = kDialogCategoryPage;
  dialog.title = load_string(StringId::tab_category, language);
  dialog.size = {kSettingsPageWidth, kSettingsPageHeight};
  return dialog;
}

}  // namespace orvello
