// The canvas contract on memory bitmaps.
#include "hosts/win32/win32_surface.h"
#include "tests/contract/canvas_contract.h"
#include "tests/contract/win32/native_objects.h"

namespace orvello {
namespace {

struct BitmapDevice : SurfaceDevice {
  Surfaces& surfaces() override { return port; }
  std::vector<Color> shown(Surface& surface) override {
    return static_cast<Win32Surface&>(surface).front();
  }
  Win32Surfaces port{std::make_shared<Win32Fonts>(), false};
};

const auto kBitmaps =
    ::testing::Values(SurfaceCase{"win32", [] { return std::make_unique<BitmapDevice>(); }});
INSTANTIATE_TEST_SUITE_P(Win32, SurfacesContract, kBitmaps);
INSTANTIATE_TEST_SUITE_P(Win32, CanvasContract, kBitmaps);

TEST(Win32Canvas, GivesBackAllThatItTakesOfThePlatform) {
  const auto draw = [] {
    const auto fonts = std::make_shared<Win32Fonts>();
    for (int i = 0; i < 40; ++i) {
      Win32Surface surface(fonts, {60, 40});
      const FontSpec font{10 + i, i % 2 ? 700 : 400, false};
      surface.canvas().draw_text(u"one two\nthree", {0, 0, 60, 40}, {font, kBlack});
      surface.canvas().draw_text(u"one two\nthree", {0, 0, 60, 40},
                                 {font, kBlack, Align::center, true, true});
      surface.publish();
    }
  };
  draw();
  const int before = drawing_objects();
  ASSERT_GT(before, 0);
  draw();
  EXPECT_LE(drawing_objects(), before);
}

}  // namespace
}  // namespace orvello
