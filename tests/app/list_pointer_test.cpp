#include "app/list_pointer.h"

#include <gtest/gtest.h>

namespace orvello {
namespace {

using Kind = ListPointer::Action::Kind;

struct ListPointerTest : testing::Test {
  ListPointerTest() { pointer.set_view(240, 96); }
  ListPointer pointer;
};

TEST_F(ListPointerTest, AShakyTapIsATap) {
  EXPECT_EQ(pointer.press({100, 100}, 3).kind, Kind::select);
  EXPECT_EQ(pointer.move({104, 97}).kind, Kind::none);
  const auto action = pointer.release({103, 98});
  EXPECT_EQ(action.kind, Kind::tap);
  EXPECT_EQ(action.row, 3);
}

TEST_F(ListPointerTest, AlongTheListItScrollsWithoutAJump) {
  pointer.press({100, 100}, 3);
  EXPECT_EQ(pointer.move({100, 90}).kind, Kind::none);
  EXPECT_EQ(pointer.move({100, 85}).value, 5);
  EXPECT_EQ(pointer.move({10, 80}).value, 5);  // and goes on to, wherever the pen strays
  EXPECT_EQ(pointer.hold().kind, Kind::none);
  EXPECT_EQ(pointer.release({10, 80}).kind, Kind::none);
}

TEST_F(ListPointerTest, AsideItTurnsTheDayWhenFarAndStraightEnough) {
  const auto drag = [this](int dx, int dy) {
    pointer.press({120, 100}, 0);
    pointer.move({120 + dx / 2, 100 + dy / 2});
    return pointer.release({120 + dx, 100 + dy});
  };
  EXPECT_EQ(drag(-80, 10).value, 1);
  EXPECT_EQ(drag(80, 10).value, -1);
  EXPECT_EQ(drag(-20, 0).kind, Kind::none);
  EXPECT_EQ(drag(-80, 60).kind, Kind::none);
}

TEST_F(ListPointerTest, AQuickStrokeGoesOnAndOneThatRestedDoesNot) {
  const auto stroke = [this](std::uint64_t rest, int step) {
    pointer.press({100, 200}, 3, 1000);
    for (int i = 1; i <= 8; ++i)
      pointer.move({100, 200 - i * step}, 1000 + static_cast<std::uint64_t>(i) * 10);
    return pointer.release({100, 200 - 8 * step}, 1080 + rest);
  };
  const auto quick = stroke(10, 10);
  EXPECT_EQ(quick.kind, Kind::glide);
  EXPECT_EQ(quick.value, 1000) << "ten pixels in ten milliseconds";
  EXPECT_EQ(stroke(10, -10).value, -1000);
  EXPECT_EQ(stroke(300, 10).kind, Kind::none);
  EXPECT_EQ(stroke(10, 1).kind, Kind::none) << "too slow";
  pointer.press({100, 200}, 3);
  pointer.move({100, 150});
  EXPECT_EQ(pointer.release({100, 100}).kind, Kind::none) << "nobody knows when";
  // The press that stops it is no tap, and the list follows at once.
  EXPECT_EQ(pointer.press({100, 200}, 3, 5000, ListPointer::Grip::list).kind, Kind::none);
  EXPECT_EQ(pointer.hold().kind, Kind::none);
  EXPECT_EQ(pointer.move({100, 198}, 5010).value, 2);
  EXPECT_EQ(pointer.release({100, 198}, 5200).kind, Kind::none);
}

TEST_F(ListPointerTest, AHoldIsNoTap) {
  pointer.press({100, 100}, 3);
  EXPECT_EQ(pointer.hold().kind, Kind::menu);
  EXPECT_EQ(pointer.release({100, 100}).kind, Kind::none);
  EXPECT_EQ(pointer.hold().kind, Kind::none);
}

}  // namespace
}  // namespace orvello
