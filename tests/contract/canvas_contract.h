// What every host's surfaces and their canvases must do: the first suite holds everywhere, the
// second where there are pixels to look at.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <thread>

#include "ports/canvas.h"

namespace orvello {

struct SurfaceDevice {
  virtual ~SurfaceDevice() = default;
  virtual Surfaces& surfaces() = 0;
  virtual std::vector<Color> shown(Surface& surface) = 0;  // what painting would copy
};
using SurfaceCase = std::pair<const char*, std::function<std::unique_ptr<SurfaceDevice>()>>;
inline void PrintTo(const SurfaceCase& one, std::ostream* out) { *out << one.first; }

class SurfacesContract : public ::testing::TestWithParam<SurfaceCase> {
 protected:
  std::unique_ptr<SurfaceDevice> device = GetParam().second();
};

TEST_P(SurfacesContract, HaveTheSizeAskedForAndCutOffWhatLiesOutside) {
  for (const Size size : {Size{20, 10}, Size{0, 0}}) {
    const auto surface = device->surfaces().create(size);
    Canvas& canvas = surface->canvas();
    EXPECT_EQ(canvas.size(), size);
    canvas.fill_rect({-50, -50, 1000, 60}, kBlack);
    canvas.frame_rect({-5, -5, 1000, 1000}, kBlack, 3);
    canvas.polyline({{-100, 5}, {100, 5}}, kBlack, 2);
    canvas.polyline({}, kBlack, 1);
    canvas.fill_polygon({}, kBlack);
    canvas.draw_image({4, 4, std::vector<Color>(16, kBlack)}, {-10, -10, 40, 40}, {-3, 8});
    canvas.draw_text(u"outside", {100, 100, 50, 20}, {});
    surface->publish();
  }
}

TEST_P(SurfacesContract, TextsAreWiderInBoldAndWithEveryLetterOnAnyThread) {
  const auto surface = device->surfaces().create({100, 60});
  const auto width = [&](TextView text, int weight) {
    return surface->canvas().measure(text, {12, weight, false}).width;
  };
  std::vector<int> here, there;
  const auto measure = [&](std::vector<int>& widths) {
    for (const TextView text : {u"", u"П", u"По", u"Пон", u"Пон е"})
      widths.push_back(width(text, 400));
    surface->publish();
  };
  measure(here);
  std::thread([&] { measure(there); }).join();
  EXPECT_EQ(here, there);
  EXPECT_TRUE(std::is_sorted(here.begin(), here.end(), std::less_equal<>()));
  EXPECT_GT(width(u"Понедельник", 700), width(u"Понедельник", 400));
  for (const int height : {10, 13, 26})
    EXPECT_GE(surface->canvas().measure(u"Щg", {height, 400, false}).height, height);
}

class CanvasContract : public SurfacesContract {
 protected:
  static constexpr Color kRed = rgb(200, 10, 20);

