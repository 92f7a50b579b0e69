#include "views/year_layout.h"

#include <algorithm>

#include "calendar/dates.h"
#include "views/period_note.h"

namespace orvello {

namespace {

// Digits are about this much wider than a row of them is high.
constexpr double kCellShape = 1.15;
// A block's height in rows: the strip takes about two, the double cells half a row below the fifth.
constexpr double kRowsOfBlock = 7.5;
constexpr int kHalfRowsOfGrid = 11;

int smallest_target(const ScreenLayout& screen) { return (screen.dpi_x * 7 * 10 + 253) / 254; }

void place_header(YearLayout& layout) {
  const ScreenLayout& screen = layout.screen;
  const int width = screen.work.width;
  layout.header = {0, 0, width, static_cast<int>(1.15 * screen.fonts.bold12.height)};
  const int height = layout.header.height;
  // As wide as the Month view's years; the year in the middle keeps room on a narrow window.
  const int tap = std::min(std::max(width / 4, smallest_target(screen)), width / 2);
  layout.previous_tap = {0, 0, tap, height};
  layout.next_tap = {width - tap, 0, tap, height};
  layout.title = {tap, 0, width - 2 * tap, height};
  const int arrow = 9 * screen.scale;
  const int edge = width / 25;
  const int top = (height - arrow) / 2;
  layout.previous_arrow = {edge, top, arrow, arrow};
  layout.next_arrow = {width - edge - arrow, top, arrow, arrow};
}

// Three by four on a portrait screen, four by three on a landscape one, six by two in a low window:
// whichever leaves the most room for a number.
int best_columns(Size area) {
  int best = 3;
  double best_room = -1;
  for (const int columns : {3, 4, 6, 2, 12, 1}) {
    const double width = area.width / (7.0 * columns);
    const double height = area.height * columns / (12 * kRowsOfBlock);
    const double room = std::min(width / kCellShape, height);
    if (room <= best_room) continue;
    best_room = room;
    best = columns;
  }
  return best;
}

void place_grid(YearBlock& block, const YearLayout& layout, int strip_height) {
  block.strip = {block.box.x, block.box.y, block.box.width, strip_height};
  block.names = {block.box.x, block.strip.bottom(), block.box.width, layout.names_height};
  const Size size{layout.cell.width * kYearColumns, layout.cell.height * kYearRows};
  // What a double cell needs below the grid stays there, the rest is shared with the top.
  const int spare = block.box.height - strip_height - layout.names_height - size.height;
  const int below = layout.double_height - layout.cell.height;
  const int top = std::max(0, spare - below) / 2;
  block.grid = {block.box.x + (block.box.width - size.width) / 2, block.names.bottom() + top,
                size.width, size.height};
  if (layout.names_height > 0) block.names.x = block.grid.x, block.names.width = size.width;
}

void place_blocks(YearLayout& layout, int firstdayofweek) {
  const ScreenLayout& screen = layout.screen;
  const Size area{screen.work.width,
                  std::max(0, screen.work.height - layout.header.height - layout.note.height)};
  layout.block_columns = best_columns(area);
  const int columns = layout.block_columns, rows = 12 / columns;

  // Sized for the smallest block, as their sizes differ by a pixel.
  const int width = area.width / columns, height = area.height / rows;
  const int strip = std::clamp(height * 2 / 11, screen.fonts.bold8.height * 6 / 5,
                               screen.fonts.bold11.height * 3 / 2);
  layout.cell.width = std::max(1, (width - 2 * screen.scale) / kYearColumns);
  // The days' letters stand over cells that stay high enough for numbers of an easy size.
  const int letters = screen.fonts.normal8.height * 5 / 4;
  const auto cell_height = [&](int above) { return (height - above) * 2 / kHalfRowsOfGrid; };
  const bool roomy = cell_height(strip + letters) >= screen.fonts.normal8.height * 3 / 2;
  layout.names_height = roomy ? letters : 0;
  layout.cell.height = std::max(1, cell_height(strip + layout.names_height));
  const int below = height - strip - layout.names_height - layout.cell.height * kYearRows;
  layout.double_height = layout.cell.height + std::clamp(below, 0, layout.cell.height);
  // The lower number gets what two digits of the cell's width need, at most half; the upper one
  // stays in its row where that leaves it there.
  const int digits =
      std::min(layout.cell.width * 4 / 5, font_height(14, screen.dpi_y)) + screen.scale;
  layout.double_split = std::max(layout.double_height / 2,
                                 std::min(layout.double_height - digits, layout.cell.height));

  for (int month = 1; month <= 12; ++month) {
    YearBlock& block = layout.months[static_cast<std::size_t>(month - 1)];
    const int column = (month - 1) % columns, row = (month - 1) / columns;
    const int left = column * area.width / columns, top = row * area.height / rows;
    block.box = {left, layout.header.height + top, (column + 1) * area.width / columns - left,
                 (row + 1) * area.height / rows - top};
    block.first_column = DisplayDayOfWeek(month, 1, layout.year, firstdayofweek);
    block.length = DaysInMonth(month - 1, layout.year);
    place_grid(block, layout, strip);
  }
}

GridTarget hit_block(const YearLayout& layout, int month, Point point) {
  const YearBlock& block = layout.months[static_cast<std::size_t>(month - 1)];
  const GridTarget around{GridTarget::Kind::month, month, {}};
  if (point.y < block.names.bottom()) return around;
  const int row = std::clamp((point.y - block.grid.y) / layout.cell.height, 0, kYearRows - 1);
  const int column = std::clamp((point.x - block.grid.x) / layout.cell.width, 0, kYearColumns - 1);
  int day = row * kYearColumns + column - block.first_column + 1;
  if (day < 1 || day > block.length) return around;
  const MonthDayYear later{month, day + 7, layout.year};
  const bool shared = row == kYearRows - 1 && later.day <= block.length;
  if (shared && point.y >= cell_place(layout, later).y) day = later.day;
  return {GridTarget::Kind::day, 0, {month, day, layout.year}};
}

}  // namespace

YearLayout::YearLayout(const ScreenLayout& screen_layout, int shown_year, int firstdayofweek,
                       bool with_note)
    : screen(screen_layout), year(shown_year) {
  place_header(*this);
  const int height = with_note ? std::min(note_height(screen), screen.work.height) : 0;
  note = {0, screen.work.height - height, screen.work.width, height};
  weekend_edges = firstdayofweek != 0 ? std::vector<int>{5} : std::vector<int>{1, 6};
  place_blocks(*this, firstdayofweek);
}

Rect cell_place(const YearLayout& layout, const MonthDayYear& date) {
  if (date.year != layout.year || date.month < 1 || date.month > 12) return {};
  const YearBlock& block = layout.months[static_cast<std::size_t>(date.month - 1)];
  if (date.day < 1 || date.day > block.length) return {};
  const YearCell cell = year_cell_of(date.day, block.first_column, block.length);
  Rect place{block.grid.x + cell.column * layout.cell.width,
             block.grid.y + cell.row * layout.cell.height, layout.cell.width, layout.cell.height};
  if (!cell.shared) return place;
  place.height = layout.double_split;
  if (cell.later) {
    place.y += layout.double_split;
    place.height = layout.double_height - layout.double_split;
  }
  return place;
}

GridTarget hit_year(const YearLayout& layout, Point point) {
  using Kind = GridTarget::Kind;
  if (layout.previous_tap.contains(point)) return {Kind::previous_year, 0, {}};
  if (layout.next_tap.contains(point)) return {Kind::next_year, 0, {}};
  if (layout.header.contains(point)) return {Kind::title, 0, {}};
  for (int month = 1; month <= 12; ++month)
    if (layout.months[static_cast<std::size_t>(month - 1)].box.contains(point))
      return hit_block(layout, month, point);
  return {};
}

}  // namespace orvello
