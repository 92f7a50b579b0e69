// Icons and time indicator bars in the cells.
#include <gtest/gtest.h>

#include "tests/views/month_fixture.h"
#include "views/month_bars.h"
#include "views/month_icons.h"

namespace orvello {
namespace {

class MonthMarks : public testing::Test {
 protected:
  MonthMarks() {
    month.settings.showholiday = 1;
    month.settings.firstdayofweek = 1;
    month.label_slots(10);
  }

  // The places of icons in a cell of November 2026, in order of drawing; cell 6 is the 1st.
  std::vector<std::pair<int, Point>> icons(int cell) {
    const MonthSnapshot snapshot = month.snapshot(11, 2026);
    const MonthLayout layout(snapshot);
    const DrawnMonth drawn = draw_month(snapshot);
    std::vector<std::pair<int, Point>> found;
    for (const DrawnOperation& image : drawn.canvas.of_kind(DrawnOperation::Kind::image)) {
      if (!layout.cells[cell].box.contains(image.box.center())) continue;
      int slot = -1;
      for (std::size_t i = 0; i < snapshot.icons.size(); ++i)
        if (image.image == &snapshot.icons[i].picture) slot = static_cast<int>(i);
      found.emplace_back(slot, Point{image.box.x, image.box.y});
    }
    return found;
  }

  std::vector<MonthBar> bars(int cell, int year = 2026) {
    const MonthSnapshot snapshot = month.snapshot(11, year);
    const MonthLayout layout(snapshot);
    MonthBars collected(snapshot, layout);
    for (const PeriodItem& item : snapshot.period.items)
      collected.add(item, cells_of(item, layout.grid));
    std::vector<MonthBar> found = collected.bars_of(cell);
    std::erase_if(found, [&](const MonthBar& bar) {
      return bar.color == month.settings.color(ColorSlot::month_line);
    });
    return found;
  }

  MonthFixture month;
};

TEST_F(MonthMarks, IconsComeInSlotOrderOncePerCell) {
  month.add(at(11, 1, 2026, 9), at(11, 1, 2026, 10), u"C, A");
  month.add(at(11, 1, 2026, 11), at(11, 1, 2026, 12), u"A,B");
  const auto found = icons(6);
  ASSERT_EQ(found.size(), 3u);
  EXPECT_EQ(found[0], (std::pair{0, Point{6 * 34 + 25, 79}}));
  EXPECT_EQ(found[1], (std::pair{2, Point{6 * 34 + 15, 79}}));
  EXPECT_EQ(found[2].first, 1);
}

TEST_F(MonthMarks, ASeventhCategoryShowsNothing) {
  month.add(at(11, 10, 2026, 9), at(11, 10, 2026, 10), u"B, C, D, E, F, G");
  month.add(at(11, 10, 2026, 9), at(11, 10, 2026, 10), u"A");
  const auto found = icons(15);
  ASSERT_EQ(found.size(), 6u);
  EXPECT_EQ(found.front().first, 1);
  EXPECT_EQ(found.back().first, 6);
}

TEST_F(MonthMarks, EmptyCategoriesMatchTheSlotForNone) {
  month.settings.displayiconstring[4] = kNoCategory;
  month.add(at(11, 10, 2026, 9), at(11, 10, 2026, 10));
  month.add(at(11, 10, 2026, 9), at(11, 10, 2026, 10));
  const auto found = icons(15);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].first, 4);
}

TEST_F(MonthMarks, AnIconNumberPastTheStripsKeepsItsPlace) {
  month.settings.displayicon[0] = 12;
  month.settings.displayicon[1] = -1;
  month.add(at(11, 1, 2026, 9), at(11, 1, 2026, 10), u"A, B, C");
  auto found = icons(6);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].second, (Point{6 * 34 + 5, 79}));
  // Numbers go on in the user's strip.
  month.settings.has_user_icons = true;
  month.settings.user_icons = {9, 9, std::vector<Color>(81)};
  EXPECT_EQ(icons(6).size(), 2u);
}

TEST_F(MonthMarks, SpansAreCutAtTheMonthUnlessAllDaysShow) {
  month.add(at(10, 30, 2026, 9), at(11, 2, 2026, 10), u"A");
  for (const int cell : {4, 5}) EXPECT_TRUE(icons(cell).empty());
  for (const int cell : {6, 7}) EXPECT_EQ(icons(cell).size(), 1u);
  EXPECT_TRUE(icons(8).empty());
  EXPECT_TRUE(bars(5).empty());
  month.settings.showdays = 1;
  for (const int cell : {4, 5, 6, 7}) EXPECT_EQ(icons(cell).size(), 1u);
  EXPECT_EQ(bars(5).size(), 1u);
}

TEST_F(MonthMarks, AnotherProfilesAppointmentsLeaveNoMark) {
  month.add(at(11, 10, 2026, 9), at(11, 10, 2026, 10), u"A");
  month.period.items[0].passes_profile = false;
  EXPECT_TRUE(icons(15).empty());
  EXPECT_TRUE(bars(15).empty());
}

TEST_F(MonthMarks, ABarShowsItsTimeOfDay) {
  month.add(at(11, 10, 2026, 12), at(11, 10, 2026, 18));
  const MonthLayout layout(month.snapshot(11, 2026));
  const MonthCell& cell = layout.cells[15];
  const auto found = bars(15);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].box.x, cell.box.x + layout.bars.left + layout.bars.width / 2);
  EXPECT_NEAR(found[0].box.width, layout.bars.width / 4.0, 1);
  EXPECT_TRUE(bars(14).empty());
  EXPECT_TRUE(bars(16).empty());
}