  struct Picture {
    Picture(SurfaceDevice& on, Size wanted)
        : device(on), size(wanted), surface(on.surfaces().create(wanted)) {}
    Canvas& canvas() { return surface->canvas(); }
    std::vector<Color> pixels() {
      surface->publish();
      return device.shown(*surface);
    }
    Color at(int x, int y) { return pixels().at(static_cast<std::size_t>(y * size.width + x)); }
    // The smallest rectangle that holds everything drawn.
    Rect drawn() {
      const std::vector<Color> picture = pixels();
      int left = size.width, top = size.height, right = -1, bottom = -1;
      for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
          if (picture[static_cast<std::size_t>(y * size.width + x)] != kWhite) {
            left = std::min(left, x), right = std::max(right, x);
            top = std::min(top, y), bottom = std::max(bottom, y);
          }
      return right < 0 ? Rect{} : Rect{left, top, right - left + 1, bottom - top + 1};
    }
    SurfaceDevice& device;
    Size size;
    std::unique_ptr<Surface> surface;
  };
  Picture blank(Size size = {100, 60}) { return Picture(*device, size); }
};

TEST_P(CanvasContract, RectanglesAreHalfOpenAndFramesLieInsideTheEdge) {
  Picture filled = blank();
  filled.canvas().fill_rect({10, 20, 5, 6}, kRed);
  EXPECT_EQ(filled.drawn(), (Rect{10, 20, 5, 6}));
  EXPECT_EQ(filled.at(12, 22), kRed);
  Picture framed = blank();
  framed.canvas().frame_rect({10, 20, 30, 20}, kRed, 2);
  EXPECT_EQ(framed.drawn(), (Rect{10, 20, 30, 20}));
  EXPECT_EQ(framed.at(11, 21), kRed);
  EXPECT_EQ(framed.at(12, 22), kWhite);
  EXPECT_EQ(framed.at(38, 38), kRed);
  Picture thin = blank();
  thin.canvas().frame_rect({10, 20, 3, 3}, kRed, 5);
  EXPECT_EQ(thin.drawn(), (Rect{10, 20, 3, 3}));
  thin.canvas().frame_rect({50, 20, 0, 3}, kRed, 1);
  EXPECT_EQ(thin.drawn(), (Rect{10, 20, 3, 3}));
}

TEST_P(CanvasContract, LinesHaveTheirWidthAndBothEnds) {
  Picture one = blank();
  one.canvas().polyline({{10, 20}, {30, 20}, {30, 40}}, kRed, 1);
  EXPECT_EQ(one.drawn(), (Rect{10, 20, 21, 21}));
  EXPECT_EQ(one.at(30, 40), kRed);
  EXPECT_EQ(one.at(29, 21), kWhite);
  Picture two = blank();
  two.canvas().polyline({{10, 20}, {30, 20}}, kRed, 2);
  EXPECT_EQ(two.drawn().height, 2);
  Picture slanted = blank();
  slanted.canvas().polyline({{10, 10}, {40, 40}}, kRed, 2);
  const Rect drawn = slanted.drawn();
  EXPECT_TRUE(drawn.contains({25, 25}) && drawn.width >= 30 && drawn.width <= 35);
}

TEST_P(CanvasContract, APolygonOfARectanglesCornersFillsThatRectangle) {
  Picture picture = blank();
  picture.canvas().fill_polygon({{10, 10}, {30, 10}, {30, 25}, {10, 25}}, kRed);
  EXPECT_EQ(picture.drawn(), (Rect{10, 10, 20, 15}));
  EXPECT_EQ(picture.at(29, 24), kRed);
}

TEST_P(CanvasContract, TheClipHoldsForEverythingAndCanBeTakenAway) {
  Picture picture = blank();
  const Rect clip{20, 20, 10, 10};
  Canvas& canvas = picture.canvas();
  canvas.set_clip(clip);
  canvas.fill_rect({0, 0, 100, 60}, kRed);
  canvas.polyline({{0, 0}, {100, 60}}, kBlack, 3);
  canvas.polyline({{0, 25}, {100, 25}}, kBlack, 3);
  canvas.fill_polygon({{0, 0}, {100, 0}, {50, 60}}, kBlack);
  canvas.draw_image({60, 60, std::vector<Color>(3600, kBlack)}, {0, 0, 60, 60}, {0, 0});
  canvas.draw_text(u"MMMMMMMMMMMM", {0, 0, 100, 50}, {{40, 700, false}, kBlack});
  EXPECT_EQ(picture.drawn(), clip);
  canvas.set_clip(Rect{200, 200, 5, 5});
  canvas.fill_rect({0, 0, 100, 60}, kRed);
  EXPECT_EQ(picture.drawn(), clip);
  canvas.set_clip(std::nullopt);
  canvas.fill_rect({0, 0, 2, 2}, kRed);
  EXPECT_EQ(picture.at(1, 1), kRed);
}

TEST_P(CanvasContract, ImagesLeaveMagentaOutAndTakeTheirSourceOnly) {
  Picture picture = blank();
  picture.canvas().fill_rect({0, 0, 100, 60}, kRed);
  const Image image{3, 2, {1, 2, kMagenta, 4, 5, 6}};
  picture.canvas().draw_image(image, {1, 0, 2, 2}, {50, 30});
  EXPECT_EQ(picture.at(50, 30), Color{2});
  EXPECT_EQ(picture.at(51, 30), kRed);
  EXPECT_EQ(picture.at(50, 31), Color{5});
  EXPECT_EQ(picture.at(51, 31), Color{6});
  EXPECT_EQ(picture.at(52, 31), kRed);
  EXPECT_EQ(picture.at(49, 31), kRed);
}

TEST_P(CanvasContract, TextStaysInsideItsBoxAndAtItsSide) {
  for (const int height : {10, 13, 26})
    for (const int weight : {400, 700}) {
      const FontSpec font{height, weight, false};
      const TextView text = u"Щёгg";
      Picture plain = blank({200, 60});
      const Size size = plain.canvas().measure(text, font);
      EXPECT_GE(size.height, height);
      ASSERT_LT(size.width, 150);
      plain.canvas().draw_text(text, {20, 10, 160, size.height}, {font, kBlack});
      const Rect left = plain.drawn();
      EXPECT_GT(left.width, 0);
      EXPECT_LE(std::abs(left.width - size.width), 2 + height / 6) << "as wide as measured";
      EXPECT_LE(std::abs(left.x - 20), 3);
      // Whole in a box of the measured height: the same pixels as in a far higher one.
      Picture roomy = blank({200, 60});
      roomy.canvas().draw_text(text, {20, 10, 160, 50}, {font, kBlack, Align::left, false});
      EXPECT_EQ(roomy.drawn(), left);
      Picture right = blank({200, 60}), center = blank({200, 60}), cut = blank({200, 60});
      right.canvas().draw_text(text, {20, 10, 160, 40}, {font, kBlack, Align::right});
      EXPECT_LE(std::abs(right.drawn().right() - 180), 3);
      center.canvas().draw_text(text, {20, 10, 160, 40}, {font, kBlack, Align::center});
      EXPECT_LE(std::abs(center.drawn().center().x - 100), 3);
      EXPECT_LE(std::abs(center.drawn().center().y - 30), height / 4);
      const Rect small{20, 10, 12, 6};
      cut.canvas().draw_text(text, small, {font, kBlack, Align::center});
      EXPECT_EQ(intersection(cut.drawn(), small), cut.drawn());
    }
}

TEST_P(CanvasContract, ALineStaysALineUnlessItMayBreak) {
  const FontSpec font{12, 400, false};
  Picture line = blank({120, 80}), broken = blank({120, 80});
  const TextView text = u"one two\nthree four five six";
  line.canvas().draw_text(text, {0, 0, 120, 80}, {font, kBlack, Align::left, false, false});
  broken.canvas().draw_text(text, {0, 0, 60, 80}, {font, kBlack, Align::left, false, true});
  EXPECT_LE(line.drawn().height, 16);
  EXPECT_GE(broken.drawn().height, 3 * 12);
  EXPECT_LE(broken.drawn().right(), 60);
  broken.canvas().draw_text(u"M", {100, 60, 20, 20}, {font, kBlack});
  EXPECT_GE(broken.drawn().right(), 102) << "its box is no clip for what follows";
}

TEST_P(CanvasContract, AnotherThreadDrawsTheSamePixels) {
  const auto draw = [](Canvas& canvas) {
    canvas.draw_text(u"Ноябрь 2026", {2, 2, 96, 30}, {{14, 700, false}, kRed, Align::center});
    canvas.polyline({{0, 0}, {99, 59}}, kBlack, 2);
  };
  Picture here = blank(), there = blank();
  draw(here.canvas());
  there.canvas().measure(u"made here first", {14, 700, false});
  std::thread([&] { draw(there.canvas()); }).join();
  EXPECT_EQ(here.pixels(), there.pixels());
  std::thread([&] { draw(there.canvas()); }).join();
  draw(there.canvas());
  EXPECT_TRUE(there.drawn().contains({50, 15}));
}

TEST_P(CanvasContract, StartsWhiteAndShowsWhatWasPublished) {
  const auto surface = device->surfaces().create({8, 8});
  const auto shown = [&] { return device->shown(*surface).at(36); };
  EXPECT_EQ(shown(), kWhite);
  surface->canvas().fill_rect({0, 0, 8, 8}, kRed);
  EXPECT_EQ(shown(), kWhite);
  surface->publish();
  EXPECT_EQ(shown(), kRed);
  surface->canvas().fill_rect({0, 0, 8, 8}, kBlack);
  EXPECT_EQ(shown(), kRed);
}

}  // namespace orvello
