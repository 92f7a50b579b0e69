// Where everything of the Year view stands, and what a point on it means: sizes in, rectangles out.
#pragma once

#include <array>
#include <vector>

#include "draw/screen_layout.h"
#include "views/grid_target.h"
#include "views/year_grid.h"

namespace orvello {

struct YearBlock {
  Rect box;    // the blocks tile what lies below the header
  Rect strip;  // the month's name, across the top
  Rect names;  // the days' letters over the grid; empty where there is no room for them
  Rect grid;   // seven by five cells, centred; the fifth row may reach into the margin below it
  int first_column = 0;
  int length = 0;  // days
};

struct YearSnapshot;

struct YearLayout {
  YearLayout() = default;
  // `with_note`: the page says something, on a line below the blocks.
  YearLayout(const ScreenLayout& screen, int year, int firstdayofweek, bool with_note = false);
  explicit YearLayout(const YearSnapshot& snapshot);

  ScreenLayout screen;
  int year = 0;

  Rect header;
  Rect title;
  Rect previous_tap, next_tap;  // an arrow stands in the outer part of each
  Rect previous_arrow, next_arrow;

  int block_columns = 3;
  Size cell;              // the same in all blocks
  int names_height = 0;   // of the days' letters
  int double_height = 0;  // of a cell that holds two days above each other
  int double_split = 0;   // of its upper part
  std::array<YearBlock, 12> months;
  Rect note;                       // empty without one
  std::vector<int> weekend_edges;  // the columns at whose left a weekend begins or ends
};

// What a day covers, in a double cell one half of it. Empty for a date that the year lacks.
Rect cell_place(const YearLayout& layout, const MonthDayYear& date);

// The margins beside a grid belong to its outer cells; a cell without a day means the month.
GridTarget hit_year(const YearLayout& layout, Point point);

}  // namespace orvello
