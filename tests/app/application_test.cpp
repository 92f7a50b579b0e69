#include "app/application.h"

#include <gtest/gtest.h>

#include "app/own_messages.h"
#include "hosts/headless/headless_host.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "settings/load_settings.h"
#include "settings/profiles.h"
#include "settings/registry_access.h"
#include "tests/app/noted_editor.h"
#include "tests/appointments.h"

namespace orvello {
namespace {

using namespace std::chrono_literals;

struct ApplicationTest : testing::Test {
  void start(const StartOptions& options = {}, const FormParts& forms = {}) {
    device.files.present.insert(u"\\Program Files\\Orvello\\settings.vol");
    device.menu_bar.destroy();  // of an earlier start, whose process is gone
    application = std::make_unique<Application>(device.host(), options, forms);
    result = application->start_up();
  }

  // A one-hour appointment on a day of November 2026.
  void add(int day, int hour, TextView subject, TextView categories = u"") {
    AppointmentRecord record = one_hour({11, day, 2026}, hour, subject);
    record.fields.categories = categories;
    ASSERT_GT(device.store.put(record), 0);
  }

  void add_profile(TextView name, TextView label) {
    ListSelection selection{{Text(label)}, {0}};
    saveProfileInfoToDatabase({device.databases, device.boxes, device.files},
                              Text(kProfilePrefix) + Text(name), selection);
  }

  ViewMode mode() const { return application->state().view_mode; }
  MonthDayYear shown() const { return application->state().current; }
  bool idle() {
    device.window.pump();
    return application->grid().worker().wait_until_idle(20s);
  }
  // The rows of the Day view: time and subject, or what else stands there.
  std::vector<Text> rows() const {
    std::vector<Text> texts;
    for (const ReportRow& row : device.dialogs.modeless->rows(kControlDayList).content().rows)
      texts.push_back(row.cells[0] + u"|" + row.cells[2]);
    return texts;
  }
  int drawings() {
    EXPECT_TRUE(idle());
    return device.surfaces.published;
  }

