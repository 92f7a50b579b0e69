#include <gtest/gtest.h>

#include <QCloseEvent>
#include <QScreen>
#include <thread>

#include "app/own_messages.h"
#include "hosts/qt/qt_surface.h"
#include "hosts/shared/window_place.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

QtWindowOptions remembered_in(const std::string& folder) {
  QtWindowOptions options;
  options.place_file = folder + "/window";
  return options;
}

TEST(Window, AFixedScreenIsWhatTheProgramSeesAndWhatIsShown) {
  TestWindow test({480, 640}, 192);
  const ScreenInfo screen = test.window->screen();
  EXPECT_EQ(screen.resolution, (Size{480, 640}));
  EXPECT_EQ(screen.work_area, (Rect{0, 0, 480, 640}));
  EXPECT_EQ(screen.dpi_x, 192);
  test.show();
  EXPECT_EQ(test.window->shell()->grab().toImage().size(), QSize(480, 640));
}

TEST(Window, ARowOfSizesIsOneRotationAndAReturnToTheOldSizeIsNone) {
  need_application();
  Recorder recorder;
  QtMainWindow window({});
  ASSERT_TRUE(window.create(u"Orvello", u"Orvello", 0, recorder));
  window.show();
  settle();
  recorder.messages.clear();
  for (const QSize& size : {QSize(500, 300), QSize(520, 310), QSize(540, 320)})
    window.shell()->resize(size);
  ASSERT_TRUE(wait_until([&] { return recorder.count(kMessageSettingChange) > 0; }));
  settle();
  EXPECT_EQ(recorder.count(kMessageSettingChange), 1);
  EXPECT_EQ(recorder.of(kMessageSettingChange)[0].wparam, kScreenRotated);
  EXPECT_EQ(window.screen().resolution, (Size{540, 320}));
  window.shell()->resize(400, 400);
  window.shell()->resize(540, 320);
  settle();
  EXPECT_EQ(recorder.count(kMessageSettingChange), 1);
}

TEST(Window, ThePublishedPictureIsShownPixelForPixelAndReportedOnce) {
  TestWindow test({120, 100}, 96);
  QtSurface surface({120, 80});
  test.recorder.on_message = [&](const Message& message) {
    if (message.id == kMessagePaint) test.window->copy_surface(surface, {120, 80});
    return message.id == kMessagePaint;
  };
  int first_paints = 0;
  test.window->on_first_paint = [&] { ++first_paints; };
  test.show();
  EXPECT_EQ(first_paints, 0) << "nothing was drawn yet";
  surface.canvas().fill_rect({10, 10, 20, 20}, rgb(200, 0, 0));
  surface.publish();
  surface.canvas().fill_rect({0, 0, 120, 80}, rgb(0, 0, 200));  // not published
  for (int i = 0; i < 2; ++i) {
    test.window->invalidate();
    settle();
  }
  EXPECT_EQ(first_paints, 1);
  const QImage shown = test.window->shell()->grab().toImage();
  EXPECT_EQ(shown.pixel(10, 10), qRgb(200, 0, 0));
  EXPECT_EQ(shown.pixel(29, 29), qRgb(200, 0, 0));
  EXPECT_EQ(shown.pixel(30, 30), qRgb(255, 255, 255));
  EXPECT_EQ(shown.pixel(9, 9), qRgb(255, 255, 255));
  EXPECT_EQ(shown.pixel(60, 95), qRgb(255, 255, 255)) << "below the picture";
}

TEST(Window, QuittingBeforeTheLoopEndsItAtOnce) {
  TestWindow test;
  test.window->post_quit(7);
  EXPECT_EQ(test.window->run(), 7);
}

TEST(Window, RemembersItsPlaceUnlessTheScreenIsFixed) {
  need_application();
  ScratchFolder folder;
  Recorder recorder;
  {
    QtMainWindow window(remembered_in(folder.path()));
    window.create(u"Orvello", u"Orvello", 0, recorder);
    window.show();
    window.shell()->setGeometry(40, 50, 333, 444);
    settle();
    window.destroy();
    settle();
  }
  {
    QtMainWindow window(remembered_in(folder.path()));
    EXPECT_EQ(window.screen().resolution, (Size{333, 444}));
    window.create(u"Orvello", u"Orvello", 0, recorder);
    EXPECT_EQ(window.shell()->geometry(), QRect(40, 50, 333, 444));
  }
  QtWindowOptions fixed = remembered_in(folder.path());
  fixed.screen = Size{240, 320};
  QtMainWindow window(fixed);
  EXPECT_EQ(window.screen().resolution, (Size{240, 320}));
  window.create(u"Orvello", u"Orvello", 0, recorder);
  window.show();
  settle();
  window.destroy();
  EXPECT_EQ(load_window_place(folder / "window"), (Rect{40, 50, 333, 444}));
}

// Also with its frame, of which the offscreen platform gives it two pixels all round, and where the
// place is remembered from a larger screen.
TEST(Window, StandsWhollyOnTheScreen) {
  need_application();
  ScratchFolder folder;
  const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
  const int dpi = std::max(room.width(), room.height());  // 240 units are more than the screen
  for (const Rect& kept : {Rect{5000, -900, 600, 400}, Rect{0, 0, 9000, 9000}, Rect{}}) {
    if (kept.empty())
      std::filesystem::remove(folder / "window");
    else
      ASSERT_TRUE(save_window_place(folder / "window", kept));
    QtWindowOptions options = remembered_in(folder.path());
    if (kept.empty()) options.dpi = dpi;
    Recorder recorder;
    QtMainWindow window(options);
    window.create(u"Orvello", u"Orvello", 0, recorder);
    window.show();
    EXPECT_TRUE(wait_until([&] { return room.contains(window.shell()->frameGeometry()); }))
        << kept.width;
    EXPECT_LT(window.shell()->width(), window.shell()->frameGeometry().width());
  }
}

TEST(WindowPlace, IsBroughtBackToAScreenThatExists) {
  const Rect screens[] = {{0, 0, 800, 600}, {800, 0, 400, 300}};
  EXPECT_EQ(clamp_to_screens({100, 100, 300, 300}, screens, 2), (Rect{100, 100, 300, 300}));
  EXPECT_EQ(clamp_to_screens({5000, 5000, 300, 300}, screens, 2), (Rect{500, 300, 300, 300}));
  EXPECT_EQ(clamp_to_screens({900, 100, 900, 900}, screens, 2), (Rect{800, 0, 400, 300}));
  EXPECT_EQ(clamp_to_screens({-50, -20, 300, 300}, screens, 2), (Rect{0, 0, 300, 300}));
}

TEST(WindowPlace, ADamagedFileIsNoPlace) {
  ScratchFolder folder;
  EXPECT_FALSE(load_window_place(folder / "none"));
  for (const char* content : {"", "rubbish", "1 2 3", "0 0 0 0", "0 0 99999999 5"}) {
    FILE* file = std::fopen((folder / "window").c_str(), "w");
    std::fputs(content, file);
    std::fclose(file);
    EXPECT_FALSE(load_window_place(folder / "window")) << content;
  }
}

}  // namespace
}  // namespace orvello
