#include "tests/contract/editor_contract.h"

#include "calendar/dates.h"
#include "editor/appointment_rules.h"
#include "editor/editor_lines.h"
#include "ports/messages.h"
#include "resources/editor_ids.h"
#include "resources/form_ids.h"
#include "resources/ids.h"
#include "resources/notes_template.h"
#include "resources/recurrence_ids.h"
#include "settings/pretexts.h"
#include "tests/appointments.h"

namespace orvello::test {
namespace {

constexpr CalendarDate kSaturday = 46347;  // 21 November 2026
constexpr std::uint32_t kGreyed[] = {40001, 40004, 40008, 40032, 40033, 40035, 40031};

// The weekly meeting of most of these tests, from the shown Saturday on, 9:00 to 10:00.
std::int32_t put_weekly(EditorDesk& desk) {
  AppointmentForm form = new_appointment(desk.settings);
  form.subject = u"Meeting";
  form.start_time = 9.0 / 24;
  form.end_time = 10.0 / 24;
  form.recurring = true;
  form.pattern.type = RecurrenceType::weekly;
  form.pattern.duration = 60;
  EXPECT_EQ(save_appointment(desk.here.operation(), form, form), SaveResult::saved);
  return form.choice.oid;
}

TEST_P(EditorContract, WritesANewAppointment) {
  savePreTextToDB(desk->volume, u"Office", kLocationPretexts);
  savePreTextToDB(desk->volume, u"Home", kLocationPretexts);
  desk->settings.strprevlocation = u"Office";
  desk->settings.strdefcategory = u"Work";
  desk->meet([&] {
    for (const auto command : kGreyed) EXPECT_FALSE(desk->device.menu_bar.enabled(command));
    EXPECT_EQ(desk->bench->title(), u"Appointment");
    EXPECT_EQ(desk->bench->focused(), kLineSubject);
    EXPECT_EQ(desk->text(kLineLocation), u"Office");
    EXPECT_EQ(desk->text(kLineStartTime), u"12:00");
    EXPECT_EQ(desk->text(kLineCategories), u"Work");
    EXPECT_EQ(desk->text(kLineAttendees), kNoAttendees);
    EXPECT_EQ(desk->text(kLineOccurs), u"Once");
    EXPECT_FALSE(desk->bench->seen(kLineAmount));
    desk->type_into(kLineSubject, u"Dentist");
    EXPECT_FALSE(desk->bench->seen(kLineSubject));
    desk->type_into(kLineLocation, u"Main street");
    EXPECT_TRUE(desk->bench->seen(kLineSubject));
    EXPECT_EQ(desk->text(kLineSubject), u"Dentist");
    desk->type_into(kLineStartTime, u"9.30");
    desk->tap(kEditorRemind);
    EXPECT_EQ(desk->text(kLineAmount), u"30");
    desk->choose(kLineUnit, 1);
    desk->type_into(kLineAmount, u"x");
    desk->choose(kLineStatus, 2);
    desk->tap(kEditorPrivate);
    desk->tap(kEditorNotes);
    EXPECT_EQ(desk->bench->title(), u"Appointment - Notes");
    desk->bench->type(u"card");
    desk->tap(kEditorOk);
    EXPECT_EQ(desk->bench->title(), u"Appointment");
    EXPECT_FALSE(desk->bench->seen(kNotesPage));
    desk->tap(kEditorOk);
  });
  desk->open({});
  for (const auto command : kGreyed) EXPECT_TRUE(desk->device.menu_bar.enabled(command));
  EXPECT_EQ(desk->boxes_shown(), Messages());
  const AppointmentForm form = desk->stored(1);
  EXPECT_EQ(form.subject, u"Dentist");
  EXPECT_EQ(form.location, u"Main street");
  EXPECT_EQ(form.start_date + form.start_time, kSaturday + 9.5 / 24);
  EXPECT_EQ(form.end_date + form.end_time, kSaturday + 10.0 / 24);
  EXPECT_EQ(form.reminder_minutes, 60);
  EXPECT_EQ(form.busy_status, 2);
  EXPECT_TRUE(form.is_private);
  EXPECT_EQ(form.categories, u"Work");
  EXPECT_EQ(form.body, u"card");
  EXPECT_EQ(desk->settings.strprevlocation, u"Main street");
  ChoiceList locations;
  loadPreTextToCB(desk->volume, locations, kLocationPretexts);
  EXPECT_EQ(locations.items, (std::vector<Text>{u"Home", u"Main street", u"Office"}));
  EXPECT_FALSE(kept_draft(desk->volume)) << "an editor that has ended leaves no draft";
}

// "New" in the menu bar is the first tap of both.
TEST_P(EditorContract, AMeetingTakesFewTaps) {
  savePreTextToDB(desk->volume, u"Meeting", kSubjectPretexts);
  desk->taps = 1;
  desk->meet([&] {
    desk->choose(kLineSubject, 0);
    desk->taps += desk->bench->dropped_down() == kEditSubject ? 0 : 1;  // its arrow
    desk->tap(kEditorOk);
  });
  desk->open({});
  EXPECT_EQ(desk->stored(1).subject, u"Meeting");
  const int single = desk->taps;
  EXPECT_LE(single, 5);
  desk->taps = 2;
  desk->meet([&] {
    desk->choose(kLineSubject, 0);
    desk->choose(kLineOccurs, 1);
    EXPECT_EQ(desk->text(kLineOccurs), u"Every Saturday");
    desk->tap(kEditorOk);
  });
  desk->open({});
  EXPECT_LE(desk->taps, single + 3);
  const AppointmentForm weekly = desk->stored(2);
  EXPECT_TRUE(weekly.recurring);
  EXPECT_EQ(weekly.pattern.day_of_week_mask, 64);
  EXPECT_TRUE(weekly.pattern.no_end_date);
  EXPECT_EQ(weekly.pattern.duration, 30);
}

// Each question and check on the way to the store, and what becomes of the form then.
TEST_P(EditorContract, AsksAndChecksBeforeItSaves) {
  constexpr char kNoSubjectText[] =
      "Warning: There is no subject text defined. Do you want to save this appointment as is?";
  constexpr char kReminderText[] =
      "Error Warning: Reminder time cannot be greater than than 45 days!";
  constexpr char kOrderText[] =
      "Error Warning: The defined start date must be before the end date!";
  constexpr char kNotesText[] =
      "Warning: The amount of data in the Notes section is greater than 20k and cannot be saved. "
      "Do you want to change it?";
  const auto subject = [&] { desk->type_into(kLineSubject, u"A"); };
  const auto draws = [&] {
    subject();
    NotesContent much;
    NotesStroke stroke;
    for (int i = 0; i < 9000; ++i)
      stroke.points.push_back({static_cast<float>(i * 7919 % 200), static_cast<float>(i % 97)});
    much.strokes = {stroke};
    desk->dialog().notes(kNotesPage)->set_content(much);
  };
  struct Case {
    const char* name;
    std::function<void()> acts;
    std::vector<BoxAnswer> answers;
    Messages said;
    bool stays, saved;
  };
  const Case cases[] = {
      {"no subject, yes", [] {}, {BoxAnswer::yes}, {kNoSubjectText}, false, true},
      {"no subject, no", [] {}, {BoxAnswer::no}, {kNoSubjectText}, true, false},
      {"no subject, cancel", [] {}, {BoxAnswer::cancel}, {kNoSubjectText}, false, false},
      {"reminder",
       [&] {
         subject();
         desk->tap(kEditorRemind);
         desk->choose(kLineUnit, 3);
         desk->type_into(kLineAmount, u"7");
       },
       {},
       {kReminderText},
       true,
       false},
      {"end time",
       [&] {
         subject();
         desk->type_into(kLineEndTime, u"1159");
       },
       {},
       {kOrderText},
       true,
       false},
      {"notes, change them", draws, {BoxAnswer::yes}, {kNotesText}, true, false},
      {"notes, cancel", draws, {BoxAnswer::cancel}, {kNotesText}, false, false},
      {"notes, save the rest", draws, {BoxAnswer::no}, {kNotesText}, false, true},
      {"not saved, go on",
       [&] {
         subject();
         desk->device.store.faults.save = true;
       },
       {BoxAnswer::ok, BoxAnswer::yes},
       {"Error: The appointment was not saved.",
        "Warning: Do you want to go on editing this appointment?"},
       true,
       false},
      {"not saved, give up",
       [&] {
         subject();
         desk->device.store.faults.save = true;
       },
       {BoxAnswer::ok, BoxAnswer::no},
       {"Error: The appointment was not saved.",
        "Warning: Do you want to go on editing this appointment?"},
       false,
       false},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    bool stays = false;
    desk->meet([&] {
      one.acts();
      desk->device.boxes.answers = one.answers;
      desk->tap(kEditorOk);
      desk->tap(kEditorNotes);
      stays = desk->bench->title() == u"Appointment - Notes";
      desk->tap(kEditorOk);
      EXPECT_EQ(desk->boxes_shown(), one.said);
      desk->device.store.faults = {};
    });
    const auto before = desk->history.can_undo();
    desk->open({});
    EXPECT_EQ(stays, one.stays);
    EXPECT_EQ(desk->history.can_undo(), one.saved || before);
    if (desk->history.can_undo()) {
      EXPECT_TRUE(desk->history.undo(desk->device.boxes));
    }
    EXPECT_FALSE(desk->history.can_undo());
  }
}

TEST_P(EditorContract, WhatIsNoTimeIsToldAndTheOldOneStays) {
  constexpr char kTold[] = "Warning: \"25:99\" is not a time of day. It stays 12:00.";
  desk->meet([&] {
    desk->type_into(kLineSubject, u"A");
    for (const bool by_key : {true, false}) {
      desk->type_into(kLineStartTime, u"25:99");
      if (by_key)
        desk->bench->key(kKeyReturn);
      else
        desk->tap(kEditorOk);
      EXPECT_EQ(desk->boxes_shown(), Messages{kTold});
      EXPECT_TRUE(desk->bench->seen(kEditStartTime)) << "OK waits for a time";
      EXPECT_EQ(desk->bench->focused(), kEditStartTime);
      EXPECT_EQ(desk->text(kEditStartTime), u"12:00");
      desk->bench->type(u"noon");
      desk->tap(kLineEndTime);
      EXPECT_EQ(desk->boxes_shown().size(), 1u);
      EXPECT_EQ(desk->bench->focused(), kEditStartTime);
      desk->tap(kLineEndTime);
      EXPECT_EQ(desk->bench->focused(), kEditEndTime) << "told once";
      desk->bench->tab();
      EXPECT_EQ(desk->boxes_shown(), Messages());
      EXPECT_EQ(desk->text(kLineStartTime), u"12:00");
    }
    for (const TextView typed : {u"2130", u"9p", u"21h30", u"9.30 pm"}) {
      desk->type_into(kLineStartTime, typed);
      desk->tap(kEditorPrivate);
      EXPECT_EQ(desk->text(kLineStartTime), typed == u"9p" ? u"21:00" : u"21:30");
    }
    EXPECT_EQ(desk->text(kLineEndTime), u"22:00");
    desk->type_into(kLineStartTime, u"2345");
    desk->bench->key(kKeyReturn);
    EXPECT_TRUE(desk->watched.open.empty() || desk->watched.open.size() == 1u);
  });
  desk->open({});
  EXPECT_EQ(desk->boxes_shown(), Messages());
  const AppointmentForm form = desk->stored(1);
  EXPECT_EQ(form.end_date, kSaturday + 1) << "past midnight";
  EXPECT_NEAR(form.end_time, 15.0 / 1440, 1e-9);
}

TEST_P(EditorContract, EscapeLeavesTheFieldThenTheNotesThenTheEditor) {
  desk->meet([&] {
    desk->type_into(kLineSubject, u"Wrong");
    desk->bench->key(kKeyEscape);
    EXPECT_EQ(desk->text(kLineSubject), u"");
    EXPECT_EQ(desk->bench->focused(), kLineSubject);
    EXPECT_FALSE(desk->bench->seen(kEditSubject));
    desk->bench->key(kKeyReturn);
    EXPECT_EQ(desk->bench->focused(), kEditSubject) << "by the keyboard alone";
    desk->bench->type(u"Right");
    desk->bench->tab();
    EXPECT_EQ(desk->text(kLineSubject), u"Right");
    EXPECT_EQ(desk->bench->focused(), kLineLocation);
    desk->tap(kEditorNotes);
    desk->bench->key(kKeyEscape);
    EXPECT_EQ(desk->bench->title(), u"Appointment");
    EXPECT_EQ(desk->bench->focused(), kEditorNotes);
    EXPECT_EQ(desk->watched.open.size(), 1u);
    desk->bench->key(kKeyEscape);
  });
  desk->open({});
  EXPECT_FALSE(desk->history.can_undo()) << "nothing was saved";
  EXPECT_EQ(desk->boxes_shown(), Messages());
}

TEST_P(EditorContract, WhatIsChosenDecidesWhatIsShown) {
  desk->meet([&] {
    const auto seen = [&](std::initializer_list<int> controls) {
      for (const int control : controls)
        if (!desk->bench->seen(control)) return false;
      return true;
    };
    const auto none = [&](std::initializer_list<int> controls) {
      for (const int control : controls)
        if (desk->bench->seen(control)) return false;
      return true;
    };
    const Rect beside = desk->dialog().place(kLineStartTime);
    EXPECT_TRUE(seen({kStartDate, kEndDate, kLineStartTime, kLineEndTime}));
    EXPECT_TRUE(none({kLabelReminder, kLineAmount, kLineUnit, kAllDayStart, kAllDayEnd}));
    desk->tap(kEditorRemind);
    EXPECT_TRUE(seen({kLabelReminder, kLineAmount, kLineUnit}));
    desk->tap(kEditorRemind);
    EXPECT_TRUE(none({kLabelReminder, kLineAmount, kLineUnit, kEditAmount, kEditUnit}));
    desk->choose(kLineOccurs, 2);
    EXPECT_EQ(desk->text(kLineOccurs), u"Every 21 of the month");
    EXPECT_TRUE(none({kStartDate, kEndDate, kEditOccurs}));
    EXPECT_LT(desk->dialog().place(kLineStartTime).x, beside.x) << "in the place of the date";
    desk->tap(kEditorAllDay);
    EXPECT_TRUE(seen({kAllDayStart, kAllDayEnd}));
    EXPECT_TRUE(none({kLineStartTime, kLineEndTime}));
    desk->choose(kLineOccurs, 0);
    EXPECT_TRUE(seen({kStartDate, kEndDate}));
    EXPECT_TRUE(none({kAllDayStart, kLineStartTime}));
    desk->tap(kEditorAllDay);
    EXPECT_TRUE(seen({kLineStartTime, kLineEndTime}));
    EXPECT_EQ(desk->dialog().place(kLineStartTime).x, beside.x);
    // The dates lead each other, and the rows of the recurrence.
    desk->bench->pick_date(kStartDate, {11, 24, 2026});
    EXPECT_EQ(desk->dialog().date(kEndDate)->date(), (MonthDayYear{11, 24, 2026}));
    EXPECT_EQ(desk->dialog().choice(kEditOccurs)->rows()[1], u"Every Tuesday");
    desk->bench->pick_date(kEndDate, {11, 20, 2026});
    EXPECT_EQ(desk->dialog().date(kStartDate)->date(), (MonthDayYear{11, 20, 2026}));
    EXPECT_EQ(desk->dialog().choice(kEditOccurs)->rows()[2], u"Every 20 of the month");
  });
  desk->open({});
}

TEST_P(EditorContract, ThePatternComesFromTheRecurrenceEditor) {
  desk->meet([&] {
    desk->type_into(kLineSubject, u"A");
    for (const bool done : {false, true}) {
      desk->bench->in_front([&, done] {
        EXPECT_EQ(desk->watched.opened.back(), kDialogRecurrence);
        if (!done) return desk->bench->press_close();
        desk->bench->tap(kControlHeaderOk);
      });
      desk->choose(kLineOccurs, 4);
      EXPECT_EQ(desk->text(kLineOccurs), done ? u"<Edit pattern...>" : u"Once");
      EXPECT_EQ(desk->bench->seen(kStartDate), !done);
    }
    desk->tap(kEditorOk);
  });
  desk->open({});
  const AppointmentForm form = desk->stored(1);
  EXPECT_TRUE(form.recurring);
  EXPECT_EQ(form.pattern.type, RecurrenceType::daily);
  EXPECT_EQ(form.pattern.start_time, 0.5);
}

TEST_P(EditorContract, AsksWhichOfASeriesIsMeant) {
  const std::int32_t oid = put_weekly(*desk);
  const CalendarDate second = kSaturday + 7 + 9.0 / 24;
  const auto answer = [&](int control, std::function<void()> acts) {
    desk->watched.opened.clear();
    desk->bench->in_front([&, control, acts] {
      EXPECT_EQ(desk->watched.opened.back(), kDialogSeriesQuestion);
      desk->meet(acts);
      desk->bench->tap(control);
    });
    desk->open({oid, second, EditScope::series});
  };
  desk->bench->in_front([&] { desk->bench->tap(kControlCancel); });
  desk->open({oid, second, EditScope::series});
  EXPECT_EQ(desk->watched.opened, std::vector<int>{kDialogSeriesQuestion});
  answer(kChooseOccurrence, [&] {
    EXPECT_EQ(desk->text(kLineOccurs), u"Every Saturday");
    EXPECT_EQ(desk->dialog().date(kStartDate)->date(), (MonthDayYear{11, 28, 2026}));
    for (const int fixed : {kStartDate, kLineOccurs, kLineCategories, kLineAttendees})
      EXPECT_FALSE(desk->bench->enabled(fixed)) << fixed;
    desk->type_into(kLineStartTime, u"23:30");
    desk->tap(kEditorOk);
  });
  EXPECT_EQ(desk->boxes_shown(), Messages());
  const AppointmentForm moved = desk->stored(oid, kSaturday + 7 + 23.5 / 24);
  EXPECT_EQ(moved.start_date, kSaturday + 7);
  EXPECT_EQ(moved.end_date, kSaturday + 8);
  EXPECT_EQ(desk->stored(oid).start_time, 9.0 / 24) << "the series stays";
  answer(kChooseSeries, [&] {
    EXPECT_FALSE(desk->bench->seen(kStartDate));
    desk->type_into(kLineSubject, u"All of them");
    desk->tap(kEditorOk);
  });
  EXPECT_EQ(desk->stored(oid).subject, u"All of them");
  EXPECT_EQ(desk->stored(oid).pattern.pattern_start_date, kSaturday);
}

// Whatever the kind: only what the person changes is changed, and a rule that no pattern holds
// keeps its form while its time moves.
TEST_P(EditorContract, OkWithoutAChangeChangesNothing) {
  struct Kind {
    const char* rules;
    bool all_day;
    int days;
    std::int32_t reminder;
  };
  const Kind kinds[] = {{"", false, 0, 90},
                        {"", true, 2, 0},
                        {"RRULE:FREQ=WEEKLY", false, 0, 30},
                        {"RRULE:FREQ=WEEKLY;COUNT=5", true, 1, 0},
                        {"RRULE:FREQ=MONTHLY;BYMONTHDAY=21;COUNT=7", false, 1, 0},
                        {"RRULE:FREQ=MONTHLY;BYDAY=3SA,1SU", false, 0, 0},
                        {"RRULE:FREQ=WEEKLY;INTERVAL=2;WKST=SU;BYDAY=SA,SU", false, 1, 0}};
  for (const Kind& kind : kinds) {
    SCOPED_TRACE(std::string(kind.rules) + " " + std::to_string(kind.days));
    AppointmentRecord record = one_hour({11, 21, 2026}, kind.all_day ? 0 : 9, u"A");
    record.end += kind.days * kSecondsPerDay;
    record.rules = kind.rules;
    record.fields.all_day = kind.all_day;
    record.fields.reminder_set = kind.reminder > 0;
    record.fields.reminder_minutes = kind.reminder;
    const std::int32_t oid = desk->device.store.put(record);
    const AppointmentRecord before = **desk->device.store.load(oid);
    const auto edit = [&](std::function<void()> acts) {
      const auto editor = [&, acts] {
        desk->meet([&, acts] {
          acts();
          desk->tap(kEditorOk);
        });
      };
      if (record.rules.empty())
        editor();
      else
        desk->bench->in_front([&, editor] {
          editor();
          desk->bench->tap(kChooseSeries);
        });
      desk->open({oid, kind.all_day ? kSaturday : kSaturday + 9.0 / 24, EditScope::series});
      EXPECT_EQ(desk->boxes_shown(), Messages());
      return **desk->device.store.load(oid);
    };
    AppointmentRecord after = edit([] {});
    EXPECT_EQ(after.start, before.start);
    EXPECT_EQ(after.end, before.end);
    EXPECT_EQ(after.rules, before.rules);
    EXPECT_EQ(after.fields, before.fields);
    if (kind.all_day) continue;
    after = edit([&] { desk->type_into(kLineStartTime, u"1015"); });
    EXPECT_EQ(after.start, before.start + 75 * 60);
    EXPECT_EQ(after.end, before.end + 75 * 60);
    EXPECT_EQ(after.rules.size(), before.rules.size()) << after.rules;
  }
}

// Nobody else's change is lost, nor what was typed.
TEST_P(EditorContract, WhatIsGoneMeanwhileCanBeMadeAnew) {
  AppointmentForm form = new_appointment(desk->settings);
  form.subject = u"Old";
  ASSERT_EQ(save_appointment(desk->here.operation(), form, form), SaveResult::saved);
  desk->meet([&] {
    desk->type_into(kLineSubject, u"New");
    desk->tap(kEditorPrivate);
    EXPECT_TRUE(desk->session.ItemFromOid(form.choice.oid)->remove());
    desk->device.boxes.answers = {BoxAnswer::ok, BoxAnswer::yes};
    desk->meet([&] {
      EXPECT_EQ(desk->text(kLineSubject), u"New");
      desk->tap(kEditorOk);
    });
    desk->tap(kEditorOk);
  });
  desk->open(form.choice);
  EXPECT_EQ(desk->boxes_shown().size(), 2u);
  const AppointmentForm fresh = desk->stored(form.choice.oid + 1);
  EXPECT_EQ(fresh.subject, u"New");
  EXPECT_TRUE(fresh.is_private);
}

TEST_P(EditorContract, AnAppointmentThatCannotBeReadCanOnlyBeCancelled) {
  desk->meet([&] {
    EXPECT_FALSE(desk->bench->enabled(kEditorOk));
    EXPECT_EQ(desk->text(kLineSubject), u"");
    desk->tap(kEditorCancel);
  });
  desk->open({77, kNoDate, EditScope::series});
  EXPECT_EQ(desk->boxes_shown(), (Messages{"Error: isApptRecurring() failed!",
                                           "Error: Error getting appointment info"}));
  for (const auto command : kGreyed) EXPECT_TRUE(desk->device.menu_bar.enabled(command));
}

// The process dies with the editor open; the next start offers what was typed.
TEST_P(EditorContract, WhatWasTypedOutlivesTheProcess) {
  std::optional<EditorDraft> draft;
  desk->meet([&] {
    desk->type_into(kLineSubject, u"Half typed");
    desk->type_into(kLineLocation, u"");
    draft = kept_draft(desk->volume);
  });
  desk->open({});
  ASSERT_TRUE(draft);
  EXPECT_EQ(draft->form.subject, u"Half typed");
  ASSERT_TRUE(keep_draft(desk->volume, *draft));
  desk->device.boxes.answers = {BoxAnswer::cancel};
  EXPECT_TRUE(EditorForms(desk->here).offer_draft());
  desk->meet([&] { desk->tap(kEditorPrivate); });
  desk->open({});
  EXPECT_TRUE(kept_draft(desk->volume)) << "nobody said that it is not wanted";
  for (const bool wanted : {false, true}) {
    ASSERT_TRUE(keep_draft(desk->volume, *draft));
    desk->device.boxes.answers = {wanted ? BoxAnswer::yes : BoxAnswer::no};
    if (wanted)
      desk->meet([&] {
        EXPECT_EQ(desk->text(kLineSubject), u"Half typed");
        desk->tap(kEditorOk);
      });
    EXPECT_TRUE(EditorForms(desk->here).offer_draft());
    EXPECT_FALSE(EditorForms(desk->here).offer_draft()) << "once";
  }
  EXPECT_EQ(desk->stored(1).subject, u"Half typed");
}

TEST_P(EditorContract, WithoutRoomForThePanelTheListDropsDown) {
  savePreTextToDB(desk->volume, u"Meeting", kSubjectPretexts);
  desk->device.input.panel_height = 300;
  desk->meet([&] {
    desk->tap(kLineSubject);
    EXPECT_EQ(desk->bench->dropped_down(), kEditSubject);
    desk->bench->choose_row(kEditSubject, 0);
    EXPECT_EQ(desk->text(kLineSubject), u"Meeting");
    desk->bench->wait(1);
    desk->bench->type(u" 2");
    desk->tap(kEditorOk);
  });
  desk->open({});
  EXPECT_EQ(desk->stored(1).subject, u"Meeting 2");
}

}  // namespace

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(EditorContract);

}  // namespace orvello::test
