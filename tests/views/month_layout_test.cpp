#include "views/month_layout.h"

#include <gtest/gtest.h>

#include "tests/views/month_fixture.h"

namespace orvello {
namespace {

using Kind = GridTarget::Kind;

template <typename Check>
void for_each_layout(Check check) {
  for (const TestScreen& screen : kTestScreens) {
    for (int variant = 0; variant < 8; ++variant) {
      for (const int month : {1, 2, 8, 12}) {
        MonthLayoutInput input{month,
                               2026,
                               variant & 1,
                               variant >> 1 & 1,
                               (variant & 4) != 0,
                               screen.dpi < kHighResolutionDpi ? 9 : 18};
        SCOPED_TRACE(testing::Message() << screen.work.width << "x" << screen.work.height
                                        << " month " << month << " variant " << variant);
        check(MonthLayout(layout_screen(screen.work, screen.dpi, screen.dpi, false), input));
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

TEST(MonthLayout, BandsStandAsOnTheHandheld) {
  const MonthLayout layout(layout_screen({240, 292}, 96, 96, false), {11, 2026});
  EXPECT_EQ(layout.strip, (Rect{0, -2, 240, 18}));
  EXPECT_EQ(layout.title_band, (Rect{0, 18, 240, 19}));  // 19.25
  EXPECT_EQ(layout.previous_year, (Rect{9, 18, 50, 19}));
  EXPECT_EQ(layout.next_year, (Rect{181, 18, 50, 19}));
  EXPECT_EQ(layout.day_names[0], (Rect{1, 37, 35, 13}));
  // The grid's first line falls on the day names' last one.
  EXPECT_EQ(layout.cells[0].box, (Rect{1, 49, 34, 40}));
}

TEST(MonthLayout, CellsTileTheGridInsideTheScreen) {
  for_each_layout([](const MonthLayout& layout) {
    const Size work = layout.screen.work;
    ASSERT_EQ(layout.cells.size(), layout.grid.rows * 7u);
    ASSERT_EQ(layout.week_numbers.size(), static_cast<std::size_t>(layout.grid.rows));
    for (std::size_t i = 0; i < layout.cells.size(); ++i) {
      const MonthCell& cell = layout.cells[i];
      EXPECT_LE(cell.frame.right(), work.width);
      EXPECT_LE(cell.frame.bottom(), work.height);
      EXPECT_GE(cell.frame.right(), std::min(cell.box.right(), work.width));
      for (std::size_t j = 0; j < i; ++j)
        ASSERT_TRUE(intersection(cell.box, layout.cells[j].box).empty());
    }
  });
}

TEST(MonthLayout, NumbersBarsAndIconsKeepApart) {
  for_each_layout([](const MonthLayout& layout) {
    const ScreenLayout& screen = layout.screen;
    const BarBand& band = layout.bars;
    const int number_bottom = layout.number_font.height;
    // Lanes, axis and all-day line: between the number and the cell's lower line.
    EXPECT_GE(band.lanes_bottom - band.lanes * band.lane_pitch, number_bottom - 1);
    EXPECT_LE(band.all_day_top + band.all_day_height, screen.row_height);
    EXPECT_LE(band.lanes_bottom, band.axis_top);
    EXPECT_LE(band.axis_top + band.axis_height, band.all_day_top);
    EXPECT_GE(band.lane_height, 1);
    EXPECT_GT(band.left, 0);
    EXPECT_LE(band.left + band.width, screen.column_width);
    EXPECT_LE(layout.week_numbers[0].right(), layout.cells[0].number.x + 1);
  });
  for (const TestScreen& each : kTestScreens) {
    const ScreenLayout screen = layout_screen(each.work, each.dpi, each.dpi, false);
    const int side = each.dpi < kHighResolutionDpi ? 9 : 18;
    const MonthLayout layout(screen, {11, 2026, 0, 1, true, side});
    const BarBand& band = layout.bars;
    const Rect bars{
        0, layout.grid_top + band.lanes_bottom - band.lanes * band.lane_pitch, 9999,
        band.all_day_top + band.all_day_height - band.lanes_bottom + band.lanes * band.lane_pitch};
    const int columns = screen.row_height >= 32 * screen.scale ? kIconsInCell : 3;
    for (int n = 1; n <= columns; ++n) {
      const Point place = month_icon_place(layout, 0, 0, n);
      EXPECT_TRUE(intersection(bars, {place.x, place.y, side, side}).empty())
          << each.work.width << " icon " << n;
    }
  }
}

TEST(MonthLayout, EachPointHitsWhatStandsThere) {
  for_each_layout([](const MonthLayout& layout) {
    for (const MonthCell& cell : layout.cells) {
      for (const Point point :
           {Point{cell.box.x, cell.box.y}, Point{cell.box.right() - 1, cell.box.bottom() - 1}}) {
        const GridTarget hit = hit_month(layout, point);
        ASSERT_EQ(hit.kind, cell.drawn ? Kind::day : Kind::none);
        if (!cell.drawn) continue;
        EXPECT_EQ(hit.date, cell.date);
      }
    }
    for (int m = 0; m < 12; ++m) {
      const GridTarget hit = hit_month(layout, layout.months[m].center());
      EXPECT_EQ(hit.kind, Kind::month);
      EXPECT_EQ(hit.month, m + 1);
    }
    EXPECT_EQ(hit_month(layout, layout.previous_year.center()).kind, Kind::previous_year);
    EXPECT_EQ(hit_month(layout, layout.next_year.center()).kind, Kind::next_year);
    EXPECT_EQ(hit_month(layout, layout.title.center()).kind, Kind::title);
    const Size work = layout.screen.work;
    EXPECT_EQ(hit_month(layout, {work.width, 1}).kind, Kind::none);
    EXPECT_EQ(hit_month(layout, {work.width / 2, work.height - 1}).kind, Kind::none);
  });
}

TEST(MonthLayout, DatesRunThroughTheNeighbouringMonths) {
  const ScreenLayout screen = layout_screen({240, 292}, 96, 96, false);
  for (const int first : {0, 1}) {
    for (const int month : {1, 5, 12}) {
      const MonthLayout layout(screen, {month, 2026, 1, first});
      for (std::size_t i = 0; i < layout.cells.size(); ++i) {
        const MonthCell& cell = layout.cells[i];
        EXPECT_EQ(calendar_date_of(cell.date),
                  layout.grid.grid_start + static_cast<CalendarDate>(i));
        EXPECT_EQ(cell.off_month, cell.date.month != month);
        EXPECT_TRUE(cell.drawn);
      }
    }
  }
  // A common year's February from column 0 needs four rows, with the neighbours' days six.
  EXPECT_EQ(MonthLayout(screen, {2, 2026, 0, 0}).grid.rows, 4);
  EXPECT_EQ(MonthLayout(screen, {2, 2026, 1, 0}).grid.rows, 6);
  // By the four-year rule 1900 has a 29 February, and 1 March still follows it.
  const MonthLayout leap(screen, {2, 1900, 1, 0});
  const std::size_t last = leap.grid.first_column + 28u;
  EXPECT_EQ(leap.cells[last].date, (MonthDayYear{2, 29, 1900}));
  EXPECT_EQ(leap.cells[last + 1].date, (MonthDayYear{3, 1, 1900}));
}

TEST(MonthLayout, IconsFillACellFromItsBottomRightCorner) {
  const MonthLayout layout(layout_screen({240, 292}, 96, 96, false), {11, 2026, 0, 1, true, 9});
  EXPECT_EQ(month_icon_place(layout, 0, 0, 1), (Point{25, 79}));
  EXPECT_EQ(month_icon_place(layout, 0, 0, 3), (Point{5, 79}));
  EXPECT_EQ(month_icon_place(layout, 0, 0, 4), (Point{25, 69}));
  EXPECT_EQ(month_icon_place(layout, 2, 6, 6), (Point{6 * 34 + 5, 149}));
}

}  // namespace
}  // namespace orvello
