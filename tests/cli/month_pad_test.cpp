// A month to choose a day from.
#include "hosts/shared/month_pad.h"

#include <gtest/gtest.h>

namespace orvello {
namespace {

TEST(MonthPad, LaysOutSixWeeksAroundItsMonthAndFindsThemAgain) {
  const struct {
    MonthDayYear date;
    bool monday_first;
    int first_day, first_month;  // of the first week
  } cases[] = {
      {{11, 23, 2026}, false, 1, 11},  // begins on a Sunday
      {{11, 23, 2026}, true, 26, 10},  //
      {{2, 1, 2027}, true, 1, 2},      // a Monday
      {{2, 28, 2027}, false, 31, 1},   //
      {{1, 1, 2028}, true, 27, 12},    // over the turn of the year
      {{1, 1, 1601}, false, 31, 12},
  };
  for (const auto& one : cases) {
    MonthPad pad;
    pad.set_monday_first(one.monday_first);
    pad.set_date(one.date);
    const MonthDayYear first = pad.day(MonthPad::kArrows);
    EXPECT_EQ(first.day, one.first_day);
    EXPECT_EQ(first.month, one.first_month);
    EXPECT_EQ(pad.weekday(0), one.monday_first ? 0 : 6);
    int found = 0;
    for (const double unit : {1.0, 2.0}) {
      pad.set_size({static_cast<int>(224 * unit), static_cast<int>(208 * unit)}, unit);
      for (int part = 0; part < MonthPad::kParts; ++part) {
        EXPECT_EQ(pad.part_at(pad.place(part).center()), part);
        EXPECT_GE(pad.place(part).width, 27 * unit) << "a finger's";
        found += part >= MonthPad::kArrows && pad.day(part) == one.date;
      }
    }
    EXPECT_EQ(found, 2);
  }
}

TEST(MonthPad, ArrowsKeepTheDayWhereTheMonthHasItAndStayWithinTheDates) {
  const struct {
    MonthDayYear from;
    int part;
    MonthDayYear to;
  } cases[] = {
      {{3, 31, 2027}, 0, {2, 28, 2027}}, {{12, 31, 2026}, 1, {1, 31, 2027}},
      {{2, 29, 2028}, 2, {2, 28, 2027}}, {{2, 29, 2028}, 3, {2, 28, 2029}},
      {{1, 1, 1601}, 0, {1, 1, 1601}},   {{12, 31, 9999}, 3, {12, 31, 9999}},
  };
  for (const auto& one : cases) {
    MonthPad pad;
    pad.set_date(one.from);
    EXPECT_EQ(pad.target(one.part), one.to);
  }
  MonthPad pad;
  pad.set_date({1, 1, 1601});
  EXPECT_EQ(pad.target(MonthPad::kArrows), (MonthDayYear{1, 1, 1601})) << "a day before all others";
}

}  // namespace
}  // namespace orvello
