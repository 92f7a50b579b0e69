#include "resources/settings_templates.h"

namespace orvello {

std::vector<DialogTemplate> settings_pages(Language language) {
  return {display_page_dialog(language),  options_page_dialog(language),
          pretext_page_dialog(language),  profiles_page_dialog(language),
          times_page_dialog(language),    color_page_dialog(language),
          category_page_dialog(language), icons_page_dialog(language)};
}

}  // namespace orvello
