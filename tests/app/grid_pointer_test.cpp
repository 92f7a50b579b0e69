#include "app/grid_pointer.h"

#include <gtest/gtest.h>

namespace orvello {
namespace {

using Kind = GridPointer::Action::Kind;

GridTarget day(int number) { return {GridTarget::Kind::day, 0, {11, number, 2026}}; }

struct GridPointerTest : testing::Test {
  GridPointerTest() { pointer.set_view(240, 96); }
  GridPointer pointer;
};

TEST_F(GridPointerTest, ATapOpensWhatWasPressed) {
  EXPECT_EQ(pointer.press({50, 100}, day(3)).kind, Kind::start_hold);
  EXPECT_EQ(pointer.move({53, 102}).kind, Kind::none);  // a trembling hand
  const auto action = pointer.release({53, 102}, day(3));
  EXPECT_EQ(action.kind, Kind::open_day);
  EXPECT_EQ(action.date, (MonthDayYear{11, 3, 2026}));
}

TEST_F(GridPointerTest, ReleasingElsewhereOpensNothing) {
  pointer.press({50, 100}, day(3));
  EXPECT_EQ(pointer.release({54, 100}, day(4)).kind, Kind::none);
  pointer.press({50, 100}, day(3));
  EXPECT_EQ(pointer.release({50, 180}, day(17)).kind, Kind::none);
  EXPECT_EQ(pointer.release({50, 100}, day(3)).kind, Kind::none);  // no press went before
}

TEST_F(GridPointerTest, ADragTurnsTheMonthAndOpensNoDay) {
  pointer.press({200, 100}, day(6));
  EXPECT_EQ(pointer.move({150, 104}).kind, Kind::stop_hold);
  const auto left = pointer.release({120, 104}, day(4));
  EXPECT_EQ(left.kind, Kind::turn);
  EXPECT_EQ(left.value, 1);
  pointer.press({20, 100}, day(1));
  EXPECT_EQ(pointer.release({120, 90}, day(4)).value, -1);
  // There and back again is neither.
  pointer.press({100, 100}, day(3));
  pointer.move({160, 100});
  EXPECT_EQ(pointer.release({100, 100}, day(3)).kind, Kind::none);
  // A steep stroke turns nothing.
  pointer.press({100, 100}, day(3));
  EXPECT_EQ(pointer.release({150, 200}, day(18)).kind, Kind::none);
}

TEST_F(GridPointerTest, AHoldAsksForThePopupOnceAndTheReleaseIsNoTap) {
  pointer.press({50, 100}, day(3));
  EXPECT_EQ(pointer.hold(true).kind, Kind::popup);
  EXPECT_EQ(pointer.hold(true).kind, Kind::none);
  EXPECT_EQ(pointer.release({50, 100}, day(3)).kind, Kind::none);
  pointer.press({50, 100}, day(3));
  EXPECT_EQ(pointer.hold(false).kind, Kind::none);  // the pen went up before
}

TEST_F(GridPointerTest, StripAndYearsAnswerTaps) {
  const GridTarget march{GridTarget::Kind::month, 3, {}};
  EXPECT_EQ(pointer.press({50, 5}, march).kind, Kind::none);
  EXPECT_EQ(pointer.hold(true).kind, Kind::none);
  EXPECT_EQ(pointer.release({50, 5}, march).value, 3);
  const GridTarget next{GridTarget::Kind::next_year, 0, {}};
  pointer.press({220, 25}, next);
  EXPECT_EQ(pointer.release({220, 25}, next).value, 1);
}

}  // namespace
}  // namespace orvello
