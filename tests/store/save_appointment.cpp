#include "store/save_appointment.h"

#include "ports/messages.h"
#include "tests/store/store_fixture.h"

namespace orvello {
namespace {

class SaveAppointment : public StoreTest {
 protected:
  AppointmentForm opened(std::int32_t oid, CalendarDate start = kNoDate,
                         EditScope scope = EditScope::series) {
    AppointmentForm read;
    read.choice = {oid, start, scope};
    EXPECT_EQ(read_appointment(context, read), FormRead::read);
    return read;
  }
  // Read, changed and saved.
  SaveResult edit(const EditorChoice& choice, const std::function<void(AppointmentForm&)>& change) {
    const auto before = opened(choice.oid, choice.occurrence, choice.scope);
    form = before;
    change(form);
    return save_appointment(context, before, form);
  }
  SaveResult make(const AppointmentForm& made) {
    form = made;
    return save_appointment(context, AppointmentForm(), form);
  }
  AppointmentForm meeting() {
    AppointmentForm made;
    made.subject = u"Meeting";
    made.start_date = made.end_date = to_calendar_date(day(3));
    made.start_time = 9 / 24.0;
    made.end_time = 10 / 24.0;
    made.reminder_set = true;
    made.reminder_minutes = 20;
    made.is_private = true;
    made.busy_status = 2;
    made.categories = u"Work";
    made.attendees = {{u"Ann", u"ann@example.org"}};
    made.body = u"agenda";
    return made;
  }
  static void weekly(AppointmentForm& made) {
    made.recurring = true;
    made.pattern.type = RecurrenceType::weekly;
    made.pattern.pattern_start_date = made.start_date;
    made.pattern.day_of_week_mask = 1 << weekday_of(whole_day(made.start_date));
    made.end_date = kNoDate;
  }
  AppointmentRecord stored(std::int32_t oid) { return **store.load(oid); }
  void answer(std::vector<BoxAnswer> answers) { boxes.answers = std::move(answers); }
  // Another process's change while the form is open.
  void elsewhere(std::int32_t oid, const std::function<void(AppointmentRecord&)>& change) {
    AppointmentRecord record = stored(oid);
    change(record);
    EXPECT_NE(store.put(record), 0);
  }

