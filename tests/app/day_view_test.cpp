#include <gtest/gtest.h>

#include "app/application.h"
#include "app/day_popups.h"
#include "app/own_messages.h"
#include "hosts/headless/headless_host.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "settings/registry_access.h"
#include "tests/app/noted_editor.h"
#include "tests/appointments.h"

namespace orvello {
namespace {

struct DayViewTest : testing::Test {
  void start() {
    device.files.present.insert(u"\\Program Files\\Orvello\\settings.vol");
    options.view = 0;
    options.date = {11, 21, 2026};
    application =
        std::make_unique<Application>(device.host(), options, FormParts{.appointment = editor});
    ASSERT_EQ(application->start_up(), StartResult::running);
    ASSERT_NE(device.dialogs.modeless, nullptr);
  }
  void set(TextView name, std::int32_t value) {
    EnsureSettingsKey(device.registry);
    WriteNumberSetting(device.registry, name, value);
  }
  std::int32_t add(int day, int hour, TextView subject, TextView body = u"",
                   std::string rules = {}) {
    AppointmentRecord record = one_hour({11, day, 2026}, hour, subject);
    record.fields.body = body;
    record.rules = std::move(rules);
    return device.store.put(record);
  }
  HeadlessDialog& dialog() { return *device.dialogs.modeless; }
  HeadlessReport& list() { return dialog().rows(kControlDayList); }
  const ReportRow& row(int index) {
    return list().content().rows.at(static_cast<std::size_t>(index));
  }
  std::vector<Text> subjects() {
    std::vector<Text> texts;
    for (const DayRow& one : application->day().agenda().rows) texts.push_back(one.subject);
    return texts;
  }
  CalendarDate list_start(std::size_t row) {
    return application->day().agenda().rows.at(row).start;
  }
  void tap_row(int index) { dialog().tap(kControlDayList, list().point_of(index)); }
  void tap_below() { dialog().tap(kControlDayList, {100, 260}); }
  void key(std::uint32_t code, bool held = false) { dialog().key(kControlDayList, code, held); }
  void hold_row(int index, std::uint32_t choice) {
    dialog().menu_choice = [choice](const std::vector<MenuItem>&) { return choice; };
    dialog().pen_down(kControlDayList, list().point_of(index));
    ASSERT_TRUE(dialog().fire_timer(kTimerMenu));
    dialog().pen_up(kControlDayList, list().point_of(index));
  }
  MonthDayYear shown() const { return application->state().current; }

