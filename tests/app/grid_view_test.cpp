// What pen, mouse and keys do on the Month and the Year view, beside taps.
#include <gtest/gtest.h>

#include "app/application.h"
#include "app/own_messages.h"
#include "hosts/headless/headless_host.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "tests/app/noted_editor.h"
#include "tests/appointments.h"

namespace orvello {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<Text>;

MonthDayYear november(int day) { return {11, day, 2026}; }

struct GridViewTest : testing::Test {
  // On a large window, whose cells name their appointments.
  void start(int view = 1) {
    device.files.present.insert(u"\\Program Files\\Orvello\\settings.vol");
    StartOptions options;
    options.view = view;
    application =
        std::make_unique<Application>(device.host(), options, FormParts{.appointment = editor});
    ASSERT_EQ(application->start_up(), StartResult::running);
    ScreenInfo screen = device.window.screen();
    screen.resolution = {1000, 700};
    screen.work_area = {0, 0, 1000, 700};
    device.window.rotate(screen);
    idle();
  }
  void add(int day, int hour, TextView subject, std::string rules = {}) {
    AppointmentRecord record = one_hour(november(day), hour, subject);
    record.rules = std::move(rules);
    ASSERT_GT(device.store.put(record), 0);
  }
  void idle() {
    device.window.pump();
    ASSERT_TRUE(application->grid().worker().wait_until_idle(20s));
  }
  MonthDayYear shown() const { return application->state().current; }
  Point place(const MonthDayYear& date) {
    const GridView& grid = application->grid();
    const bool year = application->state().view_mode == ViewMode::year;
    return (year ? grid.year().place_of(date) : grid.month().place_of(date)).center();
  }
  // Of the first line of a day.
  Point line(const MonthDayYear& date) {
    const Rect cell = application->grid().month().place_of(date);
    for (int y = cell.y; y < cell.bottom(); ++y)
      if (application->grid().month().hit({cell.center().x, y}).item) return {cell.center().x, y};
    ADD_FAILURE() << "no line";
    return {};
  }
  Texts items(const MonthDayYear& date) {
    idle();
    const Point at = place(date);
    const auto cells = device.window.accessible_view->accessible_grid().cells;
    for (std::size_t i = 0; i < cells.size(); ++i)
      if (cells[i].place.contains(at))
        return device.window.accessible_view->accessible_items(static_cast<int>(i));
    return {u"no cell"};
  }
  // Opens the popup of a day, as a press that stays does.
  void hold(const MonthDayYear& date, std::function<void(HeadlessDialog&)> person) {
    device.dialogs.person = std::move(person);
    const Rect cell = application->grid().month().place_of(date);
    const Point number{cell.right() - 6, cell.y + 4};
    device.window.press(number);
    ASSERT_TRUE(device.window.fire_timer(kTimerHold));
    device.window.release(number);
    device.dialogs.person = nullptr;
  }
  void choose(std::uint32_t command) {
    device.window.menu_choice = [command](const std::vector<MenuItem>&) { return command; };
  }
  static std::vector<std::uint32_t> commands(const std::vector<MenuItem>& menu) {
    std::vector<std::uint32_t> found;
    for (const MenuItem& item : menu)
      if (item.enabled) found.push_back(item.command);
    return found;
  }
  Text label() { return device.window.label ? device.window.label->text : Text(); }