  AppointmentForm form;
};

constexpr char kInform[] =
    "Appointment Notification|Inform attendees about this appointment change?\n";

TEST_F(SaveAppointment, ANewOneIsWrittenWholeAndReadBack) {
  answer({BoxAnswer::yes});
  EXPECT_EQ(make(meeting()), SaveResult::saved);
  EXPECT_EQ(boxes_shown(), kInform);
  ASSERT_EQ(store.sent.size(), 1u);
  EXPECT_NE(store.sent[0].uid, "") << "sent as it was saved";
  AppointmentForm expected = meeting();
  expected.choice.oid = form.choice.oid;
  EXPECT_EQ(opened(form.choice.oid), expected);
  EXPECT_EQ(window.wait_cursors(), 0);
  // All day, over days, and without attendees nothing is asked.
  AppointmentForm fair = meeting();
  fair.attendees.clear();
  fair.all_day = true;
  fair.end_date += 2;
  fair.end_time = 0.02;
  for (const AllDayEnd kind : {AllDayEnd::on_last_day, AllDayEnd::next_midnight}) {
    store.all_day_form = kind;
    EXPECT_EQ(make(fair), SaveResult::saved);
    EXPECT_EQ(stored(form.choice.oid).fields.end, at(5, 23, 59));
    EXPECT_EQ(opened(form.choice.oid).end_date, fair.end_date);
  }
  EXPECT_EQ(boxes_shown(), "");
}

TEST_F(SaveAppointment, WritesNothingThatThePersonLeftAlone) {
  AppointmentFields made = fields(Text(300, u's'), at(3, 9), at(3, 10));
  made.location = Text(250, u'l');
  made.sensitivity = 1;
  const auto oid = put(made);
  elsewhere(oid, [](AppointmentRecord& record) {
    record.recipients = {{Text(50, u'n'), Text(90, u'a')}, {u"Bob", u"bob@x"}};
  });
  const auto before = opened(oid);
  EXPECT_EQ(before.subject.size(), 200u);
  EXPECT_EQ(before.attendees[0].name.size(), 40u);
  EXPECT_EQ(before.attendees[0].address.size(), 80u);
  form = before;
  form.location = u"here";
  form.attendees.pop_back();
  // Meanwhile somebody else files it.
  elsewhere(oid, [](AppointmentRecord& record) { record.fields.categories = u"Home"; });
  answer({BoxAnswer::no});
  EXPECT_EQ(save_appointment(context, before, form), SaveResult::saved);
  EXPECT_EQ(boxes_shown(), kInform);
  EXPECT_TRUE(store.sent.empty());
  const auto record = stored(oid);
  EXPECT_EQ(record.fields.subject.size(), 300u);
  EXPECT_EQ(to_utf8(record.fields.location + record.fields.categories), "hereHome");
  EXPECT_EQ(record.fields.sensitivity, 1);
  ASSERT_EQ(record.recipients.size(), 1u);
  EXPECT_EQ(record.recipients[0].address.size(), 90u) << "whole, as the store had it";
}

TEST_F(SaveAppointment, WhatBothChangedIsAskedAbout) {
  const auto oid = put(fields(u"Lunch", at(3, 12), at(3, 13)));
  for (const bool overwrite : {false, true}) {
    const auto before = opened(oid);
    form = before;
    form.subject = u"Brunch";
    form.start_time = 11 / 24.0;
    elsewhere(oid, [&](AppointmentRecord& record) {
      record.fields.subject = overwrite ? u"Tea" : u"Dinner";
      record.end = record.end + 3600;
    });
    answer({overwrite ? BoxAnswer::yes : BoxAnswer::no});
    EXPECT_EQ(save_appointment(context, before, form),
              overwrite ? SaveResult::saved : SaveResult::not_saved);
    EXPECT_EQ(boxes_shown(),
              "Warning|While this appointment was open, it was changed elsewhere: the subject, the "
              "times.\nDo you want to save yours instead?\n");
    EXPECT_EQ(on(3), overwrite ? "11:00-14:00 Brunch" : "12:00-14:00 Dinner");
  }
  // What both made the same is no matter, and what they change while it is asked is asked again.
  const auto before = opened(oid);
  form = before;
  form.subject = u"Same";
  form.busy_status = 1;
  elsewhere(oid, [](AppointmentRecord& record) {
    record.fields.subject = u"Same";
    record.fields.busy_status = BusyStatus::tentative;
  });
  int asked = 0;
  boxes.meanwhile = [&] {
    if (++asked == 1)
      elsewhere(oid, [](AppointmentRecord& record) { record.fields.subject = u"Late"; });
  };
  answer({BoxAnswer::yes, BoxAnswer::no});
  EXPECT_EQ(save_appointment(context, before, form), SaveResult::not_saved);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(on(3), "11:00-14:00 Late");
}

TEST_F(SaveAppointment, OneOccurrenceIsSavedAndItsSeriesUntouched) {
  answer({BoxAnswer::no});
  AppointmentForm series = meeting();
  weekly(series);
  EXPECT_EQ(make(series), SaveResult::saved);
  const auto oid = form.choice.oid;
  boxes_shown();
  const auto change = [](AppointmentForm& one) {
    one.subject = u"Review";
    one.start_date += 1;
    one.end_date += 1;
    one.start_time = 14 / 24.0;
    one.end_time = 15 / 24.0;
    one.body = u"other";
    one.categories = u"Home";
    one.is_private = false;
    one.reminder_minutes = 99;
    one.attendees.clear();
  };
  EXPECT_EQ(edit({oid, at(10, 9), EditScope::occurrence}, change), SaveResult::saved);
  EXPECT_EQ(on(10) + on(11) + on(17), "No Appointments 14:00-15:00 Review9:00-10:00 Meeting");
  EXPECT_EQ(boxes_shown(), "") << "nobody is informed of one occurrence";
  const auto fields = stored(oid).exceptions.at(0).fields;
  EXPECT_EQ(fields.categories, u"Work");
  EXPECT_EQ(fields.sensitivity, 2);
  EXPECT_EQ(fields.reminder_minutes, 20);
  EXPECT_EQ(fields.body, u"other");
  // Found again where it was moved to, also at another typed time, and where it was moved since.
  EXPECT_EQ(edit({oid, at(11, 14), EditScope::occurrence},
                 [](AppointmentForm& one) { one.start_time = one.end_time = 0.5; }),
            SaveResult::saved);
  const auto before = opened(oid, at(17, 9), EditScope::occurrence);
  const auto theirs = occurrence(oid, at(17, 9));
  write_all(*theirs, StoreTest::fields(u"Meeting", at(18, 8), at(18, 9)));
  EXPECT_TRUE(theirs->save());
  form = before;
  form.location = u"Room 2";
  store.faults.exception = true;
  EXPECT_EQ(save_appointment(context, before, form), SaveResult::not_saved)
      << "what cannot be read is not gone";
  store.faults.exception = false;
  boxes_shown();
  EXPECT_EQ(save_appointment(context, before, form), SaveResult::saved);
  EXPECT_EQ(on(11) + on(17) + on(18), "12:00-12:00 ReviewNo Appointments 8:00-9:00 Meeting");
  EXPECT_EQ(stored(oid).exceptions.at(1).fields.location, u"Room 2");
  EXPECT_EQ(stored(oid).fields.subject, u"Meeting");
}

TEST_F(SaveAppointment, ASeriesComesAndGoes) {
  const auto oid = put(fields(u"Watch", at(3, 22), at(4, 6)));
  EXPECT_EQ(edit({oid}, weekly), SaveResult::saved);
  EXPECT_EQ(on(10), "22:00-multiday Watch");
  // Its times are the form's, whatever its pattern record still says.
  EXPECT_EQ(edit({oid}, [](AppointmentForm& one) { one.start_time = 20 / 24.0; }),
            SaveResult::saved);
  EXPECT_EQ(on(11), "multiday-6:00 Watch");
  EXPECT_EQ(on(17), "20:00-multiday Watch");
  const auto one = occurrence(oid, at(17, 20));
  write_all(*one, fields(u"Long watch", at(17, 19), at(18, 6)));
  EXPECT_TRUE(one->save());
  const auto once = [](AppointmentForm& turned) {
    turned.recurring = false;
    turned.end_date = turned.start_date + 1;
  };
  for (const bool go : {false, true}) {
    answer({go ? BoxAnswer::yes : BoxAnswer::no});
    EXPECT_EQ(edit({oid}, once), go ? SaveResult::saved : SaveResult::not_saved);
    EXPECT_EQ(boxes_shown(),
              "Warning|1 changed occurrence does not fit the new recurrence and would be lost. Do "
              "you want to save it all the same?\n");
  }
  EXPECT_EQ(on(3) + on(4) + on(17), "20:00-multiday Watchmultiday-6:00 WatchNo Appointments ");
}

// The form shows the rest of the series, and saving it leaves what was before alone.
TEST_F(SaveAppointment, ThisAndAllThatFollowAreASeriesOfTheirOwn) {
  const auto oid = put_series(fields(u"Standup", at(2, 9), at(2, 10)));
  const auto one = occurrence(oid, at(5, 9));
  write_all(*one, fields(u"Retro", at(5, 15), at(5, 16)));
  EXPECT_TRUE(one->save());
  const EditorChoice choice{oid, at(4, 9), EditScope::following};
  EXPECT_EQ(opened(oid, at(4, 9), EditScope::following).pattern.pattern_start_date,
            to_calendar_date(day(4)));
  EXPECT_EQ(edit(choice,
                 [](AppointmentForm& rest) {
                   rest.location = u"Room 2";
                   rest.start_time = 8 / 24.0;
                 }),
            SaveResult::saved);
  EXPECT_NE(form.choice.oid, oid);
  EXPECT_EQ(form.choice.scope, EditScope::series);
  EXPECT_EQ(on(2) + on(3), "9:00-10:00 Standup9:00-10:00 Standup");
  EXPECT_EQ(on(4) + on(5), "8:00-10:00 Standup15:00-16:00 Retro");
  EXPECT_EQ(stored(oid).fields.location, u"");
  EXPECT_EQ(stored(form.choice.oid).fields.location, u"Room 2");
  EXPECT_EQ(boxes_shown(), "");
  // Who is told of the rest is told of the end of what was before, if they knew of that.
  for (const int from : {8, 9}) {
    answer({BoxAnswer::yes});
    EXPECT_EQ(edit({form.choice.oid, at(from, 8), EditScope::following},
                   [&](AppointmentForm& rest) {
                     rest.attendees = {{u"Ann", u"ann@example.org"}};
                     rest.busy_status = from - 8;
                   }),
              SaveResult::saved);
    EXPECT_EQ(boxes_shown(), kInform);
    EXPECT_EQ(store.sent.size(), from == 8 ? 1u : 3u);
  }
  form.choice.oid = oid + 1;
  // On other days the changed one has no place.
  answer({BoxAnswer::no});
  EXPECT_EQ(edit({form.choice.oid}, weekly), SaveResult::not_saved);
  EXPECT_EQ(boxes.shown.size(), 1u);
}

TEST_F(SaveAppointment, WhatIsGoneOrFailsIsTold) {
  const auto series = put_series(fields(u"Standup", at(2, 9), at(2, 10)));
  const auto single = put(fields(u"Lunch", at(3, 12), at(3, 13)));
  const auto type = [](AppointmentForm& one) { one.subject = u"typed"; };
  struct Case {
    EditorChoice choice;
    std::function<void()> meanwhile;
    SaveResult result;
    const char* told;
    int beeps;
  } cases[] = {{{series, at(4, 9), EditScope::occurrence},
                [&] { store.faults.save = true; },
                SaveResult::not_saved,
                "Error|The appointment was not saved.\n",
                1},
               {{single},
                [&] { store.faults.save = true; },
                SaveResult::not_saved,
                "Error|The appointment was not saved.\n",
                1},
               {{single},
                [&] { store.faults = {.fetch = true, .reason = "locked"}; },
                SaveResult::not_saved,
                "Error|The appointment was not saved.\nlocked\n",
                1},
               {{series, at(4, 9), EditScope::occurrence},
                [&] { occurrence(series, at(4, 9))->remove(); },
                SaveResult::gone,
                "Error|Failed getOccurrence()\nThis appointment is not there any more.\n",
                0},
               {{single},
                [&] { store.erase(single); },
                SaveResult::gone,
                "Error|This appointment is not there any more.\n",
                0}};
  for (const Case& one : cases) {
    boxes.beeps = 0;
    const auto before = opened(one.choice.oid, one.choice.occurrence, one.choice.scope);
    form = before;
    type(form);
    one.meanwhile();
    EXPECT_EQ(save_appointment(context, before, form), one.result);
    store.faults = {};
    EXPECT_EQ(boxes_shown(), one.told);
    EXPECT_EQ(boxes.beeps, one.beeps);
  }
  EXPECT_EQ(files.diagnostics, std::vector<Text>{u"Could not save single occurrence appt!"});
  EXPECT_EQ(on(3), "9:00-10:00 Standup");
  EXPECT_EQ(window.wait_cursors(), 0);
  AppointmentForm empty;
  empty.choice = {series, at(4, 9), EditScope::occurrence};
  EXPECT_EQ(read_appointment(context, empty), FormRead::occurrence_failed);
  empty.choice = {single};
  EXPECT_EQ(read_appointment(context, empty), FormRead::failed);
  EXPECT_EQ(boxes_shown(),
            "Error|Error getting single occurrence appointment info\n"
            "Error|Error getting appointment info\n");
}

TEST_F(SaveAppointment, NotesAreWrittenWhereTheyFit) {
  AppointmentForm made = meeting();
  made.attendees.clear();
  struct Case {
    std::size_t length;
    bool takes_ink;
    const char* told;
    std::size_t ink;
    const char* body;
  };
  for (const auto& [length, takes_ink, told, ink, body] :
       {Case{kMostInk, true, "", kMostInk, "agenda"}, Case{kMostInk + 1, true, "", 0, "agenda"},
        Case{5, false, "Error|Failed to save BodyInk!\n", 0, "agenda"}}) {
    store.faults.ink = !takes_ink;
    made.ink = std::string(length, 'i');
    EXPECT_EQ(make(made), SaveResult::saved);
    EXPECT_EQ(boxes_shown(), told);
    EXPECT_EQ(stored(form.choice.oid).fields.body_ink.size(), ink);
    EXPECT_EQ(to_utf8(stored(form.choice.oid).fields.body), body);
  }
}

// Nothing is saved in part, and nothing fails in silence.
TEST_F(SaveAppointment, EveryReadAndWriteMayFail) {
  answer({BoxAnswer::no});
  AppointmentForm series = meeting();
  weekly(series);
  EXPECT_EQ(make(series), SaveResult::saved);
  const auto oid = form.choice.oid;
  const auto one = occurrence(oid, at(10, 9));
  write_all(*one, fields(u"Retro", at(10, 15), at(10, 16)));
  EXPECT_TRUE(one->save());
  const auto kept = store.contents();
  for (const EditorChoice& choice :
       {EditorChoice{oid}, EditorChoice{oid, at(17, 9), EditScope::occurrence},
        EditorChoice{oid, at(17, 9), EditScope::following}}) {
    store.put_back(kept);
    const auto before = opened(choice.oid, choice.occurrence, choice.scope);
    form = before;
    EXPECT_EQ(save_appointment(context, before, form), SaveResult::saved);
    EXPECT_EQ(store.contents().records.begin()->second.exceptions.size(), 1u);
    EXPECT_EQ(store.contents().records.size(), 1u) << "nothing is written for nothing";
    bool reached = true;
    for (int call = 1; reached; ++call) {
      store.put_back(kept);
      boxes_shown();
      answer({BoxAnswer::no});
      form = before;
      form.subject = u"New";
      if (choice.scope != EditScope::occurrence) form.end_time = 11 / 24.0;
      store.faults.call = call;
      const SaveResult result = save_appointment(context, before, form);
      reached = store.faults.call == 0;
      store.faults = {};
      EXPECT_EQ(store.contents().records.size() > 1 || on(17).find("New") != std::string::npos,
                result == SaveResult::saved)
          << call;
      EXPECT_TRUE(result == SaveResult::saved || boxes_shown().find("Error|") != std::string::npos)
          << call;
      EXPECT_EQ(window.wait_cursors(), 0);
    }
  }
}

// A request that does not leave is no secret.
TEST_F(SaveAppointment, AttendeesWhoWereNotInformedAreTold) {
  store.faults.send = "No mail program.";
  answer({BoxAnswer::yes});
  EXPECT_EQ(make(meeting()), SaveResult::saved);
  EXPECT_EQ(boxes_shown(),
            std::string(kInform) + "Error|The attendees were not informed.\nNo mail program.\n");
}

}  // namespace
}  // namespace orvello
