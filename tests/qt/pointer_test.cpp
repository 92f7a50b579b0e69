#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QWheelEvent>

#include "hosts/qt/qt_keys.h"
#include "hosts/qt/wheel_notches.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

std::vector<std::uint32_t> ids_of(const Recorder& recorder) {
  std::vector<std::uint32_t> ids;
  for (const Message& message : recorder.messages)
    if (message.id >= kMessageMouseMove && message.id <= kMessageButtonUp)
      ids.push_back(message.id);
  return ids;
}

void turn_wheel(QWidget* widget, int angle) {
  QWheelEvent event(QPointF(20, 30), widget->mapToGlobal(QPointF(20, 30)), {}, {0, angle},
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(widget, &event);
}

const std::vector<std::uint32_t> kDrag = {kMessageButtonDown, kMessageMouseMove, kMessageButtonUp};

TEST(Pointer, HoveringIsToldWithoutAPressAndSoIsItsEnd) {
  TestWindow test;
  test.show();
  QTest::mouseMove(test.content(), QPoint(3, 3));
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(test.content(), &leave);
  const auto moves = test.recorder.of(kMessageMouseMove);
  ASSERT_EQ(moves.size(), 2u);
  EXPECT_EQ(moves[0].wparam, 0u);
  EXPECT_EQ(moves[0].point, (Point{3, 3}));
  EXPECT_EQ(moves[1].wparam, 0u);
  EXPECT_EQ(moves[1].point, (Point{-1, -1}));
}

TEST(Pointer, BothPressesOfADoubleClickArrive) {
  TestWindow test;
  test.show();
  QTest::mouseClick(test.content(), Qt::RightButton, {}, QPoint(5, 5));
  EXPECT_TRUE(ids_of(test.recorder).empty()) << "other buttons are not heard";
  QTest::mouseClick(test.content(), Qt::LeftButton, {}, QPoint(10, 20));
  QTest::mouseDClick(test.content(), Qt::LeftButton, {}, QPoint(10, 20));
  QTest::mouseRelease(test.content(), Qt::LeftButton, {}, QPoint(10, 20));
  EXPECT_EQ(test.recorder.count(kMessageButtonUp), 2);
  EXPECT_EQ(test.recorder.count(kMessageButtonDown), 2);
}

TEST(Pointer, ATouchIsThePointerOnceAndFurtherFingersAreNotHeard) {
  static QPointingDevice* const screen = QTest::createTouchDevice();
  TestWindow test;
  test.show();
  QTest::touchEvent(test.content(), screen).press(0, QPoint(40, 50));
  QTest::touchEvent(test.content(), screen).stationary(0).press(1, QPoint(140, 150));
  QTest::touchEvent(test.content(), screen).move(0, QPoint(45, 90)).move(1, QPoint(150, 150));
  EXPECT_TRUE(test.window->pen_is_down());
  QTest::touchEvent(test.content(), screen).release(0, QPoint(45, 90)).stationary(1);
  EXPECT_FALSE(test.window->pen_is_down());
  QTest::touchEvent(test.content(), screen).release(1, QPoint(150, 150));
  settle();
  EXPECT_EQ(ids_of(test.recorder), kDrag);
  EXPECT_EQ(test.recorder.of(kMessageButtonDown).at(0).point, (Point{40, 50}));
  EXPECT_EQ(test.recorder.of(kMessageButtonUp).at(0).point, (Point{45, 90}));
}

TEST(Pointer, WhoeverHoldsThePointerKeepsIt) {
  static QPointingDevice* const screen = QTest::createTouchDevice();
  TestWindow test;
  test.show();
  QTest::mousePress(test.content(), Qt::LeftButton, {}, QPoint(10, 20));
  QTest::touchEvent(test.content(), screen).press(0, QPoint(40, 50));
  QTest::touchEvent(test.content(), screen).release(0, QPoint(40, 50));
  EXPECT_TRUE(test.window->pen_is_down());
  QTest::mouseRelease(test.content(), Qt::LeftButton, {}, QPoint(10, 20));
  EXPECT_EQ(ids_of(test.recorder),
            (std::vector<std::uint32_t>{kMessageButtonDown, kMessageButtonUp}));
}

TEST(Pointer, ALostReleaseLosesNothingElse) {
  QtPointer pointer;
  const auto mouse = [&](QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held) {
    return pointer.take(QMouseEvent(type, QPointF(1, 1), QPointF(1, 1), button, held, {})).change;
  };
  using Change = QtPointer::Change;
  EXPECT_EQ(mouse(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton), Change::down);
  EXPECT_EQ(mouse(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton), Change::down);
  EXPECT_EQ(mouse(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton), Change::move);
  EXPECT_EQ(mouse(QEvent::MouseMove, Qt::NoButton, Qt::NoButton), Change::hover);
  EXPECT_FALSE(pointer.is_down());
}

TEST(Pointer, ACancelledTouchEndsWhereNothingIs) {
  QtPointer pointer;
  need_application();
  static QPointingDevice* const screen = QTest::createTouchDevice();
  QList<QEventPoint> points{QEventPoint(7, QEventPoint::Pressed, {5, 5}, {5, 5})};
  EXPECT_EQ(pointer.take(QTouchEvent(QEvent::TouchBegin, screen, {}, points)).change,
            QtPointer::Change::down);
  const auto step = pointer.take(QTouchEvent(QEvent::TouchCancel, screen));
  EXPECT_EQ(step.change, QtPointer::Change::up);
  EXPECT_LT(step.place.x(), 0);
  EXPECT_FALSE(pointer.is_down());
}

TEST(Wheel, TurnsAddUpToNotchesAndTurningBackCountsAtOnce) {
  TestWindow test;
  test.show();
  for (int i = 0; i < 3; ++i) turn_wheel(test.content(), 40);
  ASSERT_EQ(test.recorder.count(kMessageMouseWheel), 1);
  EXPECT_EQ(test.recorder.of(kMessageMouseWheel)[0].detail, 1);
  EXPECT_EQ(test.recorder.of(kMessageMouseWheel)[0].point, (Point{20, 30}));
  turn_wheel(test.content(), 90);
  turn_wheel(test.content(), -120);
  ASSERT_EQ(test.recorder.count(kMessageMouseWheel), 2);
  EXPECT_EQ(test.recorder.of(kMessageMouseWheel)[1].detail, -1);
}

TEST(Wheel, ASwipeTurnsOnceHoweverFarItGlides) {
  WheelNotches wheel;
  quint64 time = 1000;
  const auto swipe = [&](Qt::ScrollPhase phase, QPoint turned) {
    QWheelEvent event({20, 30}, {20, 30}, {}, turned, Qt::NoButton, {}, phase, false);
    event.setTimestamp(time += 10);
    return wheel.take(event);
  };
  int turns = 0;
  swipe(Qt::ScrollBegin, {0, 0});
  for (int i = 0; i < 30; ++i) turns += swipe(Qt::ScrollUpdate, {-50, 8}).notches;
  EXPECT_EQ(turns, -1);
  EXPECT_EQ(swipe(Qt::ScrollMomentum, {-300, 0}).notches, 0);
  swipe(Qt::ScrollBegin, {0, 0});
  const WheelNotches::Turn next = swipe(Qt::ScrollUpdate, {-300, 0});
  EXPECT_TRUE(next.notches == -1 && next.sideways);
}

TEST(Keys, ArriveAsVirtualKeysAndOthersNotAtAll) {
  TestWindow test;
  test.show();
  const std::vector<std::pair<Qt::Key, std::uint32_t>> keys = {
      {Qt::Key_Left, kKeyLeft},
      {Qt::Key_Down, kKeyDown},
      {Qt::Key_PageUp, kKeyPageUp},
      {Qt::Key_Home, kKeyHome},
      {Qt::Key_PageDown, kKeyPageDown},
      {Qt::Key_Enter, kKeyReturn},
      {Qt::Key_N, 'N'},
      {Qt::Key_7, '7'},
      {Qt::Key_F5, 0x74},
      {Qt::Key_Menu, 0x5D},
  };
  for (const auto& [key, code] : keys) {
    test.recorder.messages.clear();
    QTest::keyClick(test.content(), key);
    ASSERT_EQ(test.recorder.count(kMessageKeyDown), 1) << code;
    EXPECT_EQ(test.recorder.of(kMessageKeyDown)[0].wparam, code);
    ASSERT_EQ(test.recorder.count(kMessageKeyUp), 1) << code;
    EXPECT_EQ(test.recorder.of(kMessageKeyUp)[0].wparam, code);
  }
  test.recorder.messages.clear();
  // A Russian keyboard's V, and a key without a code.
  QKeyEvent russian(QEvent::KeyPress, u'М', {}), other(QEvent::KeyPress, Qt::Key_VolumeUp, {});
  EXPECT_EQ(virtual_key(russian), 'V');
  QApplication::sendEvent(test.content(), &other);
  EXPECT_EQ(test.recorder.count(kMessageKeyDown), 0);
  QTest::keyClick(test.content(), Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
  ASSERT_EQ(test.recorder.count(kMessageKeyDown), 1);
  EXPECT_EQ(test.recorder.of(kMessageKeyDown)[0].detail, kControlHeld | kShiftHeld);
}

TEST(Keys, AHeldKeyRepeatsItsPressAlone) {
  TestWindow test;
  test.show();
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, Qt::Key_Right, {}, {}, true);
    QApplication::sendEvent(test.content(), &event);
  }
  EXPECT_EQ(test.recorder.count(kMessageKeyDown), 1);
  EXPECT_EQ(test.recorder.count(kMessageKeyUp), 0);
}

}  // namespace
}  // namespace orvello
