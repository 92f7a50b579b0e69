#include "tests/contract/editor_scenarios.h"

#include <algorithm>

#include "resources/chooser_ids.h"
#include "resources/editor_ids.h"
#include "resources/ids.h"
#include "resources/notes_template.h"
#include "resources/recurrence_ids.h"
#include "settings/category_list.h"
#include "settings/load_settings.h"
#include "settings/pretexts.h"
#include "settings/registry_access.h"
#include "tests/appointments.h"

namespace orvello::test {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(EditorScenarios);

void EditorScenarios::SetUp() {
  bench_ = GetParam()();
  const Host all = device_.host();
  host_.reset(new Host{all.clock, all.locale, all.registry, all.files, all.databases, all.surfaces,
                       all.window, all.menu_bar, all.boxes, bench_->dialogs(), all.store,
                       all.input});
  device_.files.present.insert(u"\\Program Files\\Orvello\\settings.vol");
  device_.databases.create(kObjectStore, kCategoriesDatabase, kListLabel);
  EnsureSettingsKey(device_.registry);
  volume_.reset(new SettingsVolume{device_.databases, device_.boxes, device_.files});
  LoadSettings(settings_, device_.registry, *volume_, device_.clock, device_.locale.data(), true);
  settings_.shown = settings_.today = {11, 6, 2026};
  settings_.timeformat = 1;
  savePreTextToDB(*volume_, u"Meeting", kSubjectPretexts);
  screen_ = layout_screen({240, 291}, 96, 96, false);
  session_ = std::make_unique<StoreSession>(device_.store, device_.boxes);
  ASSERT_TRUE(session_->Open(nullptr));
  history_ = std::make_unique<EditHistory>(*session_);
  forms_ = std::make_unique<EditorForms>(
      EditorContext{*host_, *session_, settings_, *volume_, screen_, generation_, *history_});
}

void EditorScenarios::edit(const EditorChoice& choice, const std::function<void()>& person) {
  bench_->in_front(person);
  forms_->edit(choice);
  bench_->settle();
}

void EditorScenarios::write(int line, TextView text) {
  tap(line);
  bench_->settle();
  bench_->type(text);
}

void EditorScenarios::choose(int line, int list, int row) {
  tap(line);
  bench_->settle();
  taps_ += bench_->dropped_down() == list ? 1 : 2;
  bench_->choose_row(list, row);
}

std::vector<AppointmentRecord> EditorScenarios::records() {
  std::vector<AppointmentRecord> all;
  const auto oids = device_.store.oids(std::nullopt, std::nullopt);
  for (const std::int32_t oid : *oids) all.push_back(stored(oid));
  return all;
}

AppointmentRecord EditorScenarios::only_record() {
  const auto all = records();
  EXPECT_EQ(all.size(), 1u);
  return all.empty() ? AppointmentRecord() : all.front();
}

std::int32_t EditorScenarios::put_weekly(int day, int hour, TextView subject) {
  AppointmentRecord record = one_hour({11, day, 2026}, hour, subject);
  record.rules = "RRULE:FREQ=WEEKLY;COUNT=10";
  return device_.store.put(record);
}

TEST_P(EditorScenarios, ANewAppointmentIsWhatWasTypedAndChosen) {
  write_new([&] {
    EXPECT_EQ(bench_->title(), u"Appointment");
    for (const std::uint32_t command : {kCommandNew, kCommandOptions, kCommandExit})
      EXPECT_FALSE(device_.menu_bar.enabled(command)) << command;
    write(kLineSubject, u"Dentist");
    write(kLineLocation, u"Room 7");
    write(kLineStartTime, u"930");
    choose(kLineStatus, kEditStatus, 2);
    tap(kEditorRemind);
    tap(kEditorPrivate);
    tap(kEditorOk);
  });
  const AppointmentRecord saved = only_record();
  EXPECT_EQ(saved.fields.subject, u"Dentist");
  EXPECT_EQ(saved.fields.location, u"Room 7");
  EXPECT_EQ(saved.start, midnight_of(day_of(2026, 11, 6)) + 9 * 3600 + 1800);
  EXPECT_EQ(saved.end - saved.start, 1800) << "the default length is kept";
  EXPECT_EQ(saved.fields.busy_status, BusyStatus::out_of_office);
  EXPECT_TRUE(saved.fields.reminder_set);
  EXPECT_EQ(saved.fields.reminder_minutes, 30);
  EXPECT_EQ(saved.fields.sensitivity, 2);
  EXPECT_TRUE(device_.menu_bar.enabled(kCommandNew));
  EXPECT_EQ(boxes(), 0u);
  EXPECT_EQ(settings_.strprevlocation, u"Room 7");
}

TEST_P(EditorScenarios, WhatCannotBeSavedIsSaidAndStaysToBeMended) {
  device_.boxes.answers = {BoxAnswer::no};
  write_new([&] {
    tap(kEditorOk);
    EXPECT_NE(last_box().find(u"There is no subject text defined."), Text::npos);
    ASSERT_TRUE(bench_->seen(kLineSubject)) << "No leads back to the form";
    write(kLineSubject, u"Dentist");
    write(kLineEndTime, u"8:00");
    tap(kEditorOk);
    EXPECT_EQ(last_box(), u"The defined start date must be before the end date!");
    write(kLineEndTime, u"25:99");
    tap(kEditorOk);  // a time that is none keeps the one before
    ASSERT_TRUE(bench_->seen(kLineSubject));
    write(kLineEndTime, u"13:00");
    tap(kEditorRemind);
    write(kLineAmount, u"7");
    choose(kLineUnit, kEditUnit, 3);
    tap(kEditorOk);
    EXPECT_EQ(last_box(), u"Reminder time cannot be greater than than 45 days!");
    write(kLineAmount, u"x");  // no number is one
    tap(kEditorOk);
  });
  const AppointmentRecord saved = only_record();
  EXPECT_EQ(saved.end, midnight_of(day_of(2026, 11, 6)) + 13 * 3600);
  EXPECT_EQ(saved.fields.reminder_minutes, 10080);
}

TEST_P(EditorScenarios, CancelAndEscapeSaveNothing) {
  write_new([&] {
    write(kLineSubject, u"Dentist");
    tap(kEditorCancel);
  });
  write_new([&] {
    write(kLineSubject, u"Dentist");
    bench_->press_close();
  });
  device_.boxes.answers = {BoxAnswer::cancel};
  write_new([&] { tap(kEditorOk); });  // without a subject: Cancel leaves the form
  EXPECT_TRUE(records().empty());
  EXPECT_TRUE(device_.menu_bar.enabled(kCommandNew));
}

TEST_P(EditorScenarios, AWeeklyMeetingTakesThreeTapsMoreThanASingleOne) {
  const int before = taps();
  write_new([&] {
    choose(kLineSubject, kEditSubject, 0);
    EXPECT_EQ(taps() - before, 3);
    choose(kLineOccurs, kEditOccurs, 1);
    EXPECT_EQ(taps() - before, 5);
    tap(kEditorOk);
  });
  const AppointmentRecord saved = only_record();
  EXPECT_FALSE(saved.fields.subject.empty());
  ASSERT_TRUE(saved.pattern);
  EXPECT_EQ(saved.pattern->type, RecurrenceType::weekly);
  EXPECT_EQ(saved.pattern->day_of_week_mask, 32) << "a Friday";
  EXPECT_TRUE(saved.pattern->no_end_date);
}

TEST_P(EditorScenarios, ThreeStepsMakeARecurrence) {
  write_new([&] {
    write(kLineSubject, u"Course");
    then([&] {
      EXPECT_EQ(bench_->title(), u"Appointment - Recurring");
      bench_->tap_row(kControlRecurrenceType, 1);
      tap(kControlNextStep);
      tap(kControlWeekdays[2]);
      tap(kControlNextStep);
      tap(kControlEndAfter);
      bench_->choose_row(kControlCount, 2);
      tap(kControlDone);
    });
    choose(kLineOccurs, kEditOccurs, 4);
    bench_->settle();
    tap(kEditorOk);
  });
  const AppointmentRecord saved = only_record();
  ASSERT_TRUE(saved.pattern);
  EXPECT_EQ(saved.pattern->type, RecurrenceType::weekly);
  EXPECT_EQ(saved.pattern->day_of_week_mask, 32 + 4);
  EXPECT_EQ(saved.pattern->occurrences, 3);
}

TEST_P(EditorScenarios, OneOccurrenceAllThatFollowAndTheSeries) {
  const std::int32_t oid = put_weekly(6, 9, u"Meeting");
  const CalendarDate third = to_calendar_date(midnight_of(day_of(2026, 11, 20)) + 9 * 3600);
  const auto answer = [&](int button, TextView subject) {
    edit({oid, third}, [&, button, subject = Text(subject)] {
      then([&, subject] {
        write(kLineSubject, subject);
        tap(kEditorOk);
      });
      tap(button);
    });
  };
  answer(kChooseOccurrence, u"Once");
  AppointmentRecord series = stored(oid);
  ASSERT_EQ(series.exceptions.size(), 1u);
  EXPECT_EQ(series.exceptions[0].fields.subject, u"Once");
  EXPECT_EQ(series.fields.subject, u"Meeting");
  answer(kChooseSeries, u"All");
  EXPECT_EQ(stored(oid).fields.subject, u"All");
  EXPECT_EQ(records().size(), 1u);
  answer(kChooseFollowing, u"Later");
  const auto both = records();
  ASSERT_EQ(both.size(), 2u);
  EXPECT_EQ(both[0].fields.subject, u"All");
  EXPECT_EQ(both[1].fields.subject, u"Later");
  EXPECT_TRUE(both[0].exceptions.empty());
  EXPECT_EQ(both[1].exceptions.size(), 1u) << "the change goes with its occurrence";
  answer(kControlCancel, u"Nothing");
  EXPECT_EQ(records().size(), 2u);
  for (int undone = 0; undone < 3; ++undone) EXPECT_TRUE(history_->undo(device_.boxes));
  series = only_record();
  EXPECT_EQ(series.fields.subject, u"Meeting");
  EXPECT_TRUE(series.exceptions.empty());
  for (int redone = 0; redone < 3; ++redone) EXPECT_TRUE(history_->redo(device_.boxes));
  EXPECT_EQ(records().size(), 2u);
}

TEST_P(EditorScenarios, NotesAreWrittenAndKept) {
  write_new([&] {
    write(kLineSubject, u"Dentist");
    tap(kEditorNotes);
    bench_->settle();
    EXPECT_EQ(bench_->title(), u"Appointment - Notes");
    bench_->type(u"Bring the card");
    bench_->press_close();  // leaves the notes alone
    bench_->settle();
    EXPECT_EQ(bench_->title(), u"Appointment");
    tap(kEditorOk);
  });
  AppointmentRecord saved = only_record();
  EXPECT_EQ(saved.fields.body, u"Bring the card");
  EXPECT_TRUE(saved.fields.body_ink.empty());
  edit({saved.oid}, [&] {
    tap(kEditorNotes);
    bench_->settle();
    bench_->draw(kNotesPage, {{20, 30}, {40, 50}});
    tap(kEditorOk);  // leaves the notes as well
    bench_->settle();
    tap(kEditorOk);
  });
  saved = only_record();
  EXPECT_EQ(saved.fields.body, u"Bring the card");
}

TEST_P(EditorScenarios, CategoriesAndAttendeesAreChosen) {
  device_.store.put_contact({0, u"Novak, Eva", u"Eva", {}, u"Novak", {}, {u"eva@sample.org"}, {}});
  device_.boxes.answers = {BoxAnswer::no};  // nobody is told
  write_new([&] {
    write(kLineSubject, u"Dentist");
    then([&] {
      if (!bench_->seen(kControlLabel)) tap(kControlLabelBarToggle);
      tap(kControlLabel);
      bench_->type(u"Health");
      tap(kControlAddLabel);  // and marks it
      tap(kControlHeaderOk);
    });
    tap(kLineCategories);
    bench_->settle();
    then([&] {
      bench_->tap_row(kControlChooserList, 0);
      tap(kControlHeaderOk);
    });
    tap(kLineAttendees);
    bench_->settle();
    tap(kEditorOk);
  });
  const AppointmentRecord saved = only_record();
  EXPECT_EQ(saved.fields.categories, u"Health");
  EXPECT_EQ(saved.recipients, (std::vector<StoreRecipient>{{u"Eva Novak", u"eva@sample.org"}}));
  EXPECT_EQ(last_box(), u"Inform attendees about this appointment change?");
}

TEST_P(EditorScenarios, WhatWasDeletedElsewhereCanBeKeptAsNew) {
  AppointmentRecord record = one_hour({11, 6, 2026}, 9, u"Dentist");
  const std::int32_t oid = device_.store.put(record);
  device_.boxes.answers = {BoxAnswer::ok, BoxAnswer::yes};
  edit({oid}, [&] {
    write(kLineLocation, u"Room 8");
    device_.store.erase(oid);
    then([&] { tap(kEditorOk); });
    tap(kEditorOk);
  });
  const AppointmentRecord saved = only_record();
  EXPECT_NE(saved.oid, 0);
  EXPECT_EQ(saved.fields.subject, u"Dentist");
  EXPECT_EQ(saved.fields.location, u"Room 8");
}

TEST_P(EditorScenarios, WhatCannotBeReadOpensAnEmptyFormThatCanBeLeft) {
  const std::int32_t oid = device_.store.put(one_hour({11, 6, 2026}, 9, u"Dentist"));
  device_.store.faults.unreadable = true;
  edit({oid}, [&] {
    EXPECT_EQ(last_box().substr(0, 30), u"Error getting appointment info");
    tap(kEditorCancel);
  });
  device_.store.faults = {};
  EXPECT_EQ(only_record().fields.subject, u"Dentist");
}

}  // namespace orvello::test
