// What a person does with the program, the same on every host. A host's test gives a device; the
// store behind it is the one in memory.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

#include "app/application.h"
#include "app/own_messages.h"
#include "hosts/headless/memory_store.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "tests/appointments.h"

namespace orvello {

class ScenarioDevice {
 public:
  virtual ~ScenarioDevice() = default;
  virtual Host host() = 0;
  virtual MemoryStore& store() = 0;

  virtual void press(Point point) = 0;
  virtual void move(Point point) = 0;
  virtual void release(Point point) = 0;
  // Presses until the hold time is over and lets go. What it opened is left to `answer`.
  virtual void hold(Point point) = 0;
  virtual void key(std::uint32_t key_code) = 0;
  virtual void wheel(Point point, int notches) = 0;
  virtual void choose(std::uint32_t command) = 0;  // a button of the menu bar
  virtual void turn(Size screen) = 0;              // the screen, or the window

  // The Day view: its list and its header, points as the controls have them.
  virtual void list_press(Point point) = 0;
  virtual void list_move(Point point) = 0;
  virtual void list_release(Point point) = 0;
  virtual void list_key(std::uint32_t key_code, bool control_held) = 0;
  virtual void header_tap(Point point) = 0;
  virtual Point row_center(int row) = 0;
  // Lets time pass: the pen is down for the hold time, or no second tap comes.
  virtual void let_timer_fire(int id) = 0;

  // What the person does in the modal windows and menus that open from now on.
  enum class Answer { dismiss, accept, first_row };
  virtual void answer(Answer answer) = 0;
  virtual void pick(std::uint32_t command) = 0;
  // What happens while the next modal window stands, before the person answers it.
  virtual void meanwhile(std::function<void()> happens) = 0;
  virtual void key_anywhere(std::uint32_t key_code) = 0;  // to whatever has the keyboard
  virtual Text notice() = 0;                              // over the view; empty without one
  virtual int boxes() = 0;                                // so far
  virtual std::vector<int> opened() = 0;                  // the dialogs so far, by template
  virtual void settle() = 0;                              // until what was posted has been handled
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
    EXPECT_TRUE(application->grid().worker().wait_until_idle(std::chrono::seconds(20)));
    device.settle();
  }
  void tap(Point point) {
    device.press(point);
    device.release(point);
    settle();
  }
  Point day_point(int day) {
    for (const MonthCell& cell : application->grid().month().layout().cells)
      if (!cell.off_month && cell.date.day == day) return cell.box.center();
    ADD_FAILURE() << "no cell for day " << day;
    return {};
  }
  std::int32_t add(const MonthDayYear& date, int hour, TextView subject, TextView body = u"") {
    AppointmentRecord record = one_hour(date, hour, subject);
    record.fields.body = body;
    return device.store().put(record);
  }
  void tap_row(int row) {
    device.list_press(device.row_center(row));
    device.list_release(device.row_center(row));
    settle();
  }
  void list_key(std::uint32_t key_code, bool control_held = false) {
    device.list_key(key_code, control_held);
    settle();
  }
  std::vector<Text> subjects() const {
    std::vector<Text> texts;
    for (const DayRow& row : application->day().agenda().rows) texts.push_back(row.subject);
    return texts;
  }
  int count_opened(int dialog) {
    const std::vector<int> all = device.opened();
    return static_cast<int>(std::count(all.begin(), all.end(), dialog));
  }
  MonthDayYear shown() const { return application->state().current; }
  ViewMode mode() const { return application->state().view_mode; }

  Device device;
  std::unique_ptr<Application> application;
};
TYPED_TEST_SUITE_P(Scenarios);

