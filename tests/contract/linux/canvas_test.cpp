// What every canvas with pixels promises.
#include <gtest/gtest.h>

#include <thread>

#include "hosts/qt/qt_surface.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

constexpr Color kRed = rgb(200, 10, 20);

struct Picture {
  explicit Picture(Size size = {100, 60}) : size(size) {
    need_application();
    surface = QtSurfaces().create(size);
  }
  Canvas& canvas() { return surface->canvas(); }
  Color at(int x, int y) {
    const QRgb pixel = image().pixel(x, y);
    return rgb(qRed(pixel), qGreen(pixel), qBlue(pixel));
  }
  QImage image() {
    surface->publish();
    return static_cast<QtSurface&>(*surface).front();
  }
  // The smallest rectangle that holds everything drawn.
  Rect drawn() {
    const QImage picture = image();
    int left = size.width, top = size.height, right = -1, bottom = -1;
    for (int y = 0; y < size.height; ++y)
      for (int x = 0; x < size.width; ++x)
        if (picture.pixel(x, y) != qRgb(255, 255, 255)) {
          left = std::min(left, x), right = std::max(right, x);
          top = std::min(top, y), bottom = std::max(bottom, y);
        }
    return right < 0 ? Rect{} : Rect{left, top, right - left + 1, bottom - top + 1};
  }
  Size size;
  std::unique_ptr<Surface> surface;
};

TEST(CanvasContract, RectanglesAreHalfOpenAndFramesLieInsideTheEdge) {
  Picture filled;
  filled.canvas().fill_rect({10, 20, 5, 6}, kRed);
  EXPECT_EQ(filled.drawn(), (Rect{10, 20, 5, 6}));
  EXPECT_EQ(filled.at(12, 22), kRed);
  Picture framed;
  framed.canvas().frame_rect({10, 20, 30, 20}, kRed, 2);
  EXPECT_EQ(framed.drawn(), (Rect{10, 20, 30, 20}));
  EXPECT_EQ(framed.at(11, 21), kRed);
  EXPECT_EQ(framed.at(12, 22), kWhite);
  EXPECT_EQ(framed.at(38, 38), kRed);
  Picture thin;
  thin.canvas().frame_rect({10, 20, 3, 3}, kRed, 5);
  EXPECT_EQ(thin.drawn(), (Rect{10, 20, 3, 3}));
  thin.canvas().frame_rect({50, 20, 0, 3}, kRed, 1);
  EXPECT_EQ(thin.drawn(), (Rect{10, 20, 3, 3}));
}

TEST(CanvasContract, LinesHaveTheirWidthAndBothEnds) {
  Picture one;
  one.canvas().polyline({{10, 20}, {30, 20}, {30, 40}}, kRed, 1);
  EXPECT_EQ(one.drawn(), (Rect{10, 20, 21, 21}));
  EXPECT_EQ(one.at(30, 40), kRed);
  EXPECT_EQ(one.at(29, 21), kWhite);
  Picture two;
  two.canvas().polyline({{10, 20}, {30, 20}}, kRed, 2);
  EXPECT_EQ(two.drawn().height, 2);
  Picture slanted;
  slanted.canvas().polyline({{10, 10}, {40, 40}}, kRed, 2);
  const Rect drawn = slanted.drawn();
  EXPECT_TRUE(drawn.contains({25, 25}) && drawn.width >= 30 && drawn.width <= 35);
}

TEST(CanvasContract, APolygonOfARectanglesCornersFillsThatRectangle) {
  Picture picture;
  picture.canvas().fill_polygon({{10, 10}, {30, 10}, {30, 25}, {10, 25}}, kRed);
  EXPECT_EQ(picture.drawn(), (Rect{10, 10, 20, 15}));
  EXPECT_EQ(picture.at(29, 24), kRed);
}