  HeadlessHost device;
  StartOptions options;
  NotedEditor* editor = nullptr;
  std::unique_ptr<Application> application;
};

TEST_F(DayViewTest, KeysTurnDaysAndWeeksAndStepThroughAppointments) {
  add(21, 9, u"First");
  add(21, 11, u"Second");
  start();
  key(kKeyPageDown);
  key(kKeyPageDown);
  EXPECT_EQ(list().selected, std::vector<int>{1});
  key(kKeyPageDown);  // stays on the last
  EXPECT_EQ(application->day().selected_row(), 1);
  key(kKeyRight);
  EXPECT_EQ(shown(), (MonthDayYear{11, 22, 2026}));
  EXPECT_EQ(application->day().selected_row(), DayView::kNoRow);
  key(kKeyDown);
  key(kKeyDown);
  EXPECT_EQ(shown(), (MonthDayYear{12, 6, 2026}));
  key(kKeyUp);
  key(kKeyLeft);
  EXPECT_EQ(shown(), (MonthDayYear{11, 28, 2026}));
  key(kKeyHome);
  EXPECT_EQ(shown(), (MonthDayYear{11, 21, 2026}));
  key(kKeyEscape);
  EXPECT_EQ(application->state().view_mode, ViewMode::month);
}

TEST_F(DayViewTest, AChangeLeavesPlaceAndSelectionAlone) {
  for (int hour = 4; hour < 20; ++hour) add(21, hour, u"Busy");
  start();
  const Point from = list().point_of(8);
  dialog().pen_down(kControlDayList, from);
  dialog().pen_move(kControlDayList, {from.x, from.y - 20});
  dialog().pen_move(kControlDayList, {from.x, from.y - 60});
  dialog().pen_up(kControlDayList, {from.x, from.y - 60});
  EXPECT_EQ(list().scrolled, 40);
  add(21, 3, u"Earlier");
  device.store.poll();
  device.window.pump();
  EXPECT_EQ(list().scrolled, 40);
  EXPECT_EQ(application->day().selected_row(), 9);  // the same one, a row further down
  key(kKeyRight);
  key(kKeyLeft);
  EXPECT_EQ(list().scrolled, 0);
}

// What was under the pen is meant, wherever it stands when the pen is lifted or the menu closes.
TEST_F(DayViewTest, AListMadeAnewUnderThePenChangesNothingOfWhatIsMeant) {
  add(21, 11, u"Second", u"second floor");
  start();
  dialog().pen_down(kControlDayList, list().point_of(0));
  add(21, 9, u"First", u"first floor");
  device.window.send({kMessageRefresh, 0, {}, 0});
  dialog().pen_up(kControlDayList, list().point_of(0));
  Text notes;
  device.dialogs.person = [&](HeadlessDialog& bubble) {
    notes = bubble.controls.at(kControlNotes).drawn->parts.at(0).name;
  };
  ASSERT_TRUE(dialog().fire_timer(kTimerNotes));
  EXPECT_EQ(notes, u"Second. 11:00a-12:00p. second floor");
  // A menu runs a loop of its own, in which changes arrive.
  device.dialogs.person = [](HeadlessDialog& question) { question.press(kControlOk); };
  dialog().menu_choice = [&](const std::vector<MenuItem>&) {
    add(21, 8, u"Zeroth");
    device.window.send({kMessageRefresh, 0, {}, 0});
    return kCommandDelete;
  };
  dialog().pen_down(kControlDayList, list().point_of(0));
  ASSERT_TRUE(dialog().fire_timer(kTimerMenu));
  EXPECT_EQ(subjects(), (std::vector<Text>{u"Zeroth", u"Second"}));
}

TEST_F(DayViewTest, ATapShowsTheNotesAndASecondOneEdits) {
  NotedEditor noted;
  editor = &noted;
  const std::int32_t oid = add(21, 9, u"First", u"Bring the papers\r\n\r\n");
  start();
  Text shown_notes;
  int bubbles = 0;
  device.dialogs.person = [&](HeadlessDialog& bubble) {
    ASSERT_EQ(bubble.dialog.id, kDialogNotes);
    ++bubbles;
    shown_notes = bubble.controls.at(kControlNotes).drawn->parts.at(0).name;
    EXPECT_FALSE(bubble.dialog.outline.empty());
    bubble.pen_up(kControlNotes, {5, 5});
    EXPECT_TRUE(bubble.closed);
  };
  tap_row(0);
  EXPECT_EQ(bubbles, 0);
  EXPECT_TRUE(dialog().fire_timer(kTimerNotes));
  EXPECT_EQ(bubbles, 1);
  EXPECT_EQ(shown_notes, u"First. 9:00a-10:00a. Bring the papers");
  EXPECT_EQ(dialog().focused, kControlDayList);

  tap_row(0);
  dialog().pen_down(kControlDayList, list().point_of(0), true);
  ASSERT_EQ(noted.edited.size(), 1u);
  EXPECT_EQ(noted.edited[0].oid, oid);
  EXPECT_NE(noted.edited[0].occurrence, kNoDate);
  EXPECT_FALSE(dialog().fire_timer(kTimerNotes));
  dialog().pen_up(kControlDayList, list().point_of(0));
  EXPECT_EQ(bubbles, 1);
}

TEST_F(DayViewTest, AHeldBubbleOutlivesOneRelease) {
  const ScreenLayout screen = layout_screen({240, 290}, 96, 96, false);
  const ItemColors colors{};
  NotesProcedure procedure(NotesBubble(), {}, screen, colors, true);
  device.dialogs.person = [](HeadlessDialog& bubble) {
    bubble.pen_up(kControlNotes, {1, 1});
    EXPECT_FALSE(bubble.closed);
    bubble.press_beside();
    EXPECT_TRUE(bubble.closed);
  };
  DialogTemplate dialog;
  dialog.popup = true;
  dialog.controls = {{ControlTemplate::Kind::custom, kControlNotes, {}, {0, 0, 80, 40}}};
  EXPECT_EQ(device.dialogs.run_modal(dialog, procedure), kPopupLeft);
}

TEST_F(DayViewTest, CopyAndCutTravelToOtherDays) {
  add(21, 9, u"First");
  start();
  tap_row(0);
  key(u'C', true);
  key(u'V', true);
  ASSERT_EQ(device.boxes.shown.size(), 1u);
  EXPECT_EQ(device.boxes.shown[0].text, u"Cannot copy into same day");
  EXPECT_EQ(device.boxes.shown[0].caption, u"Error");
  EXPECT_EQ(subjects().size(), 1u);
  key(kKeyRight);
  key(u'V', true);
  EXPECT_EQ(subjects(), std::vector<Text>{u"First"});
  key(kKeyRight);
  key(u'V', true);  // a copy can be pasted again
  EXPECT_EQ(device.store.oids({}, {})->size(), 3u);

  tap_row(0);
  key(u'X', true);
  EXPECT_EQ(application->paste_source().copied, 0);
  tap_below();
  EXPECT_EQ(application->day().selected_row(), DayView::kPasteTarget);
  key(kKeyDown);
  key(u'V', true);
  EXPECT_EQ(subjects(), std::vector<Text>{u"First"});
  EXPECT_EQ(device.store.oids({}, {})->size(), 3u);
  EXPECT_FALSE(application->paste_source().any());
  tap_below();
  EXPECT_EQ(application->day().selected_row(), DayView::kNoRow);
}

TEST_F(DayViewTest, AMonthMovesAnAppointmentAndUndoBringsItBack) {
  const std::int32_t oid = add(21, 9, u"First");
  start();
  const auto day_stored = [&] { return whole_day((*device.store.load(oid))->fields.start); };
  device.dialogs.person = [](HeadlessDialog& month) {
    month.choose_date(kControlCalendar, {12, 3, 2026});
  };
  hold_row(0, kCommandMoveTo);
  EXPECT_EQ(day_stored(), day_of(2026, 12, 3));
  EXPECT_TRUE(subjects() != std::vector<Text>{u"First"});
  EXPECT_EQ(shown(), (MonthDayYear{11, 21, 2026}));
  const auto enabled = [&](std::uint32_t command) {
    for (const MenuItem& item : device.menu_bar.menu(kCommandOptions))
      if (item.command == command) return item.enabled;
    return false;
  };
  EXPECT_TRUE(enabled(kCommandUndo) && !enabled(kCommandRedo));
  key(u'Z', true);
  EXPECT_EQ(subjects(), std::vector<Text>{u"First"});
  EXPECT_TRUE(!enabled(kCommandUndo) && enabled(kCommandRedo));
  dialog().key(kControlDayList, u'Z', true, true);
  EXPECT_EQ(day_stored(), day_of(2026, 12, 3));
}

TEST_F(DayViewTest, AMoveThatFailsCanBeTriedAgain) {
  add(21, 9, u"First");
  start();
  tap_row(0);
  key(u'X', true);
  key(kKeyRight);
  device.store.faults.save = true;
  key(u'V', true);
  EXPECT_TRUE(application->paste_source().any());
  device.store.faults.save = false;
  key(u'V', true);
  EXPECT_EQ(subjects(), std::vector<Text>{u"First"});
  EXPECT_EQ(device.store.oids({}, {})->size(), 1u);
}

TEST_F(DayViewTest, TheMenuOffersWhatTheRowAllows) {
  add(21, 9, u"First");
  start();
  hold_row(0, kCommandCopy);
  EXPECT_NE(application->paste_source().copied, 0);
  EXPECT_FALSE(dialog().fire_timer(kTimerNotes));  // the release after a hold is no tap
  device.dialogs.person = [](HeadlessDialog& bubble) {
    bubble.press_beside();
    EXPECT_TRUE(bubble.closed) << "nobody holds it: the menu got the pen's release";
  };
  dialog().pen_down(kControlDayList, list().point_of(0));
  ASSERT_TRUE(dialog().fire_timer(kTimerMenu));
  key(kKeySpace);
  const auto offered = [this] {
    std::vector<std::uint32_t> commands;
    for (const MenuItem& one : dialog().menu) commands.push_back(one.enabled ? one.command : 0);
    return commands;
  };
  using Commands = std::vector<std::uint32_t>;
  dialog().pen_down(kControlDayList, {100, 260});
  ASSERT_TRUE(dialog().fire_timer(kTimerMenu));
  EXPECT_EQ(offered(), (Commands{kCommandPaste, kCommandCreate}));
  dialog().press_other_button(kControlDayList, list().point_of(0));
  EXPECT_EQ(offered().size(), 10u);
  EXPECT_EQ(application->day().selected_row(), 0);
}

TEST_F(DayViewTest, DeletingAsksWhichOccurrences) {
  add(21, 9, u"Once");
  add(21, 11, u"Daily", u"", "RRULE:FREQ=DAILY;COUNT=5");
  start();
  bool choices_offered = false, following_offered = false;
  int press = kControlCancel, choice = 0;
  device.dialogs.person = [&](HeadlessDialog& question) {
    ASSERT_EQ(question.dialog.id, kDialogDelete);
    EXPECT_EQ(question.text(kControlQuestion), u"Delete this Appointment?");
    choices_offered = question.controls.count(kControlSeries) != 0;
    if (choices_offered) {
      EXPECT_TRUE(question.checked(kControlOccurrence));
    }
    following_offered = question.controls.count(kControlFollowing) != 0;
    EXPECT_EQ(question.focused, kControlCancel) << "Return takes nothing away";
    if (choice != 0) question.press(choice);
    question.press(press);
  };
  tap_row(0);
  key(kKeyDelete);
  EXPECT_FALSE(choices_offered);
  EXPECT_EQ(subjects().size(), 2u);
  press = kControlOk;
  key(kKeyDelete);
  EXPECT_EQ(subjects(), std::vector<Text>{u"Daily"});
  tap_row(0);
  key(kKeyDelete);
  EXPECT_TRUE(choices_offered);
  EXPECT_EQ(subjects(), std::vector<Text>{u""});  // "No Appointments"
  key(kKeyRight);
  EXPECT_EQ(subjects(), std::vector<Text>{u"Daily"});
  key(kKeyRight);
  tap_row(0);
  choice = kControlFollowing;
  key(kKeyDelete);
  EXPECT_TRUE(following_offered);
  EXPECT_EQ(subjects(), std::vector<Text>{u""});
  key(kKeyLeft);
  EXPECT_EQ(subjects(), std::vector<Text>{u"Daily"});
  tap_row(0);
  choice = kControlSeries;
  key(kKeyDelete);
  EXPECT_FALSE(following_offered) << "it is the first one left";
  EXPECT_TRUE(device.store.oids({}, {})->empty());
}

TEST_F(DayViewTest, NothingIsDeletedThatCannotBeReadAndAskedAbout) {
  add(21, 9, u"Dentist");
  start();
  tap_row(0);
  device.store.faults.read = 1;
  device.store.faults.reason = "calendar.db is in use.";
  key(kKeyDelete);
  ASSERT_EQ(device.boxes.shown.size(), 1u);
  EXPECT_EQ(device.boxes.shown[0].text,
            u"Error in getting appointment info\ncalendar.db is in use.");
  EXPECT_EQ(device.dialogs.opened, std::vector<int>{kDialogDayView});
  EXPECT_EQ(subjects(), std::vector<Text>{u"Dentist"});
}

TEST_F(DayViewTest, AnAppointmentThatVanishedIsNamedAndTheSessionComesBack) {
  const std::int32_t oid = add(21, 9, u"Gone");
  start();
  tap_row(0);
  device.store.erase(oid);
  key(kKeyDelete);
  ASSERT_EQ(device.boxes.shown.size(), 2u);
  EXPECT_EQ(device.boxes.shown[0].text, u"Error in getting appointment info");
  EXPECT_EQ(device.boxes.shown[1].text, u"Failure to Obtain Appointment Item");
  EXPECT_TRUE(application->session().logged_on());
  EXPECT_EQ(application->day().agenda().emptiness, DayAgenda::Emptiness::nothing_found);
}

TEST_F(DayViewTest, HeaderTapsChooseTheDateTodayAndTheColours) {
  start();
  const DayHeaderLayout& header = application->day().header();
  device.dialogs.person = [](HeadlessDialog& chooser) {
    ASSERT_EQ(chooser.dialog.id, kDialogDate);
    EXPECT_EQ(chooser.date(kControlCalendar)->date(), (MonthDayYear{11, 21, 2026}));
    chooser.choose_date(kControlCalendar, {2, 29, 2028});
  };
  dialog().tap(kControlDayHeader, header.date.center());
  EXPECT_EQ(shown(), (MonthDayYear{2, 29, 2028}));
  dialog().tap(kControlDayHeader, header.today_picture.center());
  EXPECT_EQ(shown(), (MonthDayYear{11, 21, 2026}));
  for (const int expected : {1, 2, 3, 0}) {
    dialog().tap(kControlDayHeader, header.style_button.center());
    EXPECT_EQ(application->settings().rowcolorindex, expected);
    std::int32_t stored = -1;
    ReadNumberSetting(device.registry, u"rowcolorindex", stored);
    EXPECT_EQ(stored, expected);
  }
  // The same with keys: the three parts of the strip one after the other.
  for (int i = 0; i < 5; ++i) dialog().key(kControlDayHeader, kKeyRight);
  dialog().key(kControlDayHeader, kKeyReturn);
  EXPECT_EQ(application->settings().rowcolorindex, 1);
}

TEST_F(DayViewTest, ArrowsAndWheelsLeadToTheDaysBeside) {
  for (int hour = 0; hour < 20; ++hour) add(21, hour, u"Busy");
  start();
  const auto day_after = [&](const std::function<void()>& act) {
    act();
    return shown().day;
  };
  const DayHeaderLayout& header = application->day().header();
  EXPECT_EQ(day_after([&] { dialog().tap(kControlDayHeader, header.next.center()); }), 22);
  EXPECT_EQ(day_after([&] { dialog().tap(kControlDayHeader, header.previous.center()); }), 21);
  const std::vector<AccessibleCell>& parts = dialog().controls.at(kControlDayHeader).drawn->parts;
  ASSERT_EQ(parts.size(), 5u);
  EXPECT_EQ(parts[0].name, u"Day before");
  EXPECT_EQ(parts[2].place, header.next);
  const auto turn = [&](int control, int notches, bool sideways) {
    return day_after([&] { dialog().turn_wheel(control, {50, 5}, notches, sideways); });
  };
  EXPECT_EQ(turn(kControlDayList, -1, false), 21) << "its rows scroll";
  EXPECT_EQ(turn(kControlDayList, -1, true), 22);
  EXPECT_EQ(turn(kControlDayList, -1, false), 23) << "nothing to scroll";
  EXPECT_EQ(turn(kControlDayHeader, 2, false), 21);
}

// A bubble keeps nobody waiting: the press that closes it is also one on what lies there.
TEST_F(DayViewTest, ThePressThatClosesABubbleIsAPressBelow) {
  NotedEditor noted;
  editor = &noted;
  add(21, 9, u"First");
  add(21, 11, u"Second");
  start();
  std::vector<Text> bubbles;
  std::vector<std::function<void()>> acts;
  device.dialogs.person = [&](HeadlessDialog& bubble) {
    bubbles.push_back(cut(bubble.controls.at(kControlNotes).drawn->parts.at(0).name, 6));
    if (acts.empty()) return bubble.pen_up(kControlNotes, {5, 5});
    const auto act = acts.front();
    acts.erase(acts.begin());
    act();
    EXPECT_TRUE(bubble.closed);
  };
  using Bubbles = std::vector<Text>;
  const auto open_first = [&] {
    bubbles.clear();
    tap_row(0);
    EXPECT_TRUE(dialog().fire_timer(kTimerNotes));
  };
  acts = {[&] { tap_row(1); }, [&] { tap_row(0); }, [&] { tap_row(0); }};
  open_first();
  EXPECT_EQ(bubbles, (Bubbles{u"First.", u"Second", u"First."})) << "at once, and then away";
  EXPECT_FALSE(dialog().fire_timer(kTimerNotes));
  EXPECT_EQ(application->day().selected_row(), 0);

  acts = {[&] { dialog().pen_down(kControlDayList, list().point_of(0), true); }};
  open_first();
  EXPECT_EQ(noted.edited.size(), 1u) << "the second tap of two";

  acts = {[&] { dialog().pen_down(kControlDayList, list().point_of(1)); }};
  open_first();
  dialog().menu_choice = [](const std::vector<MenuItem>&) { return kCommandCopy; };
  EXPECT_TRUE(dialog().fire_timer(kTimerMenu));
  EXPECT_EQ(application->paste_source().start, list_start(1));

  acts = {[&] { dialog().tap(kControlDayHeader, application->day().header().next.center()); }};
  open_first();
  EXPECT_EQ(shown().day, 22);
  key(kKeyLeft);
  bubbles.clear();
  dialog().read_out_tap(kControlDayList, list().point_of(1));
  EXPECT_EQ(bubbles, Bubbles{u"Second"}) << "a screen reader taps once";
}

TEST_F(DayViewTest, APenDrawsAnAppointmentToAnotherTimeOfItsDay) {
  const std::int32_t oid = add(21, 9, u"Daily", u"", "RRULE:FREQ=DAILY;COUNT=3");
  add(21, 14, u"Later");
  start();
  const auto times = [&] {
    std::vector<Text> texts;
    for (const DayRow& row : application->day().agenda().rows) texts.push_back(row.time);
    return texts;
  };
  using Times = std::vector<Text>;
  const Times before = times();
  const Point on{10, list().point_of(0).y};
  const auto draw = [&](int down) {
    dialog().pen_down(kControlDayList, on);
    dialog().pen_move(kControlDayList, {on.x, on.y + 8});
    dialog().pen_move(kControlDayList, {on.x, on.y + down});
  };
  const auto lift = [&](Point at) { dialog().pen_up(kControlDayList, at); };
  draw(40);
  lift({on.x, on.y + 40});
  EXPECT_EQ(times(), before) << "it was not selected: the list would scroll";
  draw(40);
  EXPECT_EQ(device.window.label.value_or(HoverLabel()).text, u"10:15a-11:15a");
  key(kKeyEscape);
  EXPECT_FALSE(device.window.label.has_value());
  lift({on.x, on.y + 40});
  draw(40);
  lift({on.x, -30});
  EXPECT_EQ(times(), before);
  draw(60 * 8);
  lift({on.x, on.y + 200});
  EXPECT_EQ(times(), (Times{u"2:00p-3:00p", u"3:15p-4:15p"}));
  EXPECT_EQ(application->day().selected_row(), 1);
  key(kKeyRight);
  EXPECT_EQ(times(), Times{u"9:00a-10:00a"}) << "the others stay";
  key(kKeyLeft);
  key(u'Z', true);
  EXPECT_EQ(times(), before);
  EXPECT_EQ(device.store.load(oid)->value_or(AppointmentRecord()).fields.subject, u"Daily");
}

TEST_F(DayViewTest, ThePopupOfAMonthDayLeadsIntoTheDay) {
  add(9, 9, u"Early");
  add(9, 15, u"Late");
  set(u"showdaylabel", 1);
  start();
  device.window.command(kCommandMonthView);
  device.window.pump();
  device.dialogs.person = [](HeadlessDialog& popup) {
    ASSERT_EQ(popup.dialog.id, kDialogDayPopup);
    EXPECT_EQ(popup.controls.at(kControlDayHeader).drawn->parts.at(0).name, u"Mon - Nov 09, 2026");
    const ReportContent& content = popup.rows(kControlDayList).content();
    ASSERT_EQ(content.rows.size(), 2u);
    EXPECT_EQ(content.rows[1].cells[1], u"Late");
    EXPECT_EQ(content.background, rgb(255, 255, 255));
    popup.tap(kControlDayList, popup.rows(kControlDayList).point_of(1));
  };
  application->set_current_date({11, 9, 2026});
  device.window.key(kKeySpace);
  EXPECT_EQ(application->state().view_mode, ViewMode::day);
  EXPECT_EQ(shown(), (MonthDayYear{11, 9, 2026}));
}

}  // namespace
}  // namespace orvello
