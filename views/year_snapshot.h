// Everything one drawing of the Year view needs, as a value: taken on the user-interface thread,
// drawn from on the drawing worker while settings and appointments change underneath.
#pragma once

#include <array>
#include <optional>

#include "base/image.h"
#include "calendar/short_names.h"
#include "draw/screen_layout.h"
#include "settings/settings_record.h"
#include "store/store_session.h"
#include "views/turn_arrows.h"
#include "views/year_grid.h"
#include "views/year_layout.h"
#include "views/year_marks.h"

namespace orvello {

struct YearSnapshot {
  ScreenLayout screen;
  int year = 2000;
  MonthDayYear today;
  MonthDayYear selected;  // the day that the keyboard stands on
  bool focus_visible = false;
  MonthDayYear marked;  // under what the pointer does; year 0: none
  int firstdayofweek = 0;
  int coloryearview = 0;
  ItemColors colors{};
  MonthNames month_names;
  std::array<Text, 12> short_names;
  WeekNames day_letters;  // by column
  TurnArrows arrows;
  YearGrid grid;
  YearMarks marks;  // empty unless coloryearview is 1

  Text note;          // why no day is marked although there are appointments, else empty
  LocaleData locale;  // whose digits are shown

  Color color(ColorSlot slot) const { return colors[static_cast<std::size_t>(slot)]; }
};

// All but the marks.
YearSnapshot year_snapshot_without_marks(const SettingsRecord& settings, const ScreenLayout& screen,
                                         int year, const MonthDayYear& today,
                                         const MonthDayYear& selected, bool focus_visible);

// With the marks, where the setting wants them drawn. Nothing when they could not be read.
std::optional<YearSnapshot> take_year_snapshot(const ItemsSource& source,
                                               const SettingsRecord& settings,
                                               const ScreenLayout& screen, int year,
                                               const MonthDayYear& today,
                                               const MonthDayYear& selected, bool focus_visible);
std::optional<YearSnapshot> take_year_snapshot(StoreSession& session,
                                               const SettingsRecord& settings,
                                               const ScreenLayout& screen, int year,
                                               const MonthDayYear& today,
                                               const MonthDayYear& selected, bool focus_visible);

}  // namespace orvello
