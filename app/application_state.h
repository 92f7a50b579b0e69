// What the views and the dispatch share about the running program.
#pragma once

#include <cstdint>

#include "base/geometry.h"
#include "calendar/calendar_date.h"
#include "calendar/dates.h"
#include "draw/screen_layout.h"
#include "editor/appointment_editor.h"
#include "settings/view_mode.h"

namespace orvello {

// The device's calendar dates; a person who holds a key that turns pages stops there.
inline constexpr int kFirstYear = 1601, kLastYear = 4499;

struct ApplicationState {
  ViewMode view_mode = ViewMode::none_yet;
  ViewMode previous_view_mode = ViewMode::month;  // from which the Day view was entered
  MonthDayYear current;                           // the date the views show
  MonthDayYear today;
  EditorChoice to_edit;   // by the New command
  int store_changes = 0;  // how many the store has told of

  bool landscape = false;
  int platform_generation = 0;
  int dpi_x = 96;
  int dpi_y = 96;
  ScreenLayout layout;
  ScreenLayout form_layout;  // the same for what is drawn on forms
};

// 0-3 from the operating system's version.
int platform_generation(int os_major, int os_minor);

// The room for a view: the work area less the menu bar and a gap of 2 or 4 pixels.
Size work_size(const Rect& work_area, int menu_bar_height, int dpi_x);

// The menu bar's height: room for a finger, a little over 7 mm.
int menu_bar_height(int dpi_y);

}  // namespace orvello