TYPED_TEST_P(Scenarios, ThePenTurnsMonthsAndYears) {
  this->start();
  const MonthLayout& layout = this->application->grid().month().layout();
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

TYPED_TEST_P(Scenarios, KeysAndWheelMoveThroughTheMonths) {
  this->start();
  this->device.key(kKeyPageUp);
  EXPECT_EQ(this->shown(), (MonthDayYear{10, 21, 2026}));
  this->device.key(kKeyDown);
  this->device.key(kKeyLeft);
  this->settle();
  EXPECT_EQ(this->shown(), (MonthDayYear{10, 27, 2026}));
  this->device.wheel(this->day_point(5), -1);
  this->settle();
  EXPECT_EQ(this->shown(), (MonthDayYear{11, 27, 2026}));
  this->device.key(kKeyReturn);
  this->settle();
  EXPECT_EQ(this->mode(), ViewMode::day);
  this->list_key(kKeyHome);
  EXPECT_EQ(this->shown(), this->application->state().today);
  this->list_key(kKeyEscape);
  EXPECT_EQ(this->mode(), ViewMode::month);
}

TYPED_TEST_P(Scenarios, AHoldOpensThePopupAndATapInItTheDay) {
  this->add({11, 9, 2026}, 9, u"Dentist");
  this->start();
  this->device.answer(ScenarioDevice::Answer::dismiss);
  this->device.hold(this->day_point(9));
  this->settle();
  EXPECT_EQ(this->count_opened(kDialogDayPopup), 1);
  EXPECT_EQ(this->mode(), ViewMode::month);
  this->device.hold(this->application->grid().month().layout().title.center());
  EXPECT_EQ(this->count_opened(kDialogDayPopup), 1);
  this->device.answer(ScenarioDevice::Answer::first_row);
  this->device.hold(this->day_point(9));
  this->settle();
  EXPECT_EQ(this->mode(), ViewMode::day);
  EXPECT_EQ(this->shown(), (MonthDayYear{11, 9, 2026}));
}

TYPED_TEST_P(Scenarios, TheYearLeadsToItsMonthsAndDays) {
  this->start();
  this->device.choose(kCommandYearView);
  this->settle();
  this->tap(this->application->grid().year().layout().next_tap.center());
  EXPECT_EQ(this->shown(), (MonthDayYear{11, 21, 2027}));
  this->tap(cell_place(this->application->grid().year().layout(), {3, 9, 2027}).center());
  EXPECT_EQ(this->mode(), ViewMode::day);
  EXPECT_EQ(this->shown(), (MonthDayYear{3, 9, 2027}));
  this->list_key(kKeyEscape);
  EXPECT_EQ(this->mode(), ViewMode::year);
  this->tap(this->application->grid().year().layout().months[6].strip.center());
  EXPECT_EQ(this->mode(), ViewMode::month);
  EXPECT_EQ(this->shown(), (MonthDayYear{7, 9, 2027}));
}

TYPED_TEST_P(Scenarios, ThePenReadsNotesAndTurnsDays) {
  this->add({11, 21, 2026}, 9, u"Dentist", u"Second floor");
  this->start();
  this->device.choose(kCommandDayView);
  this->settle();
  this->device.answer(ScenarioDevice::Answer::dismiss);
  this->tap_row(0);
  this->device.let_timer_fire(kTimerNotes);
  this->settle();
  EXPECT_EQ(this->count_opened(kDialogNotes), 1);
  const Point from = this->device.row_center(0);
  this->device.list_press(from);
  for (int dx = 10; dx <= 90; dx += 10) this->device.list_move({from.x - dx, from.y});
  this->device.list_release({from.x - 90, from.y});
  this->settle();
  EXPECT_EQ(this->shown(), (MonthDayYear{11, 22, 2026}));
  EXPECT_EQ(this->count_opened(kDialogNotes), 1);
  this->device.header_tap(this->application->day().header().today_picture.center());
  this->settle();
  EXPECT_EQ(this->shown(), (MonthDayYear{11, 21, 2026}));
  this->device.header_tap(this->application->day().header().style_button.center());
  EXPECT_EQ(this->application->settings().rowcolorindex, 1);
}

TYPED_TEST_P(Scenarios, AnAppointmentIsCarriedAndDeletedByMenuAndKeys) {
  this->add({11, 21, 2026}, 9, u"Dentist");
  this->start();
  this->device.choose(kCommandDayView);
  this->settle();
  this->device.pick(kCommandCut);
  this->device.list_press(this->device.row_center(0));
  this->device.let_timer_fire(kTimerMenu);
  this->device.list_release(this->device.row_center(0));
  this->settle();
  EXPECT_NE(this->application->paste_source().cut, 0);
  this->list_key(kKeyRight);
  this->list_key(u'V', true);
  EXPECT_EQ(this->subjects(), std::vector<Text>{u"Dentist"});
  this->list_key(kKeyPageDown);
  this->device.answer(ScenarioDevice::Answer::dismiss);
  this->list_key(kKeyDelete);
  EXPECT_EQ(this->subjects(), std::vector<Text>{u"Dentist"});
  this->device.answer(ScenarioDevice::Answer::accept);
  this->list_key(kKeyDelete);
  EXPECT_EQ(this->count_opened(kDialogDelete), 2);
  EXPECT_TRUE(this->device.store().oids({}, {})->empty());
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

TYPED_TEST_P(Scenarios, WhatIsModalStaysSoAndWhatComesMeanwhileWaits) {
  this->add({11, 21, 2026}, 9, u"Dentist");
  this->start();
  this->device.choose(kCommandDayView);
  this->settle();
  std::vector<int> calls;
  this->device.meanwhile([&] {
    for (const int call : {1, 2})
      this->application->when_free([&calls, call] { calls.push_back(call); });
    this->device.host().window.post({kMessageCommand, kCommandYearView, {}, 0});
    this->device.turn({320, 240});
    this->device.settle();
    this->device.key_anywhere(kKeyRight);
    EXPECT_EQ(this->application->state().layout.work.width, 320);
    EXPECT_EQ(this->mode(), ViewMode::day);
    EXPECT_EQ(this->shown(), (MonthDayYear{11, 21, 2026})) << "the list below got the key";
    EXPECT_TRUE(calls.empty());
  });
  this->device.answer(ScenarioDevice::Answer::accept);
  this->list_key(kKeyPageDown);
  this->list_key(kKeyDelete);
  EXPECT_EQ(this->count_opened(kDialogDelete), 1);
  EXPECT_TRUE(this->device.store().oids({}, {})->empty());
  EXPECT_EQ(calls, (std::vector<int>{1, 2}));
  EXPECT_EQ(this->mode(), ViewMode::year);
}

TYPED_TEST_P(Scenarios, TheListBelowIsUsedAgainAfterATurnedScreen) {
  this->start();
  this->device.choose(kCommandDayView);
  this->settle();
  this->device.meanwhile([&] { this->device.turn({320, 240}); });
  this->device.header_tap(this->application->day().header().date.center());
  this->settle();
  EXPECT_EQ(this->count_opened(kDialogDate), 1);
  this->device.key_anywhere(kKeyRight);
  EXPECT_EQ(this->shown(), (MonthDayYear{11, 22, 2026}));
}

TYPED_TEST_P(Scenarios, WhatCannotBeReadStaysAsItWasUntilItCan) {
  this->add({11, 21, 2026}, 9, u"Dentist");
  this->start();
  this->device.choose(kCommandDayView);
  this->settle();
  const auto times = [&] {
    std::vector<Text> texts;
    for (const DayRow& row : this->application->day().agenda().rows) texts.push_back(row.time);
    return texts;
  };
  MemoryStore::Faults& faults = this->device.store().faults;
  faults.unreadable = true;
  faults.reason = "calendar.db is damaged.";
  for (int i = 0; i < 3; ++i) {
    this->application->handle_message({kMessageRefresh, 0, {}, 0});
    this->settle();
    EXPECT_EQ(this->subjects(), std::vector<Text>{u"Dentist"});
    EXPECT_NE(this->device.notice().find(u"calendar.db"), Text::npos);
    EXPECT_EQ(this->device.boxes(), 1) << "said once";
  }
  this->device.turn({320, 240});
  this->settle();
  EXPECT_EQ(this->subjects(), std::vector<Text>{u"Dentist"});
  // Another day has nothing to keep: an empty list would say that it is free.
  this->list_key(kKeyRight);
  EXPECT_EQ(times(), std::vector<Text>{u"Cannot be read"});
  faults.unreadable = false;
  this->application->handle_message({kMessageTimer, kTimerReadAgain, {}, 0});
  this->settle();
  EXPECT_EQ(times(), std::vector<Text>{u"No Appointments"});
  EXPECT_EQ(this->device.notice(), u"");
  EXPECT_EQ(this->device.boxes(), 1);
}

REGISTER_TYPED_TEST_SUITE_P(Scenarios, ThePenTurnsMonthsAndYears, KeysAndWheelMoveThroughTheMonths,
                            AHoldOpensThePopupAndATapInItTheDay, TheYearLeadsToItsMonthsAndDays,
                            ThePenReadsNotesAndTurnsDays,
                            AnAppointmentIsCarriedAndDeletedByMenuAndKeys,
                            ATurnedScreenKeepsTheViewAndFillsIt,
                            WhatIsModalStaysSoAndWhatComesMeanwhileWaits,
                            TheListBelowIsUsedAgainAfterATurnedScreen,
                            WhatCannotBeReadStaysAsItWasUntilItCan);

}  // namespace orvello
