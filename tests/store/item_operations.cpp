#include "store/item_operations.h"

#include "store/notes_text.h"
#include "tests/store/store_fixture.h"

namespace orvello {
namespace {

constexpr int kThisOne = kDeleteOccurrence, kSeries = kDeleteSeries;
constexpr char kMissing[] = "Error|Failure to Obtain Appointment Item\n";

class ItemOperations : public StoreTest {
 protected:
  bool remove(std::int32_t oid, int mode, CalendarDate start) {
    return delete_appointment(context, oid, mode, start);
  }
  bool paste(std::int32_t oid, CalendarDate from, int to, bool move) {
    return move ? move_appointment(context, oid, from, day(to))
                : copy_appointment(context, oid, from, day(to));
  }
  void change(std::int32_t oid, CalendarDate start, const AppointmentFields& changed) {
    const auto one = occurrence(oid, start);
    write_all(*one, changed);
    EXPECT_TRUE(one->save());
  }
  std::string notes(std::int32_t oid, CalendarDate start) {
    const auto shown = notes_of(session, boxes, oid, start);
    return shown ? to_utf8(shown->text) : "";
  }
  std::int32_t standup() { return put_series(fields(u"Standup", at(2, 9), at(2, 10))); }
};

TEST_F(ItemOperations, DeletesTheOneOnceTheSeriesOrTheItem) {
  const auto series = standup();
  const auto single = put(fields(u"Lunch", at(3, 12), at(3, 13)));
  EXPECT_TRUE(isApptRecurring(session, boxes, series));
  EXPECT_FALSE(isApptRecurring(session, boxes, single));
  EXPECT_FALSE(remove(series, kThisOne, at(3, 9)));
  EXPECT_EQ(on(3), "12:00-13:00 Lunch");
  EXPECT_EQ(boxes.beeps, 0);
  remove(series, kThisOne, at(3, 9));
  EXPECT_EQ(boxes.beeps, 1);
  EXPECT_EQ(boxes_shown(), "Error|This appointment is not there any more.\n");
  EXPECT_EQ(on(2) + on(4), "9:00-10:00 Standup9:00-10:00 Standup");
  remove(single, kThisOne, kNoDate);
  remove(series, kSeries, kNoDate);
  EXPECT_EQ(on(2) + on(3) + on(4), "No Appointments No Appointments No Appointments ");
}

TEST_F(ItemOperations, ThisAndAllThatFollowGo) {
  const auto series = standup();
  change(series, at(5, 9), fields(u"Moved", at(3, 15), at(3, 16)));
  EXPECT_FALSE(can_follow(*session.ItemFromOid(series), at(2, 9))) << "it is the series";
  EXPECT_TRUE(can_follow(*session.ItemFromOid(series), at(3, 15)));
  EXPECT_FALSE(remove(series, kDeleteFollowing, at(4, 9)));
  EXPECT_EQ(on(3) + on(4) + on(20), "9:00-10:00 StandupNo Appointments No Appointments ");
  remove(series, kDeleteFollowing, at(4, 9));
  EXPECT_EQ(boxes_shown(), "Error|This appointment is not there any more.\n");
  remove(series, kDeleteFollowing, at(2, 9));
  EXPECT_FALSE(*store.load(series));
}

// Whatever else of the series stands on the same day.
TEST_F(ItemOperations, TheTouchedOccurrenceIsTheOneThatIsMeant) {
  const auto series = standup();
  change(series, at(3, 9), fields(u"Moved", at(4, 15), at(4, 16)));
  change(series, at(8, 9), fields(u"Far", at(6, 20), at(10, 7)));
  EXPECT_EQ(on(4), "9:00-10:00 Standup, 15:00-16:00 Moved");
  remove(series, kThisOne, at(4, 9));
  EXPECT_EQ(on(4), "15:00-16:00 Moved");
  // It is gone: the day's only other one is not meant.
  EXPECT_FALSE(paste(series, at(4, 9), 20, true));
  remove(series, kThisOne, at(4, 9));
  EXPECT_EQ(notes(series, at(4, 9)), "(No Notes)");
  EXPECT_EQ(boxes_shown(),
            "Error|This appointment is not there any more.\n"
            "Error|This appointment is not there any more.\nError|Failed getOccurrence\n");
  EXPECT_EQ(on(4), "15:00-16:00 Moved");
  remove(series, kThisOne, at(6, 20));
  EXPECT_EQ(on(6) + on(8), "9:00-10:00 StandupNo Appointments ");
  remove(series, kThisOne, kNoDate);
  EXPECT_EQ(boxes_shown(), "Error|This row stands for several appointments.\n");
  const auto cruise = put_series(fields(u"Cruise", at(2, 9), at(14, 9)), RecurrenceType::yearly);
  remove(series, kSeries, kNoDate);
  EXPECT_TRUE(paste(cruise, at(2, 9), 17, true));
  EXPECT_EQ(on(5) + on(17), "No Appointments 9:00-multiday Cruise");
}

TEST_F(ItemOperations, AMissingItemClosesTheSessionOnceWhenDeletingOnly) {
  const auto oid = standup();
  store.faults.fetch = true;
  EXPECT_FALSE(isApptRecurring(session, boxes, 0));
  EXPECT_EQ(boxes_shown(), "");
  EXPECT_FALSE(isApptRecurring(session, boxes, oid));
  EXPECT_EQ(boxes_shown(), "Error|isApptRecurring() failed!\n");
  EXPECT_FALSE(paste(oid, at(2, 9), 3, false));
  EXPECT_EQ(boxes_shown(), kMissing);
  EXPECT_EQ(notes(oid, at(2, 9)), "");
  EXPECT_EQ(boxes_shown(), "") << "a bubble that stays empty";
  EXPECT_TRUE(session.logged_on());
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(remove(oid, kThisOne, at(2, 9)));
    EXPECT_EQ(boxes_shown(), kMissing);
    EXPECT_EQ(store.initialized, 0) << "closed once";
  }
  session.Close();  // as a reconnect does next
  EXPECT_EQ(store.initialized, 0);
  EXPECT_TRUE(session.Open(nullptr));
  EXPECT_EQ(store.initialized, 1);
}

TEST_F(ItemOperations, WhatFailsSaysWhy) {
  const auto series = standup();
  store.faults.reason = "calendar.db is damaged.";
  const auto said = [&](const char* text) {
    EXPECT_EQ(boxes_shown(), std::string("Error|") + text + "\ncalendar.db is damaged.\n");
  };
  for (auto* fault : {&store.faults.fetch, &store.faults.save}) {
    *fault = true;
    const bool reads = fault == &store.faults.fetch;
    paste(series, at(3, 9), 20, true);
    said(reads ? "Failure to Obtain Appointment Item" : "The appointment was not moved.");
    paste(series, at(3, 9), 20, false);
    said(reads ? "Failure to Obtain Appointment Item" : "The appointment was not copied.");
    if (reads) {
      notes(series, at(3, 9));
      said("Failure to Obtain Appointment Item");
    }
    remove(series, kThisOne, at(3, 9));
    said(reads ? "Failure to Obtain Appointment Item" : "The appointment was not deleted.");
    *fault = false;
    session.Open(nullptr);
  }
}

// A move keeps the item itself, for whoever knows it by its number or its UID.
TEST_F(ItemOperations, OnlyTheDayIsAnother) {
  AppointmentRecord record;
  record.zone = "UTC";
  record.residue = "calendar\nBEGIN:VEVENT\r\nX-COLOR:red\r\nEND:VEVENT\r\n";
  record.recipients = {{u"Ann", u"ann@example.org"}};
  record.fields = fields(u"Dentist", at(2, 23, 30), at(3, 0, 45));
  record.start = to_seconds(record.fields.start);
  record.end = to_seconds(record.fields.end);
  record.fields.location = u"Main street";
  record.fields.categories = u"Home, Health";
  record.fields.body = u"card";
  record.fields.body_ink = "ink";
  record.fields.reminder_set = true;
  record.fields.reminder_minutes = 90;
  record.fields.sensitivity = 2;
  record.fields.busy_status = BusyStatus::out_of_office;
  const auto oid = store.put(record);
  const auto uid = (**store.load(oid)).uid;
  EXPECT_TRUE(paste(oid, at(2, 23, 30), 27, false));
  EXPECT_TRUE(paste(oid, at(2, 23, 30), 28, true));
  for (const auto& [one, to] : {std::pair{oid, 28}, std::pair{oid + 1, 27}}) {
    const auto put = *store.load(one);
    ASSERT_TRUE(put);
    EXPECT_EQ(put->uid == uid, one == oid);
    record.fields.start = at(to, 23, 30);
    record.fields.end = at(to + 1, 0, 45);
    EXPECT_EQ(put->fields, record.fields);
    EXPECT_EQ(put->recipients, record.recipients);
    EXPECT_EQ(put->zone + put->residue, record.zone + record.residue);
  }
}

TEST_F(ItemOperations, AMoveLosesNothingAndAnOccurrenceStaysInItsSeries) {
  const auto series = standup();
  change(series, at(4, 9), fields(u"Moved", at(4, 15), at(4, 16)));
  store.faults.save = true;
  EXPECT_FALSE(paste(series, at(4, 15), 1, true));
  EXPECT_FALSE(remove(series, kSeries, kNoDate)) << "the session stays open";
  EXPECT_EQ(boxes.beeps, 2);
  store.faults = {};
  EXPECT_EQ(on(1) + on(4), "No Appointments 15:00-16:00 Moved");
  EXPECT_TRUE(paste(series, at(4, 15), 1, true));
  EXPECT_EQ(on(1) + on(4), "15:00-16:00 MovedNo Appointments ");
  EXPECT_FALSE(paste(series, at(4, 15), 1, true)) << "it is not there any more";
  EXPECT_TRUE(paste(series, at(1, 15), 4, true)) << "and back";
  EXPECT_EQ(on(1) + on(4), "No Appointments 15:00-16:00 Moved");
  EXPECT_EQ((**store.load(series)).exceptions.size(), 1u);
  EXPECT_EQ(boxes.beeps, 3);
}

TEST_F(ItemOperations, ExceptionsAreFoundByTheirDay) {
  const auto series = standup();
  const auto item = session.ItemFromOid(series);
  const auto found = [&](int of_november) {
    CalendarDate moment = at(of_november, 9);
    const bool has_exceptions = find_exception_date(*item->pattern(), boxes, moment);
    return has_exceptions ? moment : 0;
  };
  EXPECT_EQ(found(5), 0);
  change(series, at(5, 9), fields(u"Moved", at(6, 18), at(6, 19)));
  occurrence(series, at(8, 9))->remove();
  EXPECT_EQ(found(5), at(5, 9));
  EXPECT_EQ(found(8), at(8, 9)) << "a deleted one is at no time";
  EXPECT_EQ(found(6), at(6, 18));
  store.faults.exception = true;
  EXPECT_EQ(found(6), at(6, 9));
  EXPECT_EQ(boxes_shown(), "Error|error in pExceptions->Item() call\n");
}

TEST_F(ItemOperations, NotesAreTrimmedAndCut) {
  const std::pair<Text, std::string> cases[] = {
      {u"", "(No Notes)"},
      {u"cake\t\r\n \n", "cake\t"},
      {u"\n \n", "\n"},
      {Text(598, u'x') + u" tail", std::string(598, 'x')},
      {Text(599, u'x'), std::string(594, 'x') + "..."},
      {Text(593, u'x') + u"\U0001F319" + Text(99, u'x'), std::string(593, 'x') + "..."}};
  for (const auto& [body, wanted] : cases) {
    AppointmentFields made = fields(u"x", at(2, 9), at(2, 10));
    made.body = body;
    EXPECT_EQ(notes(put(made), kNoDate), wanted);
  }
  AppointmentFields drawn = fields(u"x", at(2, 9), at(2, 10));
  drawn.body_ink = "strokes";
  EXPECT_EQ(notes(put(drawn), kNoDate), "(Drawing)");
}

TEST_F(ItemOperations, NotesAreThoseOfTheShownOccurrence) {
  AppointmentFields watch = fields(u"Watch", at(2, 22), at(3, 6));
  watch.body = u"every night";
  const auto series = put_series(watch);
  AppointmentFields special = fields(u"Watch", at(5, 20), at(6, 6));
  special.body = u"this night";
  change(series, at(5, 22), special);
  occurrence(series, at(8, 22))->remove();
  EXPECT_EQ(notes(series, at(4, 22)), "every night");
  EXPECT_EQ(notes(series, at(5, 20)), "this night");
  EXPECT_EQ(boxes_shown(), "");
  EXPECT_EQ(notes(series, at(8, 22)), "(No Notes)");
  EXPECT_EQ(boxes_shown(), "Error|Failed getOccurrence\n");
  notes(series, kNoDate);
  EXPECT_EQ(boxes_shown(), "Error|Failed getOccurrence: Invalid Arg\n");
  store.faults = {.read = store.reads > 0 ? 1 : 0, .reason = "in use"};
  EXPECT_EQ(notes(series, at(4, 22)), "");
  EXPECT_EQ(boxes_shown(), "Error|Failure to Obtain Appointment Item\nin use\n");
}

}  // namespace
}  // namespace orvello
