#include "views/year_layout.h"

#include <gtest/gtest.h>

#include "hosts/headless/recording_canvas.h"
#include "tests/views/month_fixture.h"
#include "views/year_label.h"

namespace orvello {
namespace {

using Kind = GridTarget::Kind;

ScreenLayout screen_of(const TestScreen& screen) {
  return layout_screen(screen.work, screen.dpi, screen.dpi, false);
}

// One row of a month's cells, such as "29 30 0 0 0 0 0".
std::string row_of(const YearGrid& grid, int month, int row) {
  const auto& cells = grid.months[static_cast<std::size_t>(month - 1)];
  std::string text;
  for (int column = 0; column < kYearColumns; ++column)
    text += (column ? " " : "") +
            std::to_string(cells[static_cast<std::size_t>(row * kYearColumns + column)]);
  return text;
}

TEST(YearGrid, PlacesDaysAndDoublesThoseOfASixthRow) {
  const YearGrid sunday = BuildYearGrid(2026, {11, 21, 2026}, 0);
  const YearGrid monday = BuildYearGrid(2026, {11, 21, 2026}, 1);
  EXPECT_EQ(row_of(sunday, 11, 0), "1 2 3 4 5 6 7");
  EXPECT_EQ(row_of(sunday, 11, 2), "15 16 17 18 19 20 -21");
  EXPECT_EQ(row_of(sunday, 11, 4), "29 30 0 0 0 0 0");
  EXPECT_EQ(row_of(monday, 11, 0), "0 0 0 0 0 0 1");
  EXPECT_EQ(row_of(sunday, 2, 4), "0 0 0 0 0 0 0");
  // 31 days from column 5 and from column 6, 30 days from column 6.
  EXPECT_EQ(row_of(sunday, 5, 4), "-100 25 26 27 28 29 30");
  EXPECT_EQ(row_of(monday, 3, 4), "-100 -100 25 26 27 28 29");
  EXPECT_EQ(row_of(monday, 11, 4), "-100 24 25 26 27 28 29");
  // Today is negative only in its year.
  EXPECT_EQ(row_of(BuildYearGrid(2020, {11, 21, 2026}, 0), 11, 2), "15 16 17 18 19 20 21");
  // February never shares; by the four-year rule that of 1900 has 29 days.
  EXPECT_EQ(row_of(BuildYearGrid(1900, {}, 1), 2, 4), "26 27 28 29 0 0 0");
  EXPECT_EQ(row_of(BuildYearGrid(2032, {}, 1), 2, 4), "23 24 25 26 27 28 29");
}

TEST(YearLayout, EveryDayHitAtItsCentreIsThatDay) {
  for (const TestScreen& each : kTestScreens) {
    for (int year = 2020; year < 2032; ++year) {
      const YearLayout layout(screen_of(each), year, year % 2);
      for (int month = 1; month <= 12; ++month) {
        for (int day = 1; day <= DaysInMonth(month - 1, year); ++day) {
          const MonthDayYear date{month, day, year};
          const Rect place = cell_place(layout, date);
          ASSERT_FALSE(place.empty());
          const Rect& box = layout.months[static_cast<std::size_t>(month - 1)].box;
          ASSERT_EQ(intersection(place, box), place) << each.work.width << " " << month;
          for (const Point point : {place.center(), Point{place.x, place.y},
                                    Point{place.right() - 1, place.bottom() - 1}}) {
            const GridTarget hit = hit_year(layout, point);
            ASSERT_EQ(hit.kind, Kind::day);
            ASSERT_EQ(hit.date, date) << each.work.width << "x" << each.work.height;
          }
        }
      }
      EXPECT_TRUE(cell_place(layout, {2, 30, year}).empty());
      EXPECT_TRUE(cell_place(layout, {2, 3, year + 1}).empty());
    }
  }
}

TEST(YearLayout, BlocksTileTheWindowInTheArrangementThatFillsItBest) {
  struct Case {
    TestScreen screen;
    int columns;
  };
  for (const auto& [screen, columns] :
       {Case{kTestScreens[0], 3}, Case{kTestScreens[1], 4}, Case{kTestScreens[2], 3},
        Case{kTestScreens[3], 4}, Case{{{1000, 674}, 96}, 4}, Case{{{1400, 400}, 96}, 6},
        Case{{{301, 1000}, 96}, 2}, Case{{{997, 661}, 96}, 4}}) {
    const YearLayout layout(screen_of(screen), 2026, 1);
    SCOPED_TRACE(screen.work.width);
    EXPECT_EQ(layout.block_columns, columns);
    long area = 0;
    for (const YearBlock& block : layout.months) {
      area += static_cast<long>(block.box.width) * block.box.height;
      EXPECT_EQ(intersection(block.box, block.grid), block.grid);
      for (const YearBlock& other : layout.months)
        EXPECT_TRUE(&block == &other || intersection(block.box, other.box).empty());
    }
    EXPECT_EQ(area,
              static_cast<long>(screen.work.width) * (screen.work.height - layout.header.height));
    // A finger needs seven millimetres.
    EXPECT_GE(layout.previous_tap.width * 254, screen.dpi * 70);
    EXPECT_GE(layout.next_tap.width, layout.previous_tap.width);
  }
}

TEST(YearLayout, TheHeaderTheMonthsAndTheEmptyCells) {
  const YearLayout layout(screen_of(kTestScreens[0]), 2026, 1);
  EXPECT_EQ(layout.header.height, 18);  // 1.15 times 16
  EXPECT_EQ(hit_year(layout, layout.previous_arrow.center()).kind, Kind::previous_year);
  EXPECT_EQ(hit_year(layout, layout.next_arrow.center()).kind, Kind::next_year);
  EXPECT_EQ(hit_year(layout, layout.title.center()).kind, Kind::title);
  EXPECT_EQ(hit_year(layout, {120, -1}).kind, Kind::none);
  EXPECT_EQ(hit_year(layout, {120, 292}).kind, Kind::none);
  const YearBlock& february = layout.months[1];  // its first week holds only the 1st
  for (const Point point : {february.strip.center(), Point{february.grid.x, february.grid.y},
                            Point{february.box.right() - 1, february.box.bottom() - 1}}) {
    const GridTarget hit = hit_year(layout, point);
    EXPECT_EQ(hit.kind, Kind::month);
    EXPECT_EQ(hit.month, 2);
  }
  // The margin beside the grid belongs to the outer days.
  const Rect first = cell_place(layout, {2, 1, 2026});
  EXPECT_EQ(hit_year(layout, {february.box.right() - 1, first.y}).date, (MonthDayYear{2, 1, 2026}));
}

TEST(YearLabel, HoldsFourLinesBesideEveryCell) {
  std::vector<CompactRow> rows(5, {u"9:00-10:00", u"A subject far too long for\nany label"});
  rows[1].subject.clear();
  for (const TestScreen& each : kTestScreens) {
    const ScreenLayout screen = screen_of(each);
    const YearLayout layout(screen, 2026, 1);
    RecordingCanvas canvas(screen.work);
    const Rect work{0, 0, screen.work.width, screen.work.height};
    for (int i = 0; i < 365; ++i) {
      MonthDayYear date{1, 1, 2026};
      AddDays(date.month, date.day, date.year, i);
      const Rect cell = cell_place(layout, date);
      const YearLabel label =
          year_label(u"Sat, 21 Nov", rows, cell, screen, english_locale(), canvas);
      ASSERT_TRUE(intersection(label.place, cell).empty());
      ASSERT_EQ(intersection(label.place, work), label.place);
      const std::vector<Text> lines = split(label.text, u'\n');
      ASSERT_EQ(lines.size(), 4u);
      EXPECT_TRUE(starts_with(lines[1], u"9:00-10:00 A")) << to_utf8(lines[1]);
      EXPECT_EQ(lines[2], u"9:00-10:00");
      EXPECT_EQ(lines[3], u"+3");
      for (const Text& line : lines)
        EXPECT_LT(canvas.measure(line, label.font).width, label.place.width);
    }
    rows.resize(3);  // those fit without a count
    EXPECT_NE(split(year_label(u"d", rows, {}, screen, english_locale(), canvas).text, u'\n')[3],
              u"+1");
    rows.resize(5, rows[0]);
  }
}

}  // namespace
}  // namespace orvello