  HeadlessHost device;
  std::unique_ptr<Application> application;
  StartResult result = StartResult::no_window;
};

TEST_F(ApplicationTest, StartsInTheMonthViewWithEverythingInPlace) {
  start();
  EXPECT_EQ(result, StartResult::running);
  EXPECT_EQ(mode(), ViewMode::month);
  EXPECT_EQ(shown(), (MonthDayYear{11, 21, 2026}));
  EXPECT_EQ(device.dialogs.modeless, nullptr);
  EXPECT_TRUE(device.window.shown());
  EXPECT_TRUE(device.menu_bar.checked(kCommandMonthView));
  EXPECT_TRUE(application->session().logged_on());
  EXPECT_EQ(device.window.timers().count(kTimerDayChange), 1u);
  EXPECT_EQ(device.window.wait_cursors(), 0);
  EXPECT_GE(drawings(), 1);
  EXPECT_TRUE(device.boxes.shown.empty());
  // The view, the gap and the menu bar share the work area.
  const ScreenLayout& layout = application->state().layout;
  EXPECT_EQ(layout.work.width, 240);
  EXPECT_EQ(layout.work.height + device.menu_bar.height() + 2, 320);
  EXPECT_EQ(layout.header_height, 49);
  device.window.paint();
  EXPECT_EQ(device.window.copied_size(), layout.work);
}

TEST_F(ApplicationTest, ASecondLaunchOnlyBringsTheFirstForward) {
  device.window.other_instance = true;
  start();
  EXPECT_EQ(result, StartResult::other_instance);
  EXPECT_TRUE(device.window.other_was_activated());
  EXPECT_FALSE(device.window.exists());
}

TEST_F(ApplicationTest, WithoutAWindowThereIsNoProgram) {
  device.window.fail_creation = true;
  start();
  EXPECT_EQ(result, StartResult::no_window);
}

TEST_F(ApplicationTest, SurvivesMissingInkAndAStoreThatCannotBeOpened) {
  device.input.missing = {u"inkx.dll"};
  device.store.faults.logon = true;
  start();
  EXPECT_EQ(result, StartResult::running);
  ASSERT_EQ(device.boxes.shown.size(), 2u);
  EXPECT_EQ(device.boxes.shown[0].text, u"Unable to load inkx.dll");
  EXPECT_EQ(device.boxes.shown[0].icon, BoxIcon::warning);
  EXPECT_TRUE(starts_with(device.boxes.shown[1].text, u"Failure to logon to app object."));
  EXPECT_GE(drawings(), 1);  // an empty month
}

// A second start's files, a command and a reconnect that come while the start-up asks something.
TEST_F(ApplicationTest, WhatComesDuringTheStartWaitsForItsEnd) {
  device.input.missing = {u"inkx.dll"};
  bool called = false;
  device.boxes.meanwhile = [&] {
    device.boxes.meanwhile = nullptr;
    application->when_free([&] { called = true; });
    device.window.post({kMessageCommand, kCommandYearView, {}, 0});
    device.window.post({kMessageReconnect, 0, {}, 0});
    device.window.pump();
    EXPECT_FALSE(called);
    EXPECT_EQ(mode(), ViewMode::none_yet);
    EXPECT_EQ(device.store.applications_created, 0);
  };
  start();
  EXPECT_FALSE(called);
  EXPECT_EQ(mode(), ViewMode::month);
  device.window.pump();
  EXPECT_TRUE(called);
  EXPECT_EQ(mode(), ViewMode::year);
  EXPECT_EQ(device.store.applications_created, 2);
}

// The grids keep what they showed, and their words and popups never say that a day is free.
TEST_F(ApplicationTest, TheGridsKeepTheirLastGoodPicture) {
  EnsureSettingsKey(device.registry);
  WriteNumberSetting(device.registry, u"showindicator", 1);
  WriteNumberSetting(device.registry, u"coloryearview", 1);
  add(9, 10, u"Dentist");
  start();
  EXPECT_TRUE(idle());
  ASSERT_EQ(application->grid().month().snapshot()->period.items.size(), 1u);
  device.window.command(kCommandYearView);
  EXPECT_TRUE(idle());
  const YearMarks marks = application->grid().year().snapshot()->marks;
  ASSERT_TRUE(marks.at(11, 9));
  device.store.faults.unreadable = device.store.faults.busy = true;
  device.store.faults.reason = "calendar.db is in use.";
  const auto refresh = [&] {
    device.window.send({kMessageRefresh, 0, {}, 0});
    EXPECT_TRUE(idle());
  };
  refresh();
  EXPECT_EQ(application->grid().year().snapshot()->marks, marks);
  device.window.command(kCommandMonthView);
  EXPECT_TRUE(idle());
  EXPECT_EQ(application->grid().month().snapshot()->period.items.size(), 1u);
  ASSERT_TRUE(device.window.notice);
  EXPECT_EQ(device.window.notice->text.find(u"Shown as it was"), 0u);
  EXPECT_EQ(device.window.timers().count(kTimerReadAgain), 1u);
  AccessibleGrid grid = application->grid().accessible_grid();
  grid.cells.resize(grid.cells.size() - static_cast<std::size_t>(grid.buttons));
  for (const AccessibleCell& cell : grid.cells)
    EXPECT_TRUE(cell.name.empty() || cell.name.find(u"cannot be read") != Text::npos);
  EXPECT_EQ(application->grid().accessible_items(20), std::vector<Text>{u"Cannot be read"});
  device.dialogs.person = [](HeadlessDialog& popup) {
    EXPECT_EQ(popup.rows(kControlDayList).content().rows[0].cells[0], u"Cannot be read");
  };
  device.window.key(kKeySpace);
  EXPECT_TRUE(device.boxes.shown.empty()) << "another program is patience, not a fault";
  // Another page has nothing to keep.
  device.window.key(kKeyPageUp);
  EXPECT_TRUE(idle());
  EXPECT_TRUE(application->grid().month().snapshot()->period.items.empty());
  EXPECT_EQ(device.window.notice->text.find(u"The calendar cannot be read"), 0u);
  for (int i = 0; i < 9; ++i) {
    device.window.fire_timer(kTimerReadAgain);
    EXPECT_TRUE(idle());
  }
  EXPECT_EQ(device.boxes.shown.size(), 1u) << "when it lasts, it is told, once";
  device.store.faults = {};
  EXPECT_TRUE(device.window.fire_timer(kTimerReadAgain));
  EXPECT_TRUE(idle());
  EXPECT_FALSE(device.window.notice);
  EXPECT_EQ(device.window.timers().count(kTimerReadAgain), 0u);
  device.window.key(kKeyPageDown);
  EXPECT_TRUE(idle());
  EXPECT_EQ(application->grid().month().snapshot()->period.items.size(), 1u);
}

TEST_F(ApplicationTest, ABadSettingsVolumeIsNamedOnceAtTheStart) {
  EnsureSettingsKey(device.registry);
  WriteTextSetting(device.registry, u"activeprofilename", u"Work");
  device.databases.fail_mount = DatabaseError::disk_full;
  start();
  EXPECT_EQ(result, StartResult::running);
  ASSERT_EQ(device.boxes.shown.size(), 2u);
  EXPECT_EQ(device.boxes.shown[0].text, u"Database mount failed: Disk Full");
  EXPECT_EQ(device.boxes.shown[1].text,
            u"The profile \"Work\" could not be read. All appointments are shown.");
  device.window.command(kCommandFirstProfile);  // from now on each operation says what failed
  EXPECT_EQ(device.boxes.shown.size(), 3u);
}

TEST_F(ApplicationTest, ANewUserIsGreetedUntilTheGreetingIsPutAway) {
  start();  // the settings volume is empty
  device.dialogs.person = [](HeadlessDialog& greeting) { greeting.press(kControlOk); };
  application->greet();
  EXPECT_EQ(device.dialogs.opened, std::vector<int>{kDialogGreeting});
  application->greet();
  EXPECT_EQ(device.dialogs.opened.size(), 1u);
}

TEST_F(ApplicationTest, StartModeChoosesTheViewAndOptionsOverrideIt) {
  EnsureSettingsKey(device.registry);
  WriteNumberSetting(device.registry, u"startmode", 0);
  add(21, 9, u"Dentist");
  start();
  EXPECT_EQ(mode(), ViewMode::day);
  ASSERT_NE(device.dialogs.modeless, nullptr);
  EXPECT_EQ(rows(), (std::vector<Text>{u"9:00a-10:00a|Dentist"}));

  StartOptions options;
  options.view = 2;
  options.date = {3, 5, 2031};
  start(options);
  EXPECT_EQ(mode(), ViewMode::year);
  EXPECT_EQ(shown(), (MonthDayYear{3, 5, 2031}));

  WriteNumberSetting(device.registry, u"startmode", 7);
  start();
  EXPECT_EQ(mode(), ViewMode::none_yet);
  device.window.send({kMessageRefresh, 0, {}, 0});  // acknowledged and ignored
  device.window.command(kCommandMonthView);
  EXPECT_EQ(mode(), ViewMode::month);
}

TEST_F(ApplicationTest, ViewCommandsDoNothingInTheirOwnView) {
  start();
  const int before = drawings();
  device.window.command(kCommandMonthView);
  EXPECT_EQ(drawings(), before);
  device.window.command(kCommandDayView);
  HeadlessDialog* day = device.dialogs.modeless;
  ASSERT_NE(day, nullptr);
  device.window.command(kCommandDayView);
  EXPECT_EQ(device.dialogs.modeless, day);
  device.window.command(kCommandYearView);
  EXPECT_EQ(device.dialogs.modeless, nullptr);
  EXPECT_EQ(mode(), ViewMode::year);
  EXPECT_FALSE(device.menu_bar.checked(kCommandMonthView));
  EXPECT_TRUE(device.menu_bar.checked(kCommandYearView));
}

TEST_F(ApplicationTest, KeysMoveTheSelectedDayAndTurnPages) {
  NotedEditor editor;
  start({}, {.appointment = &editor});
  EXPECT_FALSE(application->grid().focus_visible());
  device.window.key(kKeyRight);
  EXPECT_EQ(shown(), (MonthDayYear{11, 22, 2026}));
  EXPECT_TRUE(application->grid().focus_visible());
  device.window.key(kKeyDown);
  device.window.key(kKeyDown);
  EXPECT_EQ(shown(), (MonthDayYear{12, 6, 2026}));
  device.window.key(kKeyInsert);
  device.window.key(u'N');
  EXPECT_EQ(editor.edited, std::vector<EditorChoice>(2)) << "new ones, on the selected day";
  EXPECT_EQ(application->settings().shown, (MonthDayYear{12, 6, 2026}));
  device.window.key(kKeyPageDown);
  EXPECT_EQ(shown(), (MonthDayYear{1, 6, 2027}));
  device.window.key(kKeyPageUp, kShiftHeld);
  EXPECT_EQ(shown(), (MonthDayYear{1, 6, 2026}));
  device.window.key(kKeyHome);
  EXPECT_EQ(shown(), (MonthDayYear{11, 21, 2026}));
  device.window.wheel({100, 100}, 1);
  EXPECT_EQ(shown(), (MonthDayYear{10, 21, 2026}));
  application->set_current_date({1, 31, 2026});
  device.window.key(kKeyPageDown);
  EXPECT_EQ(shown(), (MonthDayYear{2, 28, 2026}));  // never a day that the month lacks
  device.window.tap({120, 200});
  EXPECT_FALSE(application->grid().focus_visible());
}

TEST_F(ApplicationTest, AThousandRequestsTakeOneSnapshotAndMakeOneDrawing) {
  EnsureSettingsKey(device.registry);
  WriteNumberSetting(device.registry, u"showindicator", 1);
  start();
  const int before = drawings();
  const int queries = device.store.queries;
  for (int i = 0; i < 1000; ++i) device.window.send({kItemChangedRemote, 0, {}, 0});
  EXPECT_EQ(drawings(), before + 1);
  EXPECT_EQ(device.store.queries - queries, 3);
}

TEST_F(ApplicationTest, MidnightMovesTheMarkOfTodayInTheMonthViewOnly) {
  start();
  const int before = drawings();
  EXPECT_TRUE(device.window.fire_timer(kTimerDayChange));
  EXPECT_EQ(drawings(), before);  // the same day
  device.clock.set({2026, 11, 0, 22, 0, 0, 10, 0});
  device.window.fire_timer(kTimerDayChange);
  EXPECT_EQ(application->state().today, (MonthDayYear{11, 22, 2026}));
  EXPECT_EQ(drawings(), before + 1);
  device.window.command(kCommandDayView);
  device.clock.set({2026, 11, 0, 23, 0, 0, 10, 0});
  device.window.fire_timer(kTimerDayChange);
  EXPECT_EQ(drawings(), before + 1);
}

TEST_F(ApplicationTest, ChangesInTheStoreReachTheView) {
  start();
  const int before = drawings();
  add(3, 9, u"New");
  device.store.poll();
  EXPECT_GT(device.window.pump(), 0);
  EXPECT_EQ(drawings(), before + 1);
  device.window.command(kCommandDayView);
  application->set_current_date({11, 3, 2026});
  device.window.send({kItemChangedRemote, 0, {}, 0});
  EXPECT_EQ(rows(), (std::vector<Text>{u"9:00a-10:00a|New"}));
}

TEST_F(ApplicationTest, ReconnectOpensTheSessionAgain) {
  start();
  const int before = device.store.applications_created;
  device.window.send({kMessageReconnect, 0, {}, 0});
  EXPECT_EQ(device.store.applications_created, before + 1);
  EXPECT_TRUE(application->session().logged_on());
  EXPECT_EQ(device.dialogs.opened.size(), 0u);  // no day list in the Month view
}

TEST_F(ApplicationTest, APageThatAProfileEmptiesSaysSo) {
  add_profile(u"Sport", u"Sport");
  add(21, 9, u"Meeting", u"Work");
  EnsureSettingsKey(device.registry);
  for (const TextView marks : {u"showindicator", u"coloryearview"})
    WriteNumberSetting(device.registry, marks, 1);
  WriteTextSetting(device.registry, u"activeprofilename", u"Sport");
  start();
  for (const std::uint32_t command : {kCommandMonthView, kCommandYearView}) {
    device.window.command(command);
    EXPECT_TRUE(idle());
    EXPECT_NE(device.window.accessible_view->accessible_grid().name.find(u"“Sport” hides all"),
              Text::npos);
  }
}

TEST_F(ApplicationTest, AScreenReaderHearsTheGridsAndOpensDays) {
  add(21, 9, u"Dentist");
  add(9, 9, u"Early");
  start();
  EXPECT_TRUE(idle());
  AccessibleView* view = device.window.accessible_view;
  ASSERT_NE(view, nullptr);
  const auto cell_of = [view](TextView name) {
    const auto cells = view->accessible_grid().cells;
    for (std::size_t i = 0; i < cells.size(); ++i)
      if (starts_with(cells[i].name, name)) return static_cast<int>(i);
    return -1;
  };
  for (const std::uint32_t command : {kCommandMonthView, kCommandYearView}) {
    device.window.command(command);
    EXPECT_TRUE(idle());
    const int today = cell_of(u"21 November, 1 appointment");
    ASSERT_GE(today, 0) << command;
    EXPECT_TRUE(view->accessible_grid().cells[static_cast<std::size_t>(today)].selected);
    EXPECT_EQ(view->accessible_items(today), std::vector<Text>{u"9:00a-10:00a Dentist"});
    EXPECT_GE(cell_of(u"8 November, no appointments"), 0);
  }
  add(8, 9, u"Another");  // counts follow the store
  device.store.poll();
  EXPECT_TRUE(idle());
  const int cell = cell_of(u"8 November, 1 appointment");
  ASSERT_GE(cell, 0);
  view->choose_accessible(cell);
  EXPECT_EQ(mode(), ViewMode::day);
  EXPECT_EQ(shown(), (MonthDayYear{11, 8, 2026}));
  EXPECT_TRUE(view->accessible_grid().cells.empty());  // the list speaks for itself
  for (const std::uint32_t command : {kCommandMonthView, kCommandYearView}) {
    device.window.command(command);
    EXPECT_TRUE(idle());
    EXPECT_EQ(view->accessible_grid().buttons, 15);
    view->choose_accessible(cell_of(u"Next year: 2027"));
    EXPECT_EQ(shown().year, 2027);
    EXPECT_TRUE(idle());
    view->choose_accessible(cell_of(u"Today"));
    EXPECT_EQ(shown(), application->state().today);
    EXPECT_TRUE(idle());
    view->choose_accessible(cell_of(u"March"));
    EXPECT_EQ(shown().month, 3);
    EXPECT_EQ(mode(), ViewMode::month);
  }
}

TEST_F(ApplicationTest, TheYearNamesADayUnderThePointer) {
  add(21, 9, u"Dentist");
  StartOptions options;
  options.view = 2;
  start(options);
  EXPECT_TRUE(idle());
  const Point day = cell_place(application->grid().year().layout(), {11, 21, 2026}).center();
  device.window.hover(day);
  ASSERT_TRUE(device.window.label);
  EXPECT_NE(device.window.label->text.find(u"9:00a-10:00a Dentist"), Text::npos);
  EXPECT_EQ(device.window.label->text_color, rgb(153, 0, 0));
  EXPECT_FALSE(device.window.label->place.contains(day));
  device.window.hover({-1, -1});
  EXPECT_FALSE(device.window.label);
  device.window.hover(day);
  device.window.command(kCommandMonthView);
  EXPECT_FALSE(device.window.label);
  // The Month view too, but there a press may be the beginning of a drag.
  EXPECT_TRUE(idle());
  const Point same = application->grid().month().place_of({11, 21, 2026}).center();
  device.window.hover(same);
  ASSERT_TRUE(device.window.label);
  EXPECT_NE(device.window.label->text.find(u"9:00a-10:00a Dentist"), Text::npos);
  device.window.press(same);
  EXPECT_FALSE(device.window.label);
  device.window.hover({same.x, same.y + 1});
  EXPECT_FALSE(device.window.label);
}

// A drawing under way, and the paint of every moment.
TEST_F(ApplicationTest, WhatIsCopiedHasTheLayoutsSizeAtEveryMoment) {
  StartOptions options;
  options.view = 2;
  start(options);
  EXPECT_TRUE(idle());
  const auto expect_agreement = [&](Size work) {
    device.window.paint();
    EXPECT_EQ(application->state().layout.work, work);
    EXPECT_EQ(device.window.copied_size(), work);
    EXPECT_TRUE(device.window.copied_whole());
  };
  const Size upright = application->state().layout.work;
  std::atomic<bool> go{false};
  DrawingWorker& worker = application->grid().worker();
  worker.request([&](Canvas&, const std::atomic<int>&, const std::function<void()>&) {
    for (int i = 0; i < 5000 && !go; ++i) std::this_thread::sleep_for(1ms);
    return true;
  });
  while (worker.draw_state() != kDrawing) std::this_thread::sleep_for(1ms);
  device.window.raise_panel(80);  // takes room of the window, and nothing else
  EXPECT_EQ(device.window.place().height, upright.height - 80);
  expect_agreement(upright);
  EXPECT_EQ(device.surfaces.sizes.size(), 2u) << "the one drawn on, the one to measure with";
  EXPECT_EQ(worker.draw_state(), kDrawing) << "it is not stale";
  ScreenInfo screen = HeadlessWindow::default_screen();
  screen.resolution = {320, 240};
  screen.work_area = {0, 0, 320, 240};
  device.window.rotate(screen);
  expect_agreement({320, upright.height - 80});
  EXPECT_TRUE(application->state().landscape);
  device.window.tap({160, 120});  // nothing is drawn there yet
  EXPECT_EQ(mode(), ViewMode::year);
  go = true;
  EXPECT_TRUE(idle());
  expect_agreement({320, upright.height - 80});
  device.window.tap({160, 120});
  EXPECT_NE(mode(), ViewMode::year);
}

TEST_F(ApplicationTest, TheMenuBarComesAndGoesWithActivation) {
  start();
  device.window.set_active(false);
  EXPECT_FALSE(device.menu_bar.exists());
  device.window.set_active(true);
  EXPECT_TRUE(device.menu_bar.exists());
  EXPECT_TRUE(device.menu_bar.checked(kCommandMonthView));
  device.window.set_active(true);
  EXPECT_EQ(device.menu_bar.creations, 2);
}

TEST_F(ApplicationTest, ProfilesFilterAndAreRemembered) {
  add_profile(u"Work", u"Work");
  add_profile(u"Home", u"Home");
  add(21, 9, u"Meeting", u"Work");
  add(21, 11, u"Gardening", u"Home");
  StartOptions options;
  options.view = 0;
  start(options);
  EXPECT_EQ(rows().size(), 2u);
  device.window.command(kCommandFirstProfile + 2);
  EXPECT_EQ(rows(), (std::vector<Text>{u"11:00a-12:00p|Gardening"}));
  Text name;
  ReadTextSetting(device.registry, u"activeprofilename", name);
  EXPECT_EQ(name, u"Home");
  const auto& menu = device.menu_bar.menu(kCommandProfileMenu);
  ASSERT_EQ(menu.size(), 4u);
  EXPECT_FALSE(menu[0].checked);
  EXPECT_TRUE(menu[3].checked);
  EXPECT_EQ(device.menu_bar.highlight(kCommandProfileMenu), u"Profile: Home");
  device.window.command(kCommandFirstProfile + 3);  // one past the last
  EXPECT_EQ(rows().size(), 1u);
  device.window.command(kCommandFirstProfile);
  EXPECT_EQ(rows().size(), 2u);
  EXPECT_EQ(device.menu_bar.highlight(kCommandProfileMenu), u"");
  // The other views as well, each at once.
  for (const std::uint32_t view : {kCommandMonthView, kCommandYearView}) {
    device.window.command(view);
    for (const auto& [profile, begins] : {std::pair{1u, u"21 November, 1 appointment,"},
                                          std::pair{0u, u"21 November, 2 appointments,"}}) {
      const int before = drawings();
      device.window.command(kCommandFirstProfile + profile);
      EXPECT_EQ(drawings(), before + 1);
      const auto cells = device.window.accessible_view->accessible_grid().cells;
      EXPECT_TRUE(std::any_of(
          cells.begin(), cells.end(),
          [begins = TextView(begins)](const auto& cell) { return starts_with(cell.name, begins); }))
          << to_utf8(begins);
    }
  }
}

TEST_F(ApplicationTest, CommandsOpenTheForms) {
  NotedEditor editor;
  start({}, {.appointment = &editor});
  for (const MenuItem& item : device.menu_bar.menu(kCommandOptions))
    EXPECT_EQ(item.enabled && item.command != 0,
              item.command == kCommandSettings || item.command == kCommandSearch);
  application->state().to_edit.oid = 12;
  device.window.command(kCommandNew);
  device.window.command(kCommandNew);
  EXPECT_EQ(editor.edited, (std::vector<EditorChoice>{EditorChoice{12}, {}}));
  EXPECT_EQ(device.input.panel_hides, 2);
}

TEST_F(ApplicationTest, ClosingLetsGoOfEverything) {
  start();
  device.window.command(kCommandExit);
  EXPECT_TRUE(device.window.quit());
  EXPECT_EQ(device.window.quit_code(), 0);
  EXPECT_TRUE(device.window.timers().empty());
  EXPECT_TRUE(device.input.loaded.empty());
  EXPECT_FALSE(device.menu_bar.exists());
  EXPECT_EQ(device.store.initialized, 0);
  EXPECT_TRUE(device.databases.nothing_open());
}

TEST(Screen, GenerationComesFromTheVersion) {
  EXPECT_EQ(platform_generation(3, 0), 1);
  EXPECT_EQ(platform_generation(4, 19), 0);
  EXPECT_EQ(platform_generation(4, 20), 2);
  EXPECT_EQ(platform_generation(5, 1), 3);
  EXPECT_EQ(platform_generation(6, 0), 0);
}

}  // namespace
}  // namespace orvello
