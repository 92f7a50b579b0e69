// Every preference, filled once at start-up and read directly by all screens. A field that is
// stored bears its stored name. Whoever changes one writes the field first and then the registry
// value.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/image.h"
#include "base/text.h"
#include "calendar/date_text.h"
#include "calendar/dates.h"
#include "calendar/locale_data.h"
#include "calendar/time_slots.h"
#include "settings/color_slots.h"

namespace orvello {

inline constexpr int kDisplayIconSlots = 48;
inline constexpr std::size_t kLabelLength = 29;        // characters of a category label
inline constexpr std::size_t kProfileNameLength = 31;  // characters of a profile's name
inline constexpr TextView kAllProfile = u"All";
inline constexpr TextView kNoCategory = u"(None)";

// What is kept beside a category label: its display colour, and whether views use it. A label for
// which nothing is stored has no colour in them; it gets one when it comes into being, or when the
// Category page, which shows one for it, is confirmed.
inline constexpr std::int32_t kCategoryColorUnused = 1;
struct CategoryProp {
  Text label;
  std::int32_t color = 0;
  std::int32_t flag = 0;  // 16 bits; with kCategoryColorUnused views do without the colour
  bool uses_color() const { return (flag & kCategoryColorUnused) == 0; }
  friend bool operator==(const CategoryProp&, const CategoryProp&) = default;
};

struct SettingsRecord {
  std::int32_t timeformat = 0;  // 0 12-hour clock, 1 24-hour clock
  std::int32_t cleartype = 0;
  std::int32_t showdays = 0;
  std::int32_t colorexpired = 0;
  std::int32_t showindicator = 0;
  std::int32_t showfree = 1;
  std::int32_t showholiday = 0;
  std::int32_t showlocation = 0;
  std::int32_t wrapsubject = 0;
  std::int32_t coloryearview = 0;
  std::int32_t showdaylabel = 0;
  std::int32_t timeA = 12;  // half-hour slots
  std::int32_t timeB = 24;
  std::int32_t timeC = 34;
  std::int32_t timeD = 42;
  std::int32_t rowcolorindex = 0;       // 0 by rows, 1 by times, 2 by category, 3 none
  std::int32_t calendarcolorstyle = 0;  // 0 alternate rows, 1 weekend days
  std::int32_t alarmflag = 1;
  std::int32_t startmode = 1;  // 0 Day, 1 Month, 2 Year
  Text activeprofilename = Text(kAllProfile);
  std::int32_t weeknumberformat = 0;  // 0 none, 1 ISO, 2 from weekstartmonth/weekstartday
  std::int32_t weekstartmonth = 1;
  std::int32_t weekstartday = 1;
  std::int32_t firstdayofweek = 0;  // 0 Sunday, 1 Monday
  std::int32_t dvfontsize = 12;     // 6 to 15
  std::int32_t coloroffdays = 0;
  std::int32_t categoryiconflag = 0;
  std::int32_t usecategorycolorforbar = 0;
  std::int32_t dayviewheaderformat = 3;  // 0 to 5
  Text strdefcategory = Text(kNoCategory);
  std::int32_t defremindme = 0;
  std::int32_t defremindtime = 30;
  std::int32_t defremindunits = 0;  // 0 minutes, 1 hours, 2 days, 3 weeks
  std::int32_t defaultscalendar = 0;
  Text strprevlocation;
  std::int32_t juliandate = 0;
  ItemColors item_colors{};
  std::array<std::int32_t, kDisplayIconSlots> displayicon{};
  std::array<Text, kDisplayIconSlots> displayiconstring;

  // Only the slots of these two are stored; the record keeps the times of day.
  HourMinute default_start{12, 0};
  HourMinute default_end{12, 30};

  // timeA to timeD as fractions of a day, rounded through single precision.
  std::array<CalendarDate, 4> time_fraction{};

  MonthDayYear today;  // at start-up, moved by the day-change timer
  MonthDayYear shown;  // what the views show

  int icon_cell = 9;  // pixels of an icon's side
  Image builtin_icons;
  int builtin_icon_count = 0;
  bool has_user_icons = false;
  Image user_icons;
  int total_icon_count = 0;  // icon numbers run through the built-in strip, then the user's
  Image notes_glyph;
  Image reminder_glyph;

  LocaleData locale;  // the date and time conventions
  MonthNames month_names;

  std::vector<Text> profile_labels;  // categories of the active profile; unused while it is "All"
  bool profile_unread = false;       // they could not be read: it hides nothing
  std::vector<CategoryProp> category_props;

  Color color(ColorSlot slot) const { return item_colors[static_cast<std::size_t>(slot)]; }
};

}  // namespace orvello
