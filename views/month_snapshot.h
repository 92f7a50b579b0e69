// Everything one drawing of the Month view needs, as a value: taken on the user-interface thread,
// drawn from on the drawing worker while settings and appointments change underneath.
#pragma once

#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "base/image.h"
#include "calendar/short_names.h"
#include "calendar/week_numbers.h"
#include "draw/screen_layout.h"
#include "settings/settings_record.h"
#include "store/row_key.h"
#include "store/store_session.h"
#include "views/month_layout.h"
#include "views/period_query.h"
#include "views/turn_arrows.h"

namespace orvello {

// An icon slot that has a label, and its picture; empty for an icon number past the strips.
struct MonthIconSlot {
  Text label;
  Image picture;
};

// An appointment that a day's cell names.
struct MonthLine {
  RowKey key;
  CalendarDate start = 0;
  bool all_day = false;
  Text time;  // at which it starts; empty on days after, and of one that has none
  Text subject;
  std::int32_t categories = 0;  // as in PeriodItem
  BusyStatus busy_status = BusyStatus::busy;
};
struct MonthCellLines {
  std::vector<MonthLine> first;
  int more = 0;  // appointments without a line
};
using MonthLines = std::vector<MonthCellLines>;  // by cell, or empty

struct MonthSnapshot {
  ScreenLayout screen;
  MonthLayoutInput layout;  // with the month and year shown
  MonthDayYear today;
  MonthDayYear selected;  // the day that the keyboard stands on
  bool focus_visible = false;
  MonthDayYear marked;  // under what the pointer does; year 0: none

  int calendarcolorstyle = 0;
  int coloroffdays = 0;
  int showindicator = 0;
  int showfree = 1;
  int showholiday = 0;
  int usecategorycolorforbar = 0;
  WeekNumberSettings weeks;
  ItemColors colors{};

  std::vector<YearNames> strip_names;  // the first choice that fits
  Text title_name;
  std::vector<WeekNames> day_names;  // likewise, by column
  TurnArrows arrows;
  std::vector<MonthIconSlot> icons;           // in slot order
  std::vector<CategoryProp> category_colors;  // of all labels that have one
  PeriodItems period;                         // empty when no pass wants them
  MonthLines lines;                           // empty where the cells have no room for them

  bool all_hidden = false;  // the days shown have appointments, but the profile lets none be seen
  Text note;                // that in words, else empty
  LocaleData locale;        // whose digits are shown

  Color color(ColorSlot slot) const { return colors[static_cast<std::size_t>(slot)]; }
};

// All but the appointments.
MonthSnapshot month_snapshot_without_items(const SettingsRecord& settings,
                                           const ScreenLayout& screen, int month, int year,
                                           const MonthDayYear& today);

// With the appointments of the grid's span, where a setting wants them drawn. Nothing when they
// could not be read.
std::optional<MonthSnapshot> take_month_snapshot(const ItemsSource& source,
                                                 const SettingsRecord& settings,
                                                 const ScreenLayout& screen, int month, int year,
                                                 const MonthDayYear& today);
std::optional<MonthSnapshot> take_month_snapshot(StoreSession& session,
                                                 const SettingsRecord& settings,
                                                 const ScreenLayout& screen, int month, int year,
                                                 const MonthDayYear& today);

}  // namespace orvello
