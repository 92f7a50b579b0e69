#include "views/accessible_text.h"

#include <gtest/gtest.h>

#include "tests/views/month_fixture.h"

namespace orvello {
namespace {

const LocaleData kRussianLocale = russian_locale(), kEnglishLocale = english_locale();
constexpr MonthDayYear kToday{11, 21, 2026}, kSelected{11, 22, 2026};
const AccessibleWords kInRussian{kRussianLocale, Language::russian, kToday, kSelected};
const AccessibleWords kInEnglish{kEnglishLocale, Language::english, kToday, kSelected};

std::string name(std::optional<int> count, const AccessibleWords& words,
                 const MonthDayYear& date = {12, 2, 2026}, int year = 2026) {
  return to_utf8(accessible_day_name(date, count, year, words));
}

TEST(AccessibleText, DaysAreNamedInBothLanguages) {
  EXPECT_EQ(name(0, kInEnglish), "2 December, no appointments");
  EXPECT_EQ(name(1, kInEnglish), "2 December, 1 appointment");
  EXPECT_EQ(name(21, kInEnglish), "2 December, 21 appointments");
  EXPECT_EQ(name({}, kInEnglish, {1, 2, 2027}), "2 January 2027");
  EXPECT_EQ(name(3, kInEnglish, kToday), "21 November, 3 appointments, today");
  EXPECT_EQ(name(0, kInRussian, kToday), "21 ноября, нет встреч, сегодня");
  for (const int one : {1, 21, 101}) EXPECT_TRUE(name(one, kInRussian).ends_with(" встреча"));
  for (const int few : {2, 4, 22, 104}) EXPECT_TRUE(name(few, kInRussian).ends_with(" встречи"));
  for (const int many : {5, 10, 11, 12, 14, 20, 25, 111, 112})
    EXPECT_TRUE(name(many, kInRussian).ends_with(" встреч"));
}

TEST(AccessibleText, TheMonthGridHasACellForEachDayDrawn) {
  MonthFixture month;
  for (const int showdays : {0, 1}) {
    month.settings.showdays = showdays;
    const MonthLayout layout(month.snapshot(12, 2026));  // begins on a Tuesday
    const AccessibleGrid grid =
        accessible_month(layout, day_count_of({4, 5}, day_of(2026, 12, 1)), kInEnglish);
    EXPECT_EQ(to_utf8(grid.name), "December 2026");
    EXPECT_EQ(grid.columns, 7);
    ASSERT_EQ(grid.cells.size(), layout.cells.size());
    EXPECT_EQ(to_utf8(grid.cells[2].name), "1 December, 4 appointments");
    EXPECT_EQ(to_utf8(grid.cells[3].name), "2 December, 5 appointments");
    EXPECT_EQ(to_utf8(grid.cells[4].name), "3 December, no appointments");
    EXPECT_EQ(accessible_month_date(layout, 3), (MonthDayYear{12, 2, 2026}));
    EXPECT_EQ(accessible_month_date(layout, 1).has_value(), showdays == 1);
    EXPECT_EQ(to_utf8(grid.cells[1].name), showdays ? "30 November, no appointments" : "");
    if (showdays) {
      EXPECT_EQ(to_utf8(grid.cells[33].name), "1 January 2027, no appointments");
    }
  }
}

TEST(AccessibleText, TheYearIsATableOfMonthsAndDays) {
  const YearLayout layout(layout_screen({240, 292}, 96, 96, false), 2026, 1);
  const AccessibleGrid grid = accessible_year(layout, {}, kInRussian);
  EXPECT_EQ(grid.columns, 31);
  ASSERT_EQ(grid.cells.size(), 372u);
  int days = 0;
  for (int i = 0; i < 372; ++i) {
    const AccessibleCell& cell = grid.cells[static_cast<std::size_t>(i)];
    const auto date = accessible_year_date(layout, i);
    EXPECT_EQ(date.has_value(), !cell.name.empty());
    EXPECT_EQ(cell.selected, date == kSelected);
    if (!date) continue;
    ++days;
    EXPECT_EQ(hit_year(layout, cell.place.center()).date, *date);
  }
  EXPECT_EQ(days, 365);
  EXPECT_EQ(to_utf8(grid.cells[10 * 31 + 20].name), "21 ноября, сегодня");
  EXPECT_FALSE(accessible_year_date(layout, 372));
}

}  // namespace
}  // namespace orvello
