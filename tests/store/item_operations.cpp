#include "store/item_operations.h"

#include "store/notes_text.h"
#include "tests/store/store_fixture.h"

namespace orvello {
namespace {

constexpr int kThisOne = 2, kSeries = 3;

class ItemOperations : public StoreTest {
 protected:
  bool remove(std::int32_t oid, int mode, int of_november) {
    return delete_appointment(session, boxes, oid, mode, day(of_november));
  }
  bool paste(std::int32_t oid, int from, int to, bool move) {
    return copy_or_move(session, boxes, oid, day(from), day(to), move);
  }
};

TEST_F(ItemOperations, DeletesTheOneTheSeriesOrTheItem) {
  const auto series = put_daily(fields(u"Standup", at(2, 9), at(2, 10)));
  const auto single = put(fields(u"Lunch", at(3, 12), at(3, 13)));
  EXPECT_TRUE(isApptRecurring(session, boxes, series));
  EXPECT_FALSE(isApptRecurring(session, boxes, single));
  EXPECT_FALSE(remove(series, kThisOne, 3));
  EXPECT_EQ(listed(2, 4),
            (Lines{"Standup 2 9:00-2 10:00", "Lunch 3 12:00-3 13:00", "Standup 4 9:00-4 10:00"}));
  EXPECT_FALSE(remove(single, kThisOne, 9));
  EXPECT_FALSE(remove(series, kSeries, 4));
  EXPECT_EQ(listed(1, 30), Lines{});
  EXPECT_EQ(boxes.beeps, 0);
}

// The day before must not lose what was deleted on this day already.
TEST_F(ItemOperations, DeletingAnOccurrenceTwiceBeeps) {
  const auto series = put_daily(fields(u"Standup", at(2, 9), at(2, 10)));
  remove(series, kThisOne, 4);
  remove(series, kThisOne, 4);
  EXPECT_EQ(boxes.beeps, 1);
  EXPECT_EQ(listed(3, 5), (Lines{"Standup 3 9:00-3 10:00", "Standup 5 9:00-5 10:00"}));
}

TEST_F(ItemOperations, TheShownOccurrenceMayHaveBeenMovedOrBegunEarlier) {
  const auto series = put_daily(fields(u"Standup", at(2, 9), at(2, 10)));
  move_occurrence(series, at(3, 9), at(3, 15), at(3, 16));
  move_occurrence(series, at(8, 9), at(6, 20), at(10, 7), u"Far");
  remove(series, kThisOne, 3);
  EXPECT_EQ(listed(3, 3), Lines{});
  // Of two on one day the moved one goes first, as the exceptions are looked at first.
  remove(series, kThisOne, 6);
  EXPECT_EQ(listed(6, 8), (Lines{"Standup 6 9:00-6 10:00", "Standup 7 9:00-7 10:00"}));

  const auto night = put_daily(fields(u"Watch", at(20, 22), at(21, 6)));
  remove(night, kThisOne, 20);
  remove(night, kThisOne, 22);  // the one that begins on the day, not the one that still runs
  remove(series, kSeries, 6);
  EXPECT_EQ(listed(20, 22), Lines{"Watch 21 22:00-22 6:00"});
  remove(night, kThisOne, 22);
  EXPECT_EQ(listed(20, 22), Lines{});
  EXPECT_EQ(boxes.beeps, 0);
}

TEST_F(ItemOperations, AVeryLongOccurrenceIsFoundOnItsLastDay) {
  const auto item = session.CreateAppointment();
  item->write(fields(u"Cruise", at(2, 9), at(14, 9)));
  RecurrencePattern yearly;
  yearly.type = RecurrenceType::yearly;
  yearly.pattern_start_date = day(2);
  yearly.start_time = yearly.end_time = 9 / 24.0;
  yearly.duration = 12 * 24 * 60;
  yearly.day_of_month = 2;
  yearly.month_of_year = 11;
  item->pattern()->set_fields(yearly);
  ASSERT_TRUE(item->save());
  EXPECT_TRUE(paste(item->oid(), 14, 20, true));
  EXPECT_EQ(listed(1, 30), Lines{"Cruise 20 9:00-2 9:00"});
}

TEST_F(ItemOperations, AMissingItemClosesTheSessionWhenDeletingOnly) {
  const auto oid = put(fields(u"x", at(2, 9), at(2, 10)));
  store.faults.fetch = true;
  EXPECT_FALSE(isApptRecurring(session, boxes, oid));
  EXPECT_FALSE(isApptRecurring(session, boxes, 0));
  EXPECT_FALSE(paste(oid, 2, 3, false));
  EXPECT_TRUE(session.logged_on());
  EXPECT_TRUE(remove(oid, kThisOne, 2));
  EXPECT_FALSE(session.logged_on());
  EXPECT_EQ(store.initialized, 0);
  EXPECT_TRUE(remove(oid, kThisOne, 2));
  EXPECT_EQ(store.initialized, 0);
  EXPECT_EQ(boxes_shown(),
            (Lines{"Error|isApptRecurring() failed!", "Error|Failure to Obtain Appointment Item",
                   "Error|Failure to Obtain Appointment Item",
                   "Error|Failure to Obtain Appointment Item"}));
}

TEST_F(ItemOperations, ACopyKeepsEverythingButTheDay) {
  AppointmentFields full = fields(u"Dentist", at(2, 23, 30), at(3, 0, 45));
  full.location = u"Main street";
  full.categories = u"Home, Health";
  full.body = u"card";
  full.body_ink = "ink";
  full.reminder_set = true;
  full.reminder_minutes = 90;
  full.sensitivity = 2;
  full.busy_status = BusyStatus::out_of_office;
  const auto item = session.CreateAppointment();
  item->write(full);
  item->set_recipients({{u"Ann", u"ann@example.org"}});
  ASSERT_TRUE(item->save());
  // Taken from its second day: the start is what moves to the target day.
  EXPECT_TRUE(paste(item->oid(), 3, 28, false));
  const auto copy = session.ItemFromOid(item->oid() + 1);
  ASSERT_TRUE(copy);
  AppointmentFields copied;
  copy->read(copied);
  full.start = at(28, 23, 30);
  full.end = at(29, 0, 45);
  EXPECT_EQ(copied, full);
  EXPECT_EQ(copy->recipients(), item->recipients());
  EXPECT_TRUE(paste(item->oid(), 2, 1, true));
  EXPECT_EQ(listed(1, 30), (Lines{"Dentist 1 23:30-2 0:45", "Dentist 28 23:30-29 0:45"}));
}

// A move deletes the source: what only its file said must not go with it.
TEST_F(ItemOperations, ACopyKeepsItsZoneAndWhatItsFileSaid) {
  AppointmentRecord record;
  record.zone = "UTC";
  record.start = day(2) * kSecondsPerDay + 9 * 3600;
  record.end = record.start + 3600;
  record.residue = "calendar\nBEGIN:VEVENT\r\nX-COLOR:red\r\nEND:VEVENT\r\n";
  const auto oid = store.put(record);
  ASSERT_TRUE(paste(oid, 2, 5, true));
  const auto moved = store.load(oid + 1);
  ASSERT_TRUE(moved);
  EXPECT_EQ(moved->zone, "UTC");
  EXPECT_EQ(moved->start, record.start + 3 * kSecondsPerDay);
  EXPECT_EQ(moved->residue, record.residue);
  EXPECT_FALSE(store.load(oid));
}

TEST_F(ItemOperations, ACopiedOccurrenceStandsAlone) {
  const auto series = put_daily(fields(u"Standup", at(2, 9), at(2, 10)));
  move_occurrence(series, at(4, 9), at(4, 15), at(4, 16));
  EXPECT_TRUE(paste(series, 4, 1, true));
  EXPECT_EQ(listed(1, 4),
            (Lines{"Moved 1 15:00-1 16:00", "Standup 2 9:00-2 10:00", "Standup 3 9:00-3 10:00"}));
  EXPECT_FALSE(isApptRecurring(session, boxes, series + 1));
  EXPECT_FALSE(paste(series, 4, 1, true)) << "it is not there any more";
  EXPECT_FALSE(paste(series, 1, 2, false)) << "before the series";
  EXPECT_EQ(boxes.beeps, 2);
}

TEST_F(ItemOperations, AFailedMoveLosesNothing) {
  const auto single = put(fields(u"Lunch", at(3, 12), at(3, 13)));
  store.faults.save = true;
  EXPECT_FALSE(paste(single, 3, 4, true));
  EXPECT_FALSE(remove(single, kThisOne, 3)) << "the session stays open";
  EXPECT_EQ(boxes.beeps, 2);
  store.faults = {};
  EXPECT_EQ(listed(1, 30), Lines{"Lunch 3 12:00-3 13:00"});
}

TEST_F(ItemOperations, ExceptionsAreFoundByTheirDay) {
  const auto series = put_daily(fields(u"Standup", at(2, 9), at(2, 10)));
  const auto item = session.ItemFromOid(series);
  CalendarDate moment = at(5, 9);
  EXPECT_FALSE(find_exception_date(*item->pattern(), boxes, moment)) << "there are none";
  move_occurrence(series, at(5, 9), at(6, 18), at(6, 19));
  occurrence(series, at(8, 9))->remove();
  EXPECT_TRUE(find_exception_date(*item->pattern(), boxes, moment));
  EXPECT_EQ(moment, at(5, 9));
  moment = at(8, 9);
  find_exception_date(*item->pattern(), boxes, moment);
  EXPECT_EQ(moment, at(8, 9)) << "a deleted one is at no time";
  moment = at(6, 9);
  find_exception_date(*item->pattern(), boxes, moment);
  EXPECT_EQ(moment, at(6, 18));
  store.faults.exception = true;
  moment = at(6, 9);
  EXPECT_TRUE(find_exception_date(*item->pattern(), boxes, moment));
  EXPECT_EQ(moment, at(6, 9));
  EXPECT_EQ(boxes_shown(), Lines{"Error|error in pExceptions->Item() call"});
}

TEST_F(ItemOperations, SteppingBackStopsAfterItsTries) {
  // 7200 minutes allow three steps, though the occurrence runs into a sixth day.
  const auto item = session.CreateAppointment();
  item->write(fields(u"Camp", at(2, 9), at(7, 9)));
  RecurrencePattern monthly;
  monthly.type = RecurrenceType::monthly;
  monthly.pattern_start_date = day(2);
  monthly.start_time = monthly.end_time = 9 / 24.0;
  monthly.duration = 7200;
  monthly.day_of_month = 2;
  item->pattern()->set_fields(monthly);
  ASSERT_TRUE(item->save());
  const auto pattern = item->pattern();
  OccurrenceError last;
  EXPECT_TRUE(find_occurrence(*item, *pattern, at(5, 9), last));
  EXPECT_FALSE(find_occurrence(*item, *pattern, at(6, 9), last));
  EXPECT_EQ(last, OccurrenceError::not_found);
}

class NotesText : public ItemOperations {
 protected:
  std::string notes(TextView body) {
    AppointmentFields made = fields(u"x", at(2, 9), at(2, 10));
    made.body = body;
    return to_utf8(notes_text(session, boxes, put(made), day(2)));
  }
};

TEST_F(NotesText, IsTrimmedAndCut) {
  EXPECT_EQ(notes(u""), "(No Notes)");
  EXPECT_EQ(notes(u"cake\r\n \n"), "cake");
  EXPECT_EQ(notes(u"\n \n"), "\n") << "the first character stays";
  EXPECT_EQ(notes(u"cake\t"), "cake\t");
  EXPECT_EQ(notes(Text(598, u'x')), std::string(598, 'x'));
  EXPECT_EQ(notes(Text(599, u'x')), std::string(594, 'x') + "...");
  EXPECT_EQ(notes(Text(10000, u'x')), std::string(594, 'x') + "...");
  EXPECT_EQ(notes(Text(598, u'x') + u" tail"), std::string(598, 'x'));
  EXPECT_EQ(notes(Text(593, u'x') + u"\U0001F319" + Text(99, u'x')), std::string(593, 'x') + "...");
}

TEST_F(NotesText, AreThoseOfTheShownOccurrence) {
  AppointmentFields made = fields(u"Watch", at(2, 22), at(3, 6));
  made.body = u"every night";
  const auto series = put_daily(made);
  const auto special = occurrence(series, at(5, 22));
  made.body = u"this night";
  made.start = at(5, 20);
  made.end = at(6, 6);
  special->write(made);
  ASSERT_TRUE(special->save());
  const auto of = [&](int of_november) {
    return to_utf8(notes_text(session, boxes, series, day(of_november)));
  };
  EXPECT_EQ(of(4), "every night");
  EXPECT_EQ(of(5), "this night");
  occurrence(series, at(8, 22))->remove();
  EXPECT_EQ(of(8), "every night") << "of the one that began the day before";
  EXPECT_EQ(boxes_shown(), Lines{});
  EXPECT_EQ(of(1), "(No Notes)");
  EXPECT_EQ(boxes_shown(), Lines{"Error|Failed getOccurrence"});
  EXPECT_EQ(notes_text(session, boxes, series, static_cast<std::int32_t>(kNoDate) + 9),
            u"(No Notes)");
  EXPECT_EQ(boxes_shown(), Lines{"Error|Failed getOccurrence: Invalid Arg"});
  store.faults.fetch = true;
  EXPECT_EQ(of(4), "");
  EXPECT_EQ(boxes_shown(), Lines{});
}

}  // namespace
}  // namespace orvello
