#include "settings/setting_table.h"

#include <algorithm>
#include <limits>

#include "settings/colors.h"
#include "settings/program_files.h"
#include "settings/registry_access.h"

namespace orvello {
namespace {

using S = SettingsRecord;
using Fields = std::vector<SettingRow>;
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
constexpr int kLastSlot = kTimeSlots - 1;

SettingRow flag(LoadStep step, TextView name, std::int32_t value, SettingField field,
                const char* label) {
  return {name, SettingKind::flag, 1, SettingDefault::fixed, value, u"", 0, 1, step, field, label};
}

SettingRow number(LoadStep step, TextView name, std::int32_t value, std::int32_t least,
                  std::int32_t most, SettingField field, const char* label) {
  return {name, SettingKind::number, 1, SettingDefault::fixed, value, u"", least, most, step, field,
          label};
}

SettingRow text(LoadStep step, TextView name, TextView value, std::int32_t length,
                SettingField field, const char* label) {
  return {name, SettingKind::text, 1, SettingDefault::fixed, 0, value, 0, length, step, field,
          label};
}

void add_flags(Fields& rows) {
  const LoadStep step = LoadStep::flags;
  rows.push_back({u"timeformat", SettingKind::number, 1, SettingDefault::locale_clock, 0, u"", 0, 1,
                  step, &S::timeformat, "clock: 0 12-hour, 1 24-hour"});
  rows.push_back(
      flag(step, u"cleartype", 0, &S::cleartype, "smooth text; takes effect after a restart"));
  rows.push_back(flag(step, u"showdays", 0, &S::showdays, "all dates in the month grid"));
  rows.push_back(
      flag(step, u"colorexpired", 0, &S::colorexpired, "ended appointments in the expired colour"));
  rows.push_back(flag(step, u"showindicator", 0, &S::showindicator, "time panel"));
  rows.push_back(flag(step, u"showfree", 1, &S::showfree,
                      "indicator of all-day appointments shown as free time"));
  rows.push_back(flag(step, u"showholiday", 0, &S::showholiday, "icons in the Month view"));
  rows.push_back(flag(step, u"showlocation", 0, &S::showlocation, "location in the day list"));
  rows.push_back(flag(step, u"wrapsubject", 0, &S::wrapsubject, "long subjects wrap"));
  rows.push_back(flag(step, u"coloryearview", 0, &S::coloryearview,
                      "days with appointments are coloured in the Year view"));
  rows.push_back(flag(step, u"showdaylabel", 0, &S::showdaylabel, "day in the popup's header"));
  rows.push_back(number(step, u"timeA", 12, 0, kLastSlot, &S::timeA, "slot: morning starts"));
  rows.push_back(number(step, u"timeB", 24, 0, kLastSlot, &S::timeB, "slot: day starts"));
  rows.push_back(number(step, u"timeC", 34, 0, kLastSlot, &S::timeC, "slot: evening starts"));
  rows.push_back(number(step, u"timeD", 42, 0, kLastSlot, &S::timeD, "slot: evening ends"));
}

void add_tables(Fields& rows) {
  rows.push_back(number(LoadStep::row_colors, u"rowcolorindex", 0, 0, 3, &S::rowcolorindex,
                        "day list colours: 0 by rows, 1 by times, 2 by category, 3 none"));
  rows.push_back(number(LoadStep::row_colors, u"calendarcolorstyle", 0, 0, 1,
                        &S::calendarcolorstyle, "month shading: 0 alternate rows, 1 weekend days"));
  rows.push_back({u"displayicon%d", SettingKind::number, kDisplayIconSlots,
                  SettingDefault::slot_number, 0, u"", 0, kMost, LoadStep::display_icons,
                  &S::displayicon, "icon number of the display-icon slot"});
  rows.push_back({u"displayiconstring%d", SettingKind::text, kDisplayIconSlots,
                  SettingDefault::fixed, 0, u"", 0, kLabelLength, LoadStep::display_icons,
                  &S::displayiconstring, "category label bound to the slot"});
  rows.push_back(number(LoadStep::default_times, u"defaultStartTimeIndex", 24, 0, kLastSlot,
                        &S::default_start, "slot: start of a new appointment"));
  rows.push_back(number(LoadStep::default_times, u"defaultEndTimeIndex", 25, 0, kLastSlot,
                        &S::default_end, "slot: end of a new appointment"));
}

void add_views(Fields& rows) {
  const LoadStep step = LoadStep::views;
  rows.push_back(flag(step, u"alarmflag", 1, &S::alarmflag, "alarm icon in the Day view"));
  rows.push_back(number(step, u"startmode", 1, 0, 99, &S::startmode,
                        "first view: 0 Day, 1 Month, 2 Year; none for others"));
  rows.push_back(text(step, u"activeprofilename", kAllProfile, kProfileNameLength,
                      &S::activeprofilename, "active profile"));
  rows.push_back(number(step, u"weeknumberformat", 0, 0, 2, &S::weeknumberformat,
                        "week numbers: 0 none, 1 ISO 8601, 2 from the date below"));
  rows.push_back(number(step, u"weekstartmonth", 1, 1, 12, &S::weekstartmonth,
                        "month in which week 1 begins"));
  rows.push_back(number(step, u"weekstartday", 1, 1, 31, &S::weekstartday,
                        "day of the month on which week 1 begins"));
  rows.push_back(number(step, u"firstdayofweek", 0, 0, 1, &S::firstdayofweek,
                        "weeks start on: 0 Sunday, 1 Monday; a new calendar's as in its country"));
  rows.push_back(number(step, u"dvfontsize", 12, 6, 15, &S::dvfontsize,
                        "points of the day list's and the popups' text"));
  rows.push_back(flag(step, u"coloroffdays", 0, &S::coloroffdays,
                      "the days of the weekend in the week numbers' colour"));
  rows.push_back(
      flag(step, u"categoryiconflag", 0, &S::categoryiconflag, "category icon in the Day view"));
  rows.push_back(flag(step, u"usecategorycolorforbar", 0, &S::usecategorycolorforbar,
                      "category colours for the bars of the Month view and in the day list"));
  rows.push_back({u"itemcolor%d", SettingKind::color, kColorSlots, SettingDefault::factory_color, 0,
                  u"", 0, 0xFFFFFF, LoadStep::colors, &S::item_colors, "colour, 0x00BBGGRR"});
  rows.push_back({u"dayviewheaderformat", SettingKind::number, 1, SettingDefault::locale_long_date,
                  3, u"", 0, 5, LoadStep::day_header, &S::dayviewheaderformat,
                  "day header: 0 m d y, 1 d m y, 2 y m d; 3 to 5 the same after the weekday"});
}

void add_new_appointments(Fields& rows) {
  const LoadStep step = LoadStep::new_appointments, window = LoadStep::by_its_window;
  rows.push_back(text(step, u"strdefcategory", kNoCategory, 39, &S::strdefcategory,
                      "category of a new appointment"));
  rows.push_back(flag(step, u"defremindme", 0, &S::defremindme, "new appointments remind"));
  rows.push_back(number(step, u"defremindtime", 30, 0, kMost, &S::defremindtime,
                        "reminder lead of a new appointment"));
  rows.push_back(number(step, u"defremindunits", 0, 0, 3, &S::defremindunits,
                        "its unit: 0 minutes, 1 hours, 2 days, 3 weeks"));
  rows.push_back(flag(step, u"defaultscalendar", 0, &S::defaultscalendar,
                      "this program is the device's calendar"));
  rows.push_back(text(step, u"strprevlocation", u"", kLongestText, &S::strprevlocation,
                      "location entered last"));
  rows.push_back(flag(step, u"juliandate", 0, &S::juliandate, "day of the year in the Day view"));
  rows.push_back(text(window, u"organizername", u"", 40, {},
                      "name under which meeting requests are sent; else EMAIL's, the account's"));
  rows.push_back(text(window, u"organizeraddress", u"", 254, {},
                      "address of e-mail that they come from; else EMAIL, DEBEMAIL, or asked for"));
  rows.push_back(text(window, u"sendmailcommand", u"", 255, {},
                      "command that sends them, such as /usr/sbin/sendmail; it is given -t -i and "
                      "the message; empty: the desktop's mail program"));
  rows.push_back(number(window, u"colorselectionmode", 0, 0, 4, {},
                        "colour group last shown on the Color page"));
  rows.push_back(number(window, u"colorpickerselectionmode", 1, 0, 2, {},
                        "colour picker: 0 red, green, blue; 1 palette; 2 hue"));
  rows.push_back(flag(window, u"abcbarshow", 0, {}, "letter bar in the chooser"));
  rows.push_back(flag(window, u"adddeletebarshow", 0, {}, "add and delete bar in the chooser"));
}

}  // namespace

const std::vector<SettingRow>& setting_table() {
  static const Fields rows = [] {
    Fields made;
    add_flags(made);
    add_tables(made);
    add_views(made);
    add_new_appointments(made);
    return made;
  }();
  return rows;
}

const SettingRow* find_setting(TextView name) {
  for (const SettingRow& row : setting_table())
    if (row.name == name) return &row;
  return nullptr;
}

Text setting_name(const SettingRow& row, int slot) { return format(row.name, slot); }

std::int32_t default_number(const SettingRow& row, int slot, const LocaleData& locale) {
  switch (row.rule) {
    case SettingDefault::slot_number:
      return slot;
    case SettingDefault::factory_color:
      return static_cast<std::int32_t>(color_table()[static_cast<std::size_t>(slot)].factory);
    case SettingDefault::locale_clock:
      return LocaleUses24HourClock(locale) ? 1 : 0;
    case SettingDefault::locale_long_date:
      return row.default_number + static_cast<std::int32_t>(leading_number(locale.long_date_order));
    case SettingDefault::fixed:
      break;
  }
  return row.default_number;
}

bool in_range(const SettingRow& row, std::int32_t value) {
  return value >= row.least && value <= row.most;
}

}  // namespace orvello