// The calendar repeats after 400 years, and before 1900 the fractions of dates count backwards.
TEST_F(MonthMarks, BarsBefore1900AreThoseOfToday) {
  std::vector<MonthBar> found[2];
  for (const int year : {2026, 1626}) {
    month.period = {};
    month.add(at(11, 10, year, 18), at(11, 12, year, 0));
    month.add(at(11, 12, year, 0), at(11, 12, year, 23.99), {}, true);
    month.add(at(11, 12, year, 6), at(11, 12, year, 9));
    for (int cell = 14; cell <= 18; ++cell)
      for (const MonthBar& bar : bars(cell, year)) found[year == 1626].push_back(bar);
  }
  EXPECT_EQ(found[0].size(), 4u);
  EXPECT_EQ(found[1], found[0]);
}

TEST_F(MonthMarks, BarsOfSeveralDaysAndOfNoTimeAtAll) {
  month.add(at(11, 10, 2026, 18), at(11, 12, 2026, 0));  // ends as the 12th begins
  month.add(at(11, 20, 2026, 23.9), at(11, 20, 2026, 23.9));
  month.add(at(11, 24, 2026, 0), at(11, 24, 2026, 0));
  const MonthLayout layout(month.snapshot(11, 2026));
  ASSERT_EQ(bars(16).size(), 1u);
  EXPECT_EQ(bars(16)[0].box.width, layout.bars.width);
  EXPECT_TRUE(bars(17).empty());
  for (const int cell : {25, 29}) {
    const auto found = bars(cell);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_GE(found[0].box.width, 2);
    EXPECT_LE(found[0].box.right(),
              layout.cells[cell].box.x + layout.bars.left + layout.bars.width);
  }
}

TEST_F(MonthMarks, WhatOverlapsStandsInLanes) {
  month.settings.showholiday = 0;
  month.add(at(11, 10, 2026, 9), at(11, 10, 2026, 12));
  month.add(at(11, 10, 2026, 10), at(11, 10, 2026, 11));
  month.add(at(11, 10, 2026, 12), at(11, 10, 2026, 15));
  auto found = bars(15);
  ASSERT_EQ(found.size(), 3u);  // back to back in one lane, and still two bars
  EXPECT_EQ(found[0].box.y, found[1].box.y);
  EXPECT_LT(found[0].box.right(), found[1].box.x);
  EXPECT_LT(found[2].box.bottom(), found[0].box.y + 1);
  // Any number of them stays within the lanes and apart from each other.
  for (int i = 0; i < 500; ++i) {
    const double start = i * 7 % 23;
    month.add(at(11, 10, 2026, start), at(11, 10, 2026, start + 1 + i % 3));
  }
  found = bars(15);
  EXPECT_LE(found.size(), 3u * 48);
  const Rect cell = MonthLayout(month.snapshot(11, 2026)).cells[15].box;
  for (const MonthBar& bar : found) EXPECT_EQ(intersection(bar.box, cell), bar.box);
}

TEST_F(MonthMarks, AllDayLinesTellTakenTimeFromFree) {
  month.add(at(11, 10, 2026), at(11, 11, 2026, 23.98), {}, true, BusyStatus::free);
  EXPECT_GT(bars(15).size(), 1u);  // dashes
  EXPECT_EQ(bars(15).size(), bars(16).size());
  month.settings.showfree = 0;
  EXPECT_TRUE(bars(15).empty());
  month.settings.showfree = 1;
  month.add(at(11, 10, 2026), at(11, 10, 2026, 23.98), {}, true);
  ASSERT_EQ(bars(15).size(), 1u);  // taken time goes before free time
  EXPECT_EQ(bars(15)[0].box.width, MonthLayout(month.snapshot(11, 2026)).bars.width);
}

TEST_F(MonthMarks, CategoryColoursOfBars) {
  const Color red = rgb(200, 0, 0), blue = rgb(0, 0, 200);
  month.settings.category_props = {{u"Work", static_cast<std::int32_t>(red), 0},
                                   {u"Work, Home", static_cast<std::int32_t>(blue), 0},
                                   {u"Pale", 0xFFFFFF, 0}};
  month.add(at(11, 2, 2026, 9), at(11, 2, 2026, 10), u"Work, Home");
  month.add(at(11, 3, 2026, 9), at(11, 3, 2026, 10), u"Work, Sport");
  month.add(at(11, 4, 2026, 9), at(11, 4, 2026, 10), u"Sport");
  month.add(at(11, 5, 2026, 9), at(11, 5, 2026, 10), u"Pale");
  const Color usual = bars(7)[0].color;
  EXPECT_EQ(bars(8)[0].color, usual);
  month.settings.usecategorycolorforbar = 1;
  EXPECT_EQ(bars(7)[0].color, blue);
  EXPECT_EQ(bars(8)[0].color, red);
  EXPECT_EQ(bars(9)[0].color, usual);
  EXPECT_LT(red_of(bars(10)[0].color), 200);  // white on white would not be seen
  month.settings.category_props[1].flag = kCategoryColorUnused;
  EXPECT_EQ(bars(7)[0].color, usual);
}

TEST_F(MonthMarks, InLowRowsTheDateGoesBeforeAnIcon) {
  month.screen = layout_screen({320, 212}, 96, 96, false);
  month.add(at(11, 10, 2026, 9), at(11, 10, 2026, 10), u"A, B, C, D, E, F");
  const auto found = icons(15);
  ASSERT_EQ(found.size(), 5u);
  EXPECT_EQ(found[3].first, 4);
}

}  // namespace
}  // namespace orvello
