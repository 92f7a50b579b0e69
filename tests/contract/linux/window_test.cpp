// What every main window promises: run on the one with widgets and on the one without a screen.
#include <gtest/gtest.h>

#include "app/own_messages.h"
#include "hosts/headless/headless_window.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

struct QtKit {
  QtKit() {
    need_application();
    QtWindowOptions options;
    options.screen = Size{240, 320};
    options.dpi = 96;
    port = std::make_unique<QtMainWindow>(options);
  }
  MainWindow& window() { return *port; }
  void deliver() { settle(); }
  void press(Point p) { QTest::mousePress(content(), Qt::LeftButton, {}, QPoint(p.x, p.y)); }
  void drag(Point p) { QTest::mouseMove(content(), QPoint(p.x, p.y)); }
  void release(Point p) { QTest::mouseRelease(content(), Qt::LeftButton, {}, QPoint(p.x, p.y)); }
  void key(std::uint32_t) { QTest::keyClick(content(), Qt::Key_Left); }
  bool fire_timer(int) {
    settle();
    return true;
  }
  QWidget* content() { return &port->shell()->content(); }
  std::unique_ptr<QtMainWindow> port;
};

struct HeadlessKit {
  MainWindow& window() { return port; }
  void deliver() { port.pump(); }
  void press(Point p) { port.press(p); }
  void drag(Point p) { port.drag(p); }
  void release(Point p) { port.release(p); }
  void key(std::uint32_t code) { port.key(code); }
  bool fire_timer(int id) { return port.fire_timer(id); }
  HeadlessWindow port;
};

template <typename Kit>
class WindowContract : public ::testing::Test {
 protected:
  void create() {
    ASSERT_TRUE(kit.window().create(u"Orvello", u"Orvello", 300, recorder));
    kit.window().show();
    kit.deliver();
  }
  Kit kit;
  Recorder recorder;
};

using Kits = ::testing::Types<QtKit, HeadlessKit>;
TYPED_TEST_SUITE(WindowContract, Kits);

TYPED_TEST(WindowContract, TheScreenIsKnownBeforeThereIsAWindow) {
  const ScreenInfo screen = this->kit.window().screen();
  EXPECT_EQ(screen.resolution, (Size{240, 320}));
  EXPECT_EQ(intersection(screen.work_area, {0, 0, 240, 320}), screen.work_area);
  EXPECT_EQ(screen.dpi_x, 96);
  EXPECT_FALSE(this->kit.window().activate_other_instance(u"Orvello", u"Orvello"));
}

TYPED_TEST(WindowContract, CreatingSendsTheCreateMessageBeforeItReturns) {
  ASSERT_TRUE(this->kit.window().create(u"Orvello", u"Orvello", 300, this->recorder));
  ASSERT_FALSE(this->recorder.messages.empty());
  EXPECT_EQ(this->recorder.messages[0].id, kMessageCreate);
  EXPECT_EQ(this->recorder.count(kMessageCreate), 1);
}

TYPED_TEST(WindowContract, PostedMessagesComeLaterWholeAndInOrder) {
  this->create();
  this->kit.window().post({kMessageRefresh, 1, {3, 4}, 5});
  this->kit.window().post({kMessageRefresh, 2, {}, -5});
  EXPECT_EQ(this->recorder.count(kMessageRefresh), 0);
  this->kit.deliver();
  const auto found = this->recorder.of(kMessageRefresh);
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].wparam, 1u);
  EXPECT_EQ(found[0].point, (Point{3, 4}));
  EXPECT_EQ(found[0].detail, 5);
  EXPECT_EQ(found[1].detail, -5);
}

TYPED_TEST(WindowContract, ThePenGoesDownMovesAndComesUp) {
  this->create();
  EXPECT_FALSE(this->kit.window().pen_is_down());
  this->kit.press({30, 40});
  EXPECT_TRUE(this->kit.window().pen_is_down());
  this->kit.drag({90, 45});
  this->kit.release({100, 46});
  EXPECT_FALSE(this->kit.window().pen_is_down());
  ASSERT_EQ(this->recorder.count(kMessageButtonDown), 1);
  EXPECT_EQ(this->recorder.of(kMessageButtonDown)[0].point, (Point{30, 40}));
  ASSERT_GE(this->recorder.count(kMessageMouseMove), 1);
  EXPECT_EQ(this->recorder.of(kMessageMouseMove)[0].point, (Point{90, 45}));
  ASSERT_EQ(this->recorder.count(kMessageButtonUp), 1);
  EXPECT_EQ(this->recorder.of(kMessageButtonUp)[0].point, (Point{100, 46}));
}

TYPED_TEST(WindowContract, KeysGoDown) {
  this->create();
  this->kit.key(kKeyLeft);
  ASSERT_EQ(this->recorder.count(kMessageKeyDown), 1);
  EXPECT_EQ(this->recorder.of(kMessageKeyDown)[0].wparam, kKeyLeft);
}

TYPED_TEST(WindowContract, ATimerFiresUntilItIsStopped) {
  this->create();
  this->kit.window().start_timer(3, 20);
  ASSERT_TRUE(this->kit.fire_timer(3));
  this->kit.deliver();
  const int fired = this->recorder.count(kMessageTimer);
  ASSERT_GE(fired, 1);
  EXPECT_EQ(this->recorder.of(kMessageTimer)[0].wparam, 3u);
  this->kit.window().stop_timer(3);
  this->kit.window().stop_timer(77);
  this->kit.fire_timer(3);
  this->kit.deliver();
  EXPECT_EQ(this->recorder.count(kMessageTimer), fired);
}

TYPED_TEST(WindowContract, DestroyingSendsTheDestroyMessageOnceAndNothingAfter) {
  this->create();
  this->kit.window().destroy();
  this->kit.window().destroy();
  EXPECT_EQ(this->recorder.count(kMessageDestroy), 1);
  this->recorder.messages.clear();
  this->kit.window().post({kMessageRefresh, 0, {}, 0});
  this->kit.window().invalidate();
  this->kit.deliver();
  EXPECT_TRUE(this->recorder.messages.empty());
}

}  // namespace
}  // namespace orvello
