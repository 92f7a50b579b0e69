// What every main window must do.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "tests/contract/message_log.h"

namespace orvello {

// A device with a screen of 240x320 at 96 dpi, and the person in front of it.
struct WindowDevice {
  virtual ~WindowDevice() = default;
  virtual MainWindow& window() = 0;
  virtual void deliver() = 0;  // until what was posted has arrived and what is due is painted
  virtual void press(Point point) = 0;
  virtual void drag(Point point) = 0;
  virtual void release(Point point) = 0;
  virtual void hover(Point point) = 0;
  virtual void key(std::uint32_t code, int held) = 0;
  virtual void press_other_button(Point point) = 0;
  virtual void wheel(Point point, int notches, bool sideways) = 0;
  virtual void choose_in_menu(std::uint32_t command) = 0;  // in the next one
  virtual void close() = 0;
  virtual void turn(Size screen) = 0;
  virtual void let_timer_fire(int id) = 0;
  virtual bool waits() = 0;  // as its pointer says
  virtual std::optional<Text> label() = 0;
  virtual std::optional<Text> notice() = 0;
};
using WindowCase = std::pair<const char*, std::function<std::unique_ptr<WindowDevice>()>>;
inline void PrintTo(const WindowCase& one, std::ostream* out) { *out << one.first; }

class MainWindowContract : public ::testing::TestWithParam<WindowCase> {
 protected:
  void create() {
    ASSERT_TRUE(window.create(u"Orvello", u"Orvello", 320, recorder));
    window.show();
    device->deliver();
    recorder.messages.clear();
  }
  Recorder recorder;
  std::unique_ptr<WindowDevice> device = GetParam().second();
  MainWindow& window = device->window();
};

TEST_P(MainWindowContract, TheScreenIsKnownBeforeThereIsAWindow) {
  const ScreenInfo screen = window.screen();
  EXPECT_EQ(screen.resolution, (Size{240, 320}));
  EXPECT_EQ(intersection(screen.work_area, {0, 0, 240, 320}), screen.work_area);
  EXPECT_EQ(screen.dpi_x, 96);
  EXPECT_FALSE(window.activate_other_instance(u"Orvello", u"Orvello"));
  EXPECT_FALSE(window.is_active());
}

TEST_P(MainWindowContract, CreatingSendsTheCreateMessageBeforeItReturns) {
  ASSERT_TRUE(window.create(u"Orvello", u"Orvello", 320, recorder));
  ASSERT_EQ(recorder.count(kMessageCreate), 1);
  EXPECT_EQ(recorder.messages[0].id, kMessageCreate);
  window.show();
  EXPECT_TRUE(window.is_active());
  window.destroy();
  recorder.on_message = [&](const Message& message) {
    if (message.id == kMessageCreate) window.destroy();
    return true;
  };
  EXPECT_FALSE(window.create(u"Orvello", u"Orvello", 320, recorder));
}

TEST_P(MainWindowContract, WhatIsPostedComesLaterWholeAndInOrderFromAnyThread) {
  create();
  std::vector<std::thread> threads;
  for (std::uint32_t t = 0; t < 3; ++t)
    threads.emplace_back([this, t] {
      for (std::uint32_t i = 0; i < 50; ++i) {
        window.post({kItemChangedRemote, t * 100 + i, {3, 4}, -5});
        window.invalidate();
      }
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(recorder.messages.empty());
  device->deliver();
  std::uint32_t next[] = {0, 100, 200};
  for (const Message& message : recorder.of(kItemChangedRemote)) {
    ASSERT_LT(message.wparam / 100, 3u);
    EXPECT_EQ(message.wparam, next[message.wparam / 100]++);
    EXPECT_TRUE(message.point == (Point{3, 4}) && message.detail == -5);
  }
  EXPECT_EQ(recorder.count(kItemChangedRemote), 150);
  EXPECT_EQ(recorder.count(kMessagePaint), 1) << "several before the next paint make one";
}

TEST_P(MainWindowContract, ThePenIsHeardAlsoUnpressed) {
  create();
  device->hover({20, 30});
  EXPECT_FALSE(window.pen_is_down());
  device->press({30, 40});
  EXPECT_TRUE(window.pen_is_down());
  device->drag({90, 45});
  device->release({100, 46});
  EXPECT_FALSE(window.pen_is_down());
  const auto moves = recorder.of(kMessageMouseMove), downs = recorder.of(kMessageButtonDown),
             ups = recorder.of(kMessageButtonUp);
  ASSERT_TRUE(moves.size() >= 2 && downs.size() == 1 && ups.size() == 1);
  EXPECT_TRUE(moves[0].wparam == 0 && moves[0].point == (Point{20, 30}));
  EXPECT_EQ(downs[0].point, (Point{30, 40}));
  EXPECT_TRUE(moves[1].wparam != 0 && moves[1].point == (Point{90, 45}));
  EXPECT_EQ(ups[0].point, (Point{100, 46}));
}

TEST_P(MainWindowContract, TheOtherButtonAndTheWheelsAreToldAndMenusOpenAtAPoint) {
  create();
  device->press_other_button({30, 40});
  device->wheel({50, 60}, 2, false);
  device->wheel({50, 60}, -1, false);
  device->wheel({50, 60}, 1, true);
  const auto asked = recorder.of(kMessageContextMenu), up = recorder.of(kMessageMouseWheel),
             aside = recorder.of(kMessageMouseSideWheel);
  ASSERT_TRUE(asked.size() == 1 && up.size() == 2 && aside.size() == 1);
  EXPECT_EQ(asked[0].point, (Point{30, 40}));
  EXPECT_TRUE(up[0].point == (Point{50, 60}) && up[0].detail == 2 && up[1].detail == -1);
  EXPECT_EQ(aside[0].detail, 1);
  EXPECT_EQ(recorder.count(kMessageButtonDown), 0);
  device->press({30, 40});
  for (const std::uint32_t command : {70u, 71u, 0u}) {
    device->choose_in_menu(command);
    const std::vector<MenuItem> items = {{70, u"Open", true, false}, {71, u"Paste", false, false}};
    EXPECT_EQ(window.track_menu(items, {30, 40}), command == 70 ? 70u : 0u);
    EXPECT_FALSE(window.pen_is_down()) << "the menu gets the release";
  }
}

TEST_P(MainWindowContract, KeysGoDownAndUpWithWhatIsHeld) {
  create();
  for (const int held : {0, kControlHeld, kControlHeld | kShiftHeld}) {
    recorder.messages.clear();
    device->key(kKeyLeft, held);
    for (const std::uint32_t id : {kMessageKeyDown, kMessageKeyUp}) {
      ASSERT_EQ(recorder.count(id), 1);
      EXPECT_EQ(recorder.of(id)[0].wparam, kKeyLeft);
      EXPECT_EQ(recorder.of(id)[0].detail, held);
    }
  }
}

TEST_P(MainWindowContract, ATimerFiresUntilItIsStoppedAndMayDestroyTheWindow) {
  create();
  window.start_timer(3, 20);
  device->let_timer_fire(3);
  const int fired = recorder.count(kMessageTimer);
  ASSERT_GE(fired, 1);
  EXPECT_EQ(recorder.of(kMessageTimer)[0].wparam, 3u);
  window.stop_timer(3);
  window.stop_timer(77);
  device->let_timer_fire(3);
  EXPECT_EQ(recorder.count(kMessageTimer), fired);
  recorder.on_message = [&](const Message& message) {
    if (message.id == kMessageTimer) window.destroy();
    return true;
  };
  window.start_timer(4, 5);
  device->let_timer_fire(4);
  device->let_timer_fire(4);
  EXPECT_EQ(recorder.count(kMessageTimer), fired + 1);
  EXPECT_EQ(recorder.count(kMessageDestroy), 1);
}

TEST_P(MainWindowContract, ClosingIsTheProgramsDecisionAndNothingComesAfterTheEnd) {
  create();
  recorder.on_message = [](const Message& message) { return message.id == kMessageClose; };
  device->close();
  EXPECT_EQ(recorder.count(kMessageClose), 1);
  EXPECT_TRUE(window.is_active());
  recorder.on_message = nullptr;
  device->close();  // nobody handles it: the window goes
  EXPECT_FALSE(window.is_active());
  window.destroy();
  EXPECT_EQ(recorder.count(kMessageDestroy), 1);
  recorder.messages.clear();
  window.post({kItemChangedRemote, 0, {}, 0});
  window.invalidate();  // a drawing that ends late
  device->deliver();
  EXPECT_TRUE(recorder.messages.empty());
}

TEST_P(MainWindowContract, AnotherSizeIsAChangedScreen) {
  create();
  device->turn({320, 240});
  ASSERT_EQ(recorder.count(kMessageSettingChange), 1);
  EXPECT_EQ(recorder.of(kMessageSettingChange)[0].wparam, kScreenRotated);
  EXPECT_EQ(window.screen().resolution, (Size{320, 240}));
}

TEST_P(MainWindowContract, LabelsComeAndGoTheNoticeStaysAndWaitingIsCounted) {
  create();
  const auto label = [](TextView text) {
    return HoverLabel{{20, 30, 120, 50}, Text(text), {12, 400, false}, kBlack, kWhite};
  };
  window.show_notice(label(u"Shown as it was"));
  window.show_label(label(u"First"));
  window.show_label(label(u"Second"));
  EXPECT_EQ(device->label(), u"Second");
  EXPECT_EQ(device->notice(), u"Shown as it was");
  window.hide_label();
  EXPECT_EQ(device->label(), std::nullopt);
  EXPECT_EQ(device->notice(), u"Shown as it was");
  window.hide_notice();
  window.hide_notice();
  EXPECT_EQ(device->notice(), std::nullopt);
  for (int i = 0; i < 2; ++i) window.show_wait_cursor();
  window.hide_wait_cursor();
  EXPECT_TRUE(device->waits());
  window.hide_wait_cursor();
  EXPECT_FALSE(device->waits());
}

}  // namespace orvello