TEST(CanvasContract, TheClipHoldsForEverythingAndCanBeTakenAway) {
  Picture picture;
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

TEST(CanvasContract, EverythingIsClippedToTheSurface) {
  Picture picture({20, 20});
  Canvas& canvas = picture.canvas();
  canvas.fill_rect({-50, -50, 1000, 60}, kRed);
  canvas.frame_rect({-5, -5, 1000, 1000}, kRed, 3);
  canvas.polyline({{-100, 5}, {100, 5}}, kRed, 2);
  canvas.draw_image({4, 4, std::vector<Color>(16, kBlack)}, {-10, -10, 40, 40}, {-3, 18});
  canvas.draw_text(u"outside", {100, 100, 50, 20}, {});
  EXPECT_EQ(picture.at(19, 5), kRed);
  EXPECT_EQ(QtSurfaces().create({0, 0})->canvas().size(), (Size{0, 0}));
  QtSurfaces().create({0, 0})->canvas().fill_rect({0, 0, 5, 5}, kRed);
}

TEST(CanvasContract, ImagesLeaveMagentaOutAndTakeTheirSourceOnly) {
  Picture picture;
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

TEST(CanvasContract, TextStaysInsideItsBoxAndAtItsSide) {
  for (const int height : {10, 13, 26})
    for (const int weight : {400, 700}) {
      const FontSpec font{height, weight, false};
      const TextView text = u"Щёгg";
      Picture plain({200, 60});
      const Size size = plain.canvas().measure(text, font);
      EXPECT_GE(size.height, height);
      ASSERT_LT(size.width, 150);
      plain.canvas().draw_text(text, {20, 10, 160, size.height}, {font, kBlack});
      const Rect left = plain.drawn();
      EXPECT_GT(left.width, 0);
      EXPECT_LE(std::abs(left.width - size.width), 2 + height / 6) << "as wide as measured";
      EXPECT_LE(std::abs(left.x - 20), 3);
      // Whole in a box of the measured height: the same pixels as in a far higher one.
      Picture roomy({200, 60});
      roomy.canvas().draw_text(text, {20, 10, 160, 50}, {font, kBlack, Align::left, false});
      EXPECT_EQ(roomy.drawn(), left);
      Picture right({200, 60}), center({200, 60}), cut({200, 60});
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

TEST(CanvasContract, ALineStaysALineUnlessItMayBreak) {
  const FontSpec font{12, 400, false};
  Picture line({120, 80}), broken({120, 80});
  const TextView text = u"one two\nthree four five six";
  line.canvas().draw_text(text, {0, 0, 120, 80}, {font, kBlack, Align::left, false, false});
  broken.canvas().draw_text(text, {0, 0, 60, 80}, {font, kBlack, Align::left, false, true});
  EXPECT_LE(line.drawn().height, 16);
  EXPECT_GE(broken.drawn().height, 3 * 12);
  EXPECT_LE(broken.drawn().right(), 60);
}

TEST(CanvasContract, TextsAreWiderInBoldAndWithEveryLetter) {
  Picture picture;
  int width = -1;
  for (const TextView text : {u"", u"П", u"По", u"Пон", u"Пон е"}) {
    const int now = picture.canvas().measure(text, {12, 400, false}).width;
    EXPECT_GT(now, width);
    width = now;
  }
  EXPECT_GT(picture.canvas().measure(u"Понедельник", {12, 700, false}).width,
            picture.canvas().measure(u"Понедельник", {12, 400, false}).width);
}

TEST(CanvasContract, AnotherThreadDrawsTheSamePixels) {
  const auto draw = [](Canvas& canvas) {
    canvas.draw_text(u"Ноябрь 2026", {2, 2, 96, 30}, {{14, 700, false}, kRed, Align::center});
    canvas.polyline({{0, 0}, {99, 59}}, kBlack, 2);
  };
  Picture here, there;
  draw(here.canvas());
  there.canvas().measure(u"made here first", {14, 700, false});
  std::thread([&] { draw(there.canvas()); }).join();
  EXPECT_EQ(here.image(), there.image());
  std::thread([&] { draw(there.canvas()); }).join();
  draw(there.canvas());
  EXPECT_TRUE(there.drawn().contains({50, 15}));
}

TEST(SurfaceContract, StartsWhiteAndShowsWhatWasPublished) {
  need_application();
  QtSurface surface({8, 8});
  EXPECT_EQ(surface.front().pixel(4, 4), qRgb(255, 255, 255));
  surface.canvas().fill_rect({0, 0, 8, 8}, kRed);
  EXPECT_EQ(surface.front().pixel(4, 4), qRgb(255, 255, 255));
  surface.publish();
  EXPECT_EQ(surface.front().pixel(4, 4), qRgb(200, 10, 20));
}

}  // namespace
}  // namespace orvello
