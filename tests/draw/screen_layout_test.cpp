#include "draw/screen_layout.h"

#include <gtest/gtest.h>

namespace orvello {
namespace {

TEST(ScreenLayout, SinglePixelDensity) {
  const ScreenLayout layout = layout_screen({240, 292}, 96, 96, false);
  EXPECT_EQ(layout.header_height, 49);
  EXPECT_EQ(layout.column_width, 34);
  EXPECT_EQ(layout.left_margin, 1);
  EXPECT_EQ(layout.row_height, 40);
  EXPECT_EQ(layout.fonts.bold11.height, 14);
  EXPECT_EQ(layout.scale + layout.line_width + layout.icon_width, 1 + 2 + 8);
}

TEST(ScreenLayout, DoublePixelDensity) {
  const ScreenLayout layout = layout_screen({480, 584}, 192, 192, true);
  EXPECT_EQ(layout.scale + layout.line_width + layout.icon_width, 2 + 4 + 16);
  EXPECT_EQ(layout.fonts.normal8.height, 21);
  EXPECT_EQ(layout.header_height, 100);  // 36.975 and 63.6: the sum is rounded down, not its parts
  EXPECT_TRUE(layout.fonts.bold12.cleartype);
}

// Resolution follows the horizontal density alone, the fonts the vertical one.
TEST(ScreenLayout, DensitiesThatDiffer) {
  EXPECT_TRUE(layout_screen({240, 292}, 129, 192, false).low_resolution);
  EXPECT_FALSE(layout_screen({240, 292}, 130, 96, false).low_resolution);
  EXPECT_EQ(layout_screen({240, 292}, 130, 96, false).fonts.normal9.height, 12);
}

TEST(ScreenLayout, AWindowTooLowForItsHeaderHasNoRows) {
  EXPECT_EQ(layout_screen({100, 20}, 96, 96, false).row_height, 0);
}

}  // namespace
}  // namespace orvello
