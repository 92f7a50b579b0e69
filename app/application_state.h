// What the views and the dispatch share about the running program.
#pragma once

#include <cstdint>

#include "base/geometry.h"
#include "calendar/calendar_date.h"
#include "calendar/dates.h"
#include "draw/screen_layout.h"

namespace orvello {

// 99 is set just before a view command is sent, so that the command always builds the view.
enum class ViewMode : int { day = 0, month = 1, year = 2, none_yet = 99 };

// The device's calendar dates; a person who holds a key that turns pages stops there.
inline constexpr int kFirstYear = 1601, kLastYear = 4499;

struct ApplicationState {
  ViewMode view_mode = ViewMode::none_yet;
  ViewMode previous_view_mode = ViewMode::month;  // from which the Day view was entered
  MonthDayYear current;                           // the date the views show
  MonthDayYear today;
  std::int32_t appointment_to_edit = 0;       // oid for the editor, 0 for a new appointment
  CalendarDate occurrence_to_edit = kNoDate;  // its start, where a row was touched
  bool whole_series = false;                  // the choice for a recurring one

  bool landscape = false;
  int platform_generation = 0;
  Size screen;
  int dpi_x = 96;
  int dpi_y = 96;
  ScreenLayout layout;

  int profile_count = 0;
};

// 0-3 from the operating system's version.
int platform_generation(int os_major, int os_minor);

// The room for a view: the work area less the menu bar and a gap of 2 or 4 pixels.
Size work_size(const Rect& work_area, int menu_bar_height, int dpi_x);

// The menu bar's height: room for a finger, a little over 7 mm.
int menu_bar_height(int dpi_y);

}  // namespace orvello
