// Where everything of the Month view stands, and what a point on it means: sizes in, rectangles
// out.
#pragma once

#include <array>
#include <vector>

#include "calendar/dates.h"
#include "calendar/month_grid_range.h"
#include "draw/screen_layout.h"
#include "views/grid_target.h"

namespace orvello {

// A cell holds at most six icons, three to a row, from its bottom right corner leftwards.
inline constexpr int kIconsInCell = 6;

struct MonthLayoutInput {
  int month = 1;
  int year = 2000;
  int showdays = 0;
  int firstdayofweek = 0;
  bool icons = false;  // leave room for them
  int icon_cell = 9;
  bool bars = true;  // likewise
  friend bool operator==(const MonthLayoutInput&, const MonthLayoutInput&) = default;
};

struct MonthCell {
  int row = 0;
  int column = 0;
  Rect box;    // what a tap on the day hits
  Rect frame;  // with the lines that it shares with its right and lower neighbours
  Rect number;
  MonthDayYear date;
  bool off_month = false;
  bool drawn = true;  // the neighbouring months' days appear only with showdays
};

// Where the time indicator bars stand, measured from a cell's top left corner: the whole day runs
// from the left to the right edge. All-day appointments lie at the bottom, lanes above them.
struct BarBand {
  int left = 0;
  int width = 0;
  int all_day_top = 0;
  int all_day_height = 0;
  int axis_top = 0;  // a hairline between the two, where there is room: else axis_height is 0
  int axis_height = 0;
  int lanes = 1;
  int lanes_bottom = 0;  // below lane 0; lanes grow upwards
  int lane_pitch = 0;
  int lane_height = 0;
};
inline constexpr int kMaxBarLanes = 3;

// Where a cell names its first appointments, one a line, measured from its top left corner: between
// its number and its bars. A cell that is too small for names has no lines.
struct LineBand {
  int count = 0;
  int left = 0;
  int top = 0;
  int pitch = 0;
  int mark_width = 0;  // of the stripe in the appointment's colour, before the text
  int text_left = 0;
  int right = 0;
  bool times = false;  // there is room for them before the subjects
  FontSpec font;
};

struct MonthSnapshot;

struct MonthLayout {
  MonthLayout() = default;
  MonthLayout(const ScreenLayout& screen, const MonthLayoutInput& input);
  explicit MonthLayout(const MonthSnapshot& snapshot);

  ScreenLayout screen;
  MonthGrid grid;
  int month = 0;
  int year = 0;

  Rect strip;
  std::array<Rect, 12> months;
  int underline_y = 0;  // the middle of the line under the shown month's name
  Rect title_band;
  Rect title;
  Rect previous_year, next_year;  // the texts' boxes
  Rect previous_tap, next_tap;
  std::array<Rect, 7> day_names;
  int grid_top = 0;
  FontSpec number_font, week_number_font;
  std::vector<MonthCell> cells;    // row by row
  std::vector<Rect> week_numbers;  // one a row
  Size icon;
  BarBand bars;
  LineBand lines;
};

// The place of a cell's n-th icon, n from 1 to kIconsInCell.
Point month_icon_place(const MonthLayout& layout, int row, int column, int n);

// A cell's n-th line, n from 0.
Rect month_line_place(const MonthLayout& layout, const MonthCell& cell, int n);

// Days that are not drawn are not there.
GridTarget hit_month(const MonthLayout& layout, Point point);

}  // namespace orvello
