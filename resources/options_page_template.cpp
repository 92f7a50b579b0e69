// How the program opens and counts, and how days and months look.
#include "resources/options_page_ids.h"
#include "resources/settings_column.h"
#include "resources/settings_templates.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;

constexpr int kCategoryLimit = 39, kClockLimit = 20;
constexpr int kPreviewHeight = 54;

}  // namespace

DialogTemplate options_page_dialog(Language language) {
  SettingsColumn column(language);
  column.start_section();
  column.labelled(Kind::drop_list, kOptionsStartView, StringId::options_start_view,
                  kOptionsStartViewLabel);
  column.labelled(Kind::drop_list, kOptionsDayColors, StringId::options_day_colors,
                  kOptionsDayColorsLabel);
  column.labelled(Kind::drop_list, kOptionsHeader, StringId::options_header, kOptionsHeaderLabel);
  column.labelled(Kind::combo, kOptionsClock, StringId::options_clock, kOptionsClockLabel).limit =
      kClockLimit;
  column.labelled(Kind::combo, kOptionsCategory, StringId::options_category, kOptionsCategoryLabel)
      .limit = kCategoryLimit;
  column.box(kOptionsDefault, StringId::options_default);
  column.start_section();
  column.labelled(Kind::drop_list, kOptionsFirstDay, StringId::options_first_day,
                  kOptionsFirstDayLabel);
  column.labelled(Kind::drop_list, kOptionsMonthColors, StringId::options_month_colors,
                  kOptionsMonthColorsLabel);
  column.area(Kind::custom, kOptionsPreview, StringId::options_preview, kPreviewHeight);
  column.labelled(Kind::drop_list, kOptionsWeekNumber, StringId::options_week_number,
                  kOptionsWeekNumberLabel);
  // Last, so that nothing gapes while it is hidden.
  column.labelled(Kind::date_picker, kOptionsWeekOne, StringId::options_week_one,
                  kOptionsWeekOneLabel);
  DialogTemplate dialog = std::move(column).dialog(kDialogOptionsPage, StringId::tab_options);
  for (ControlTemplate& control : dialog.controls) {
    if (control.id == kOptionsWeekOne || control.id == kOptionsWeekOneLabel) control.hidden = true;
    if (control.id == kOptionsWeekOneLabel) control.color = kBlack;
  }
  return dialog;
}

}  // namespace orvello
