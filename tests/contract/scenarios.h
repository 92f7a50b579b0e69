// What a person does with the program, the same on every host. A host's test gives a device; the
// store behind it is the one in memory.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "app/application.h"
#include "app/messages.h"
#include "hosts/headless/memory_store.h"
#include "resources/ids.h"

namespace orvello {

class ScenarioDevice {
 public:
  virtual ~ScenarioDevice() = default;
  virtual Host host() = 0;
  virtual MemoryStore& store() = 0;

  virtual void press(Point point) = 0;
  virtual void move(Point point) = 0;
  virtual void release(Point point) = 0;
  // Presses until the hold time is over, closes the popup that this opened, and lets go. False when
  // no popup opened.
  virtual bool hold(Point point) = 0;
  virtual void key(std::uint32_t key_code) = 0;
  virtual void wheel(Point point, int notches) = 0;
  virtual void choose(std::uint32_t command) = 0;  // a button of the menu bar
  virtual void turn(Size screen) = 0;              // the screen, or the window
  virtual void settle() = 0;                       // until what was posted has been handled
};

template <typename Device>
class Scenarios : public testing::Test {
 protected:
  void start(StartOptions options = {}) {
    options.date = {11, 21, 2026};
    application = std::make_unique<Application>(device.host(), options);
    ASSERT_EQ(application->start_up(), StartResult::running);
    settle();
  }
  void TearDown() override {
    if (application) application->handle_message({kMessageClose, 0, {}, 0});
    application.reset();
  }

  void settle() {
    device.settle();
    EXPECT_TRUE(application->worker().wait_until_idle(std::chrono::seconds(20)));
    device.settle();
  }
  void tap(Point point) {
    device.press(point);
    device.release(point);
    settle();
  }
  Point day_point(int day) {
    for (const MonthCell& cell : application->month_layout().cells)
      if (!cell.off_month && cell.date.day == day) return cell.box.center();
    ADD_FAILURE() << "no cell for day " << day;
    return {};
  }
  MonthDayYear shown() const { return application->state().current; }
  ViewMode mode() const { return application->state().view_mode; }

  Device device;
  std::unique_ptr<Application> application;
};
TYPED_TEST_SUITE_P(Scenarios);

TYPED_TEST_P(Scenarios, ThePenTurnsMonthsAndYears) {
  this->start();
  const MonthLayout& layout = this->application->month_layout();
  this->tap(layout.months[2].center());
  EXPECT_EQ(this->shown(), (MonthDayYear{3, 21, 2026}));
  this->tap(layout.next_tap.center());
  EXPECT_EQ(this->shown(), (MonthDayYear{3, 21, 2027}));
  this->tap(layout.previous_tap.center());
  const Point from = this->day_point(12);
  this->device.press(from);
  for (int dx = 10; dx <= 90; dx += 10) this->device.move({from.x - dx, from.y});
  this->device.release({from.x - 90, from.y});
  this->settle();
  EXPECT_EQ(this->shown(), (MonthDayYear{4, 21, 2026}));
  EXPECT_EQ(this->mode(), ViewMode::month);
}

TYPED_TEST_P(Scenarios, KeysAndWheelTurnMonthsAndYears) {
  this->start();
  this->device.key(kKeyPageUp);
  EXPECT_EQ(this->shown(), (MonthDayYear{10, 21, 2026}));
  this->device.key(kKeyDown);
  EXPECT_EQ(this->shown(), (MonthDayYear{10, 21, 2027}));
  this->device.wheel(this->day_point(5), -1);
  EXPECT_EQ(this->shown(), (MonthDayYear{11, 21, 2027}));
  this->device.key(kKeyHome);
  EXPECT_EQ(this->shown(), this->application->state().today);
}

TYPED_TEST_P(Scenarios, ATapOpensTheDayAndTheMenuBarLeadsBack) {
  this->start();
  this->tap(this->day_point(9));
  EXPECT_EQ(this->mode(), ViewMode::day);
  EXPECT_EQ(this->shown(), (MonthDayYear{11, 9, 2026}));
  this->device.choose(kCommandMonthView);
  this->settle();
  EXPECT_EQ(this->mode(), ViewMode::month);
  this->device.choose(kCommandYearView);
  this->settle();
  EXPECT_EQ(this->mode(), ViewMode::year);
  EXPECT_EQ(this->shown(), (MonthDayYear{11, 9, 2026}));
}

TYPED_TEST_P(Scenarios, AHoldOpensThePopupAndStaysInTheMonth) {
  this->start();
  EXPECT_TRUE(this->device.hold(this->day_point(9)));
  this->settle();
  EXPECT_EQ(this->mode(), ViewMode::month);
  EXPECT_FALSE(this->device.hold(this->application->month_layout().title.center()));
}

TYPED_TEST_P(Scenarios, ATurnedScreenKeepsTheViewAndFillsIt) {
  this->start();
  this->device.turn({320, 240});
  this->settle();
  EXPECT_EQ(this->mode(), ViewMode::month);
  const ScreenLayout& layout = this->application->state().layout;
  EXPECT_EQ(layout.work.width, 320);
  EXPECT_TRUE(this->application->state().landscape);
  this->tap(this->day_point(9));
  EXPECT_EQ(this->shown(), (MonthDayYear{11, 9, 2026}));
}

TYPED_TEST_P(Scenarios, AChangeInTheStoreIsDrawn) {
  this->start();
  const int requests = this->application->redraw_requests();
  AppointmentRecord record;
  record.fields.subject = u"New";
  record.start = static_cast<LocalSeconds>(day_number(2026, 11, 9)) * kSecondsPerDay + 36000;
  record.end = record.start + 3600;
  record.fields.start = to_calendar_date(record.start);
  record.fields.end = to_calendar_date(record.end);
  ASSERT_GT(this->device.store().put(record), 0);
  this->device.store().poll();
  this->settle();
  EXPECT_GT(this->application->redraw_requests(), requests);
}

REGISTER_TYPED_TEST_SUITE_P(Scenarios, ThePenTurnsMonthsAndYears, KeysAndWheelTurnMonthsAndYears,
                            ATapOpensTheDayAndTheMenuBarLeadsBack,
                            AHoldOpensThePopupAndStaysInTheMonth,
                            ATurnedScreenKeepsTheViewAndFillsIt, AChangeInTheStoreIsDrawn);

}  // namespace orvello
