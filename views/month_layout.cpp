#include "views/month_layout.h"

#include <algorithm>

namespace orvello {

namespace {

void place_header(MonthLayout& layout) {
  const ScreenLayout& screen = layout.screen;
  const int width = screen.work.width;
  const int small = screen.fonts.normal9.height;
  const int band_top = static_cast<int>(1.5 * small);
  const int band_height = static_cast<int>(1.375 * screen.fonts.bold11.height);

  // Raised by an eighth of its height: its top eighth lies above the screen.
  layout.strip = {0, -band_top / 8, width, band_top};
  for (int m = 0; m < 12; ++m) {
    const int left = m * width / 12;
    layout.months[m] = {left, layout.strip.y, (m + 1) * width / 12 - left, band_top};
  }
  layout.underline_y = layout.strip.bottom() - screen.line_width / 2 - screen.scale;

  layout.title_band = {0, band_top, width, band_height};
  // The years' boxes are 50 pixels wide on every screen.
  const int edge = width / 25;
  layout.previous_year = {edge, band_top, 50, band_height};
  layout.next_year = {width - edge - 50, band_top, 50, band_height};
  // Between the years and their arrows, which may reach out of the boxes on a dense screen.
  const int side = layout.previous_year.right() + (screen.low_resolution ? 0 : 12 * screen.scale);
  layout.title = {side, band_top, std::max(0, width - 2 * side), band_height};

  // The band is too low for a finger, so taps on the day names below it count as well.
  const int tap_height = layout.grid_top - layout.strip.bottom();
  layout.previous_tap = {0, layout.strip.bottom(), width / 3, tap_height};
  layout.next_tap = {width - width / 3, layout.strip.bottom(), width / 3, tap_height};

  const int day_height = static_cast<int>(1.15 * small);
  for (int c = 0; c < 7; ++c) {
    const int left = c * screen.column_width + screen.left_margin;
    const int right = std::min(left + screen.column_width + screen.scale, width);
    layout.day_names[c] = {left, layout.title_band.bottom(), right - left, day_height};
  }
}

// Numbers whose sizes differ stand on one baseline: a face's baseline lies about two fifths of its
// height below the middle of a line.
int baseline_shift(const FontSpec& large, const FontSpec& small) {
  return (large.height - small.height) * 2 / 5;
}

// The date `day` - 1 days after the 1st, by the grid's own month lengths: a year that is leap by
// the four-year rule alone has its 29 February here.
MonthDayYear date_in_grid(int day, const MonthLayoutInput& input) {
  const int length = DaysInMonth(input.month - 1, input.year);
  if (day > length) {
    return input.month == 12 ? MonthDayYear{1, day - length, input.year + 1}
                             : MonthDayYear{input.month + 1, day - length, input.year};
  }
  if (day >= 1) return {input.month, day, input.year};
  return input.month == 1
             ? MonthDayYear{12, 31 + day, input.year - 1}
             : MonthDayYear{input.month - 1, DaysInMonth(input.month - 2, input.year) + day,
                            input.year};
}

void place_cells(MonthLayout& layout, const MonthLayoutInput& input) {
  const ScreenLayout& screen = layout.screen;
  const int scale = screen.scale;
  const int rh = screen.row_height, cw = screen.column_width;
  const int number_height = layout.number_font.height + 2 * scale;
  for (int row = 0; row < layout.grid.rows; ++row) {
    const int top = layout.grid_top + row * rh;
    layout.week_numbers.push_back(
        {screen.left_margin + 2 * scale,
         top + baseline_shift(layout.number_font, layout.week_number_font), cw / 2 - 2 * scale,
         number_height});
    for (int column = 0; column < 7; ++column) {
      MonthCell cell;
      cell.row = row;
      cell.column = column;
      cell.box = {screen.left_margin + column * cw, top, cw, rh};
      cell.frame = cell.box;
      cell.frame.width = std::min(cw + scale, screen.work.width - cell.box.x);
      cell.frame.height = rh + scale;
      cell.number = {cell.box.x + cw / 2, top, cw - cw / 2 - 2 * scale, number_height};
      cell.date = date_in_grid(row * 7 + column - layout.grid.first_column + 1, input);
      cell.off_month = cell.date.month != input.month;
      cell.drawn = !cell.off_month || input.showdays == 1;
      layout.cells.push_back(cell);
    }
  }
}

int icon_gap_of(const MonthLayout& layout) {
  return std::max(0, (layout.screen.column_width - 3 * layout.icon.width) / 5);
}

// Of what the cell keeps for icons at its bottom, where bars and lines keep off them.
int icons_height(const MonthLayout& layout, int least_above) {
  const int pitch = icon_gap_of(layout) + layout.icon.height;
  return layout.screen.row_height - 2 * pitch >= least_above ? 2 * pitch : pitch;
}

// A low row is filled by its number and one row of icons: the bars get what lies between. Four
// lines of four are enough where the cell names its appointments, and else more where a window's
// rows are higher than a handheld's.
void place_bars(MonthLayout& layout, const MonthLayoutInput& input, bool with_lines) {
  const ScreenLayout& screen = layout.screen;
  const int scale = screen.scale;
  const int number_bottom = layout.number_font.height;  // digits end above the line's end
  const int share = with_lines ? 5 : 2;
  const int full = std::clamp(screen.row_height / share, 16 * scale, 40 * scale);
  int bottom = screen.row_height - scale;
  // Icons stand as far above the cell's bottom as they stand apart; in a wide cell that is room
  // enough for the bars.
  if (input.icons && icon_gap_of(layout) < full + 2 * scale)
    bottom = screen.row_height - icons_height(layout, number_bottom + 6 * scale);
  const int height = std::clamp(bottom - number_bottom, 0, full);
  BarBand& band = layout.bars;
  band.left = 2 * scale;
  band.width = std::max(0, screen.column_width - 3 * scale);
  band.all_day_height = std::clamp(height / 4, 1, std::max(2 * scale, height / 8));
  band.all_day_top = bottom - band.all_day_height;
  band.axis_height = height >= 7 * scale ? scale : 0;
  band.axis_top = band.all_day_top - band.axis_height;
  band.lanes_bottom = band.axis_top;
  const int room = std::max(1, height - band.all_day_height - band.axis_height);
  band.lanes = std::clamp(room / (2 * scale), 1, kMaxBarLanes);
  band.lane_pitch = room / band.lanes;
  band.lane_height = band.lane_pitch > 2 * scale ? band.lane_pitch - scale : band.lane_pitch;
}

// So many letters of a subject tell which one it is, and so many of a time stand before it.
constexpr int kTellingLetters = 9, kTimeLetters = 7;
constexpr int kComfortableLines = 4;

int letters_width(int letters, const FontSpec& font) { return letters * font.height * 55 / 100; }

// Lines of this font between the number and the bars, or the cell's end. Icons stand in its right
// part: a line that would have too little room beside three of them stays above them.
LineBand lines_in(const MonthLayout& layout, const MonthLayoutInput& input, const FontSpec& font) {
  const ScreenLayout& screen = layout.screen;
  const int scale = screen.scale;
  LineBand band;
  band.font = font;
  band.left = 2 * scale;
  band.mark_width = 3 * scale;
  band.text_left = band.left + band.mark_width + 2 * scale;
  band.right = screen.column_width - 2 * scale;
  band.top = layout.number_font.height + 3 * scale;
  band.pitch = font.height + std::max(2 * scale, font.height / 3);
  const int needed = letters_width(kTellingLetters, font);
  if (band.right - band.text_left < needed) return band;
  band.times = band.right - band.text_left >= needed + letters_width(kTimeLetters, font);
  int bottom = screen.row_height - 2 * scale;
  if (input.bars) bottom = layout.bars.lanes_bottom - layout.bars.lanes * layout.bars.lane_pitch;
  const int beside = month_icon_place(layout, 0, 0, 3).x;  // the third from the right
  if (input.icons && beside < needed + band.text_left)
    bottom = std::min(bottom, screen.row_height - icons_height(layout, band.top + band.pitch));
  band.count = std::max(0, (bottom - band.top) / band.pitch);
  return band;
}

void place_bars_and_lines(MonthLayout& layout, const MonthLayoutInput& input) {
  const ScreenFonts& fonts = layout.screen.fonts;
  place_bars(layout, input, true);
  layout.lines = lines_in(layout, input, fonts.normal9);
  if (layout.lines.count < kComfortableLines) layout.lines = lines_in(layout, input, fonts.normal8);
  if (layout.lines.count == 0) place_bars(layout, input, false);
}

}  // namespace

MonthLayout::MonthLayout(const ScreenLayout& screen_layout, const MonthLayoutInput& input)
    : screen(screen_layout),
      grid(MonthGridRange(input.month, input.year, input.showdays, input.firstdayofweek)),
      month(input.month),
      year(input.year),
      grid_top(screen.header_height),
      icon{input.icon_cell, input.icon_cell} {
  // Landscape rows leave no room for the larger number above bars and icons.
  const bool low_rows = screen.row_height < 32 * screen.scale;
  number_font = low_rows ? screen.fonts.normal8 : screen.fonts.normal9;
  week_number_font = screen.fonts.normal8;
  place_header(*this);
  place_cells(*this, input);
  place_bars_and_lines(*this, input);
}

Point month_icon_place(const MonthLayout& layout, int row, int column, int n) {
  const int cw = layout.screen.column_width;
  const int w = layout.icon.width, h = layout.icon.height;
  const int gap = (cw - 3 * w) / 5;
  const int r = (n - 1) / 3;
  // Without the left margin, deliberately: icons keep the distance from their cell's right edge.
  return {(column + 1) * cw - (n - 3 * r) * (gap + w) + gap,
          (row + 1) * layout.screen.row_height - (gap + h) * (r + 1) + layout.grid_top};
}

Rect month_line_place(const MonthLayout& layout, const MonthCell& cell, int n) {
  const LineBand& band = layout.lines;
  return {cell.box.x + band.left, cell.box.y + band.top + n * band.pitch, band.right - band.left,
          band.pitch};
}

GridTarget hit_month(const MonthLayout& layout, Point point) {
  using Kind = GridTarget::Kind;
  GridTarget hit;
  if (point.x < 0 || point.x >= layout.screen.work.width || point.y < 0) return hit;
  if (point.y < layout.strip.bottom()) {
    for (int m = 0; m < 12; ++m)
      if (layout.months[m].contains(point)) hit.month = m + 1;
    hit.kind = Kind::month;
  } else if (layout.previous_tap.contains(point)) {
    hit.kind = Kind::previous_year;
  } else if (layout.next_tap.contains(point)) {
    hit.kind = Kind::next_year;
  } else if (point.y < layout.grid_top) {
    hit.kind = Kind::title;
  }
  for (const MonthCell& cell : layout.cells)
    if (cell.drawn && cell.box.contains(point)) return {Kind::day, 0, cell.date};
  return hit;
}

}  // namespace orvello
