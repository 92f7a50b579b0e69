// What the views show: a section for the Day view, one for the others.
#include "resources/display_page_ids.h"
#include "resources/settings_column.h"
#include "resources/settings_templates.h"

namespace orvello {

DialogTemplate display_page_dialog(Language language) {
  SettingsColumn column(language);
  column.start_section(StringId::day_view, kDisplayDayHeading);
  column.labelled(ControlTemplate::Kind::drop_list, kDisplayFontSize, StringId::display_font_size,
                  kDisplayFontSizeLabel);
  column.box(kDisplayLocation, StringId::display_location);
  column.box(kDisplayWrap, StringId::display_wrap);
  column.box(kDisplayExpired, StringId::display_expired);
  column.box(kDisplayCategoryColors, StringId::display_category_colors);
  column.box(kDisplayCategoryIcon, StringId::display_category_icon);
  column.box(kDisplayAlarm, StringId::display_alarm);
  column.box(kDisplayJulian, StringId::display_julian);
  column.start_section(StringId::month_view, kDisplayMonthHeading);
  column.box(kDisplayAllDates, StringId::display_all_dates);
  column.box(kDisplayDaysOff, StringId::display_days_off);
  column.box(kDisplayMonthIcons, StringId::display_month_icons);
  column.box(kDisplayTimePanel, StringId::display_time_panel);
  column.box(kDisplayFree, StringId::display_free);
  column.heading(StringId::year_view, kDisplayYearHeading);
  column.box(kDisplayYearColors, StringId::display_year_colors);
  column.heading(StringId::display_general, kDisplayGeneralHeading);
  column.box(kDisplayDayLabel, StringId::display_day_label);
  column.box(kDisplayClearType, StringId::display_cleartype);
  return std::move(column).dialog(kDialogDisplayPage, StringId::tab_display);
}

}  // namespace orvello
