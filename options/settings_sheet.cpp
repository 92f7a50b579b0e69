#include "options/settings_sheet.h"

#include "options/panel_page.h"
#include "options/settings_pages.h"
#include "resources/settings_templates.h"

namespace orvello {
namespace {

struct PageRow {
  DialogTemplate (*dialog)(Language language);
  std::unique_ptr<DialogProcedure> (*make)(const OptionsContext& context);
};

constexpr PageRow kPages[] = {
    {display_page_dialog, make_display_page},   {options_page_dialog, make_options_page},
    {pretext_page_dialog, make_pretext_page},   {profiles_page_dialog, make_profiles_page},
    {times_page_dialog, make_times_page},       {color_page_dialog, make_color_page},
    {category_page_dialog, make_category_page}, {icons_page_dialog, make_icons_page},
};

}  // namespace

int ShowSettingsSheet(const OptionsContext& context) {
  std::vector<std::unique_ptr<DialogProcedure>> procedures;
  std::vector<SheetPage> pages;
  for (const PageRow& row : kPages) {
    SheetPage page{row.dialog(context.language())};
    procedures.push_back(
        std::make_unique<PanelPage>(page.dialog, row.make(context), context.host.input));
    page.procedure = procedures.back().get();
    pages.push_back(std::move(page));
  }
  const int result = context.host.dialogs.run_sheet(u"Orvello", pages);
  if (result == kSheetFailed) context.host.boxes.show(u"error in PropertySheet()", u"error");
  return result;
}

}  // namespace orvello