  HeadlessHost device;
  NotedEditor noted;
  NotedEditor* editor = &noted;
  std::unique_ptr<Application> application;
};

TEST_F(GridViewTest, ALineIsCarriedToAnotherDayInOneStep) {
  add(10, 9, u"Dentist", "RRULE:FREQ=WEEKLY;COUNT=2\n");
  start();
  const auto carry = [&](Point to) {
    device.window.press(line(november(10)));
    device.window.drag({place(november(10)).x + 40, place(november(10)).y});
    EXPECT_NE(label().find(u"Dentist"), Text::npos);
    ASSERT_TRUE(device.window.fire_timer(kTimerHold));
    device.window.drag(to);
  };
  carry(place(november(12)));
  EXPECT_NE(label().find(u"12"), Text::npos);
  idle();
  EXPECT_EQ(application->grid().month().snapshot()->marked, november(12));
  device.window.release(place(november(12)));
  EXPECT_EQ(items(november(10)), Texts());
  EXPECT_EQ(items(november(12)), Texts{u"9:00a-10:00a Dentist"});
  EXPECT_EQ(items(november(17)).size(), 1u) << "of a series this one alone";
  EXPECT_EQ(shown(), november(12));
  EXPECT_EQ(application->grid().month().snapshot()->marked.year, 0);
  device.window.key(u'Z', kControlHeld);
  EXPECT_EQ(items(november(10)).size(), 1u);
  EXPECT_EQ(items(november(12)), Texts());

  // Nowhere, by Escape, on its own day, and by a stroke too quick to be meant.
  carry({500, 20});
  device.window.release({500, 20});
  carry(place(november(12)));
  device.window.key(kKeyEscape);
  device.window.release(place(november(12)));
  carry(place(november(10)));
  device.window.release(place(november(10)));
  EXPECT_EQ(items(november(10)).size(), 1u);
  EXPECT_EQ(label(), Text());
  device.window.press(line(november(10)));
  device.window.drag({900, line(november(10)).y});
  device.window.release({900, line(november(10)).y});
  EXPECT_EQ(shown().month, 10) << "it turns the page";
  EXPECT_FALSE(application->history().can_undo());
}

TEST_F(GridViewTest, ThePageTurnsUnderWhatIsHeldAtItsEdge) {
  add(10, 9, u"Dentist");
  start();
  const auto to_edge = [&] {
    device.window.press(line(november(10)));
    device.window.drag({3, place(november(10)).y});
    device.window.fire_timer(kTimerHold);
    ASSERT_TRUE(device.window.fire_timer(kTimerEdge));
    idle();
    EXPECT_EQ(shown().month, 10);
  };
  to_edge();
  device.window.key(kKeyEscape);
  EXPECT_EQ(shown(), november(21)) << "back on its page";
  idle();
  to_edge();
  const MonthDayYear target{10, 14, 2026};
  device.window.drag(place(target));
  EXPECT_FALSE(device.window.fire_timer(kTimerEdge));
  device.window.release(place(target));
  EXPECT_EQ(items(target).size(), 1u);
}

TEST_F(GridViewTest, ARowIsCarriedOutOfThePopup) {
  add(10, 9, u"Dentist");
  add(10, 11, u"Haircut");
  start();
  const auto draw_out = [&](HeadlessDialog& popup, Point to) {
    HeadlessReport& list = popup.rows(kControlDayList);
    const Rect at = popup.place(kControlDayList);
    const Point from = list.point_of(1), there{to.x - at.x, to.y - at.y};
    popup.pen_down(kControlDayList, from);
    popup.pen_move(kControlDayList, {from.x + 20, from.y});
    EXPECT_FALSE(popup.seen(kControlDayList));
    popup.pen_move(kControlDayList, there);
    EXPECT_NE(label().find(u"Haircut"), Text::npos);
    popup.pen_up(kControlDayList, there);
  };
  hold(november(10), [&](HeadlessDialog& popup) {
    draw_out(popup, {500, 20});  // the title
    EXPECT_TRUE(popup.seen(kControlDayList));
    draw_out(popup, place(november(13)));
    EXPECT_TRUE(popup.closed);
  });
  EXPECT_EQ(items(november(13)), Texts{u"11:00a-12:00p Haircut"});
  EXPECT_EQ(label(), Text());
  hold(november(13), [&](HeadlessDialog& popup) {
    popup.pen_down(kControlDayList, {20, 5});
    popup.pen_move(kControlDayList, {60, 5});
    popup.key(kKeyEscape);
  });
  EXPECT_EQ(items(november(13)).size(), 1u);
  EXPECT_EQ(label(), Text());
}

TEST_F(GridViewTest, DaysLinesAndRowsHaveTheirMenus) {
  add(10, 9, u"Dentist");
  add(10, 11, u"Haircut");
  start();
  device.window.press_other_button(place(november(12)));
  EXPECT_EQ(commands(device.window.menu),
            (std::vector<std::uint32_t>{kCommandCreate, kCommandOpenDay}));
  device.window.menu.clear();
  device.window.press_other_button({500, 20});
  EXPECT_TRUE(device.window.menu.empty()) << "beside the days there is nothing to choose";
  choose(kCommandCopy);
  device.window.press_other_button(line(november(10)));
  choose(kCommandPaste);
  device.window.press_other_button(place(november(12)));
  EXPECT_EQ(items(november(12)), Texts{u"9:00a-10:00a Dentist"});
  for (int i = 0; i < 9; ++i) device.window.key(kKeyLeft);
  device.window.key(kKeyLeft);
  ASSERT_EQ(shown(), november(11));
  device.window.key(u'V', kControlHeld);
  EXPECT_EQ(items(november(11)).size(), 1u);

  hold(november(10), [](HeadlessDialog& popup) {
    popup.menu_choice = [](const std::vector<MenuItem>&) { return kCommandCut; };
    popup.pen_down(kControlDayList, popup.rows(kControlDayList).point_of(1));
    EXPECT_TRUE(popup.fire_timer(kTimerMenu));
  });
  EXPECT_NE(application->paste_source().cut, 0);
  hold(november(14), [](HeadlessDialog& popup) {
    popup.menu_choice = [](const std::vector<MenuItem>&) { return kCommandPaste; };
    popup.pen_down(kControlDayList, popup.rows(kControlDayList).point_of(0));
    EXPECT_TRUE(popup.fire_timer(kTimerMenu));
    EXPECT_EQ(commands(popup.menu), (std::vector<std::uint32_t>{kCommandCreate, kCommandPaste}));
  });
  EXPECT_EQ(items(november(14)), Texts{u"11:00a-12:00p Haircut"});
  hold(november(14), [](HeadlessDialog& popup) { popup.key(u'N'); });
  EXPECT_EQ(shown(), november(14)) << "the editor opened there";
  EXPECT_EQ(noted.edited.size(), 1u);
}

TEST_F(GridViewTest, ATappedRowOrLineOpensItsDayAtItself) {
  add(10, 9, u"Dentist");
  add(10, 11, u"Haircut");
  start();
  hold(november(10), [](HeadlessDialog& popup) { popup.tap_row(kControlDayList, 1); });
  EXPECT_EQ(application->state().view_mode, ViewMode::day);
  EXPECT_EQ(application->day().selected_row(), 1);
  device.window.command(kCommandMonthView);
  idle();
  device.window.tap(line(november(10)));
  EXPECT_EQ(application->day().selected_row(), 0);
}

TEST_F(GridViewTest, AFingerSlidesOverTheYearAndOpensTheDayThatItLeaves) {
  add(10, 9, u"Dentist");
  start(2);
  const Point from = place(november(9)), to = place(november(10));
  device.window.press(from);
  ASSERT_TRUE(device.window.fire_timer(kTimerHold));
  device.window.drag(to);
  EXPECT_NE(label().find(u"Dentist"), Text::npos);
  idle();
  EXPECT_EQ(application->grid().year().snapshot()->marked, november(10));
  device.window.release(to);
  EXPECT_EQ(application->state().view_mode, ViewMode::day);
  EXPECT_EQ(shown(), november(10));
  device.window.command(kCommandYearView);
  idle();
  device.window.press(from);
  device.window.drag({from.x - 300, from.y});
  ASSERT_TRUE(device.window.fire_timer(kTimerHold));
  device.window.release({from.x - 300, from.y});
  EXPECT_EQ(shown().year, 2027) << "a swipe is far by then";
}

TEST_F(GridViewTest, WheelsTurnPagesAndTheFrameFollowsTheKeyboard) {
  start();
  device.window.wheel({300, 300}, 1, true);
  EXPECT_EQ(shown().month, 12);
  device.window.wheel({300, 300}, 1);
  EXPECT_EQ(shown().month, 11);
  device.window.send({kMessageSetFocus, 0, {}, 0});
  EXPECT_TRUE(application->grid().focus_visible());
  device.window.send({kMessageKillFocus, 0, {}, 0});
  EXPECT_FALSE(application->grid().focus_visible());
}

}  // namespace
}  // namespace orvello
