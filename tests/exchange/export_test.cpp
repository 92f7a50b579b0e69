#include <libical/ical.h>

#include <filesystem>

#include "store/series_times.h"
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

class ExportTest : public ExchangeTest {
 protected:
  // Another reader's verdict: how many errors it finds in a text.
  static int errors_libical_finds(const std::string& text) {
    icalcomponent* root = icalparser_parse_string(text.c_str());
    if (!root) return -1;
    const int errors = icalcomponent_count_errors(root);
    icalcomponent_free(root);
    return errors;
  }
  AppointmentRecord own(std::string uid) {
    AppointmentRecord record;
    record.uid = std::move(uid);
    record.start = at(2026, 5, 4, 9);
    record.end = at(2026, 5, 4, 10);
    record.modified = clock.utc_now();
    local_times(record);
    return record;
  }
  static void local_times(AppointmentRecord& record) {
    record.fields.start = to_calendar_date(record.start);
    record.fields.end = to_calendar_date(record.end);
  }
  static void expect_same(const AppointmentRecord& a, const AppointmentRecord& b) {
    EXPECT_EQ(a.fields, b.fields) << a.uid;
    EXPECT_EQ(a.zone, b.zone) << a.uid;
    EXPECT_EQ(a.start, b.start) << a.uid;
    EXPECT_EQ(a.end, b.end) << a.uid;
    EXPECT_EQ(a.pattern, b.pattern) << a.uid;
    EXPECT_EQ(a.rules, b.rules) << a.uid;
    EXPECT_EQ(a.recipients, b.recipients) << a.uid;
    ASSERT_EQ(a.exceptions.size(), b.exceptions.size()) << a.uid;
    for (std::size_t i = 0; i < a.exceptions.size(); ++i) {
      const AppointmentException &x = a.exceptions[i], &y = b.exceptions[i];
      EXPECT_EQ(x.original_start, y.original_start) << a.uid;
      EXPECT_EQ(x.deleted, y.deleted) << a.uid;
      if (x.deleted) continue;
      EXPECT_EQ(x.fields, y.fields) << a.uid;
      EXPECT_EQ(x.start, y.start) << a.uid;
      EXPECT_EQ(x.end, y.end) << a.uid;
      EXPECT_EQ(x.zone, y.zone) << a.uid;
    }
  }
  // The records of `text` in a store of their own are those of `store`.
  void expect_same_after_import(const std::string& text) {
    MemoryStore other(clock);
    const auto result = import_files({file_of(text, "again.ics")}, open_input_file, other, clock);
    EXPECT_EQ(problems_of(result).find("left out"), std::string::npos) << problems_of(result);
    ASSERT_EQ(other.contents().records.size(), count());
    for (const auto& [oid, record] : store.contents().records) {
      const AppointmentRecord* again = of_uid(record.uid, other);
      ASSERT_TRUE(again) << record.uid;
      expect_same(record, *again);
    }
  }
};

TEST_F(ExportTest, WhatCameInComesOutLineForLine) {
  for (const char* name : {"series.ics", "rules.ics"}) {
    store.put_back({});
    import_files({data_file(name)}, open_input_file, store, clock);
    const std::string text = exported();
    EXPECT_EQ(missing(content_of(data_file(name)), text), "") << name;
    EXPECT_EQ(missing(text, content_of(data_file(name))), "") << name;
    expect_same_after_import(text);
  }
  // Both in one store: two calendars, nothing lost from either.
  import_files({data_file("series.ics")}, open_input_file, store, clock);
  const std::string text = exported();
  EXPECT_EQ(missing(content_of(data_file("series.ics")), text), "");
  EXPECT_EQ(missing(content_of(data_file("rules.ics")), text), "");
  expect_same_after_import(text);
  EXPECT_EQ(import_text(text).counts, (ImportCounts{0, 5, 0}));
  EXPECT_EQ(exported(), text);
}

// Its first export carries our own product name: the next import must not take it for ours alone.
TEST_F(ExportTest, ZonesOfANamelessCalendarSurviveTwoRounds) {
  const std::string text =
      "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VTIMEZONE\r\nTZID:Here\r\nBEGIN:STANDARD\r\n"
      "DTSTART:19700101T000000\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0100\r\nTZNAME:HT\r\n"
      "END:STANDARD\r\nEND:VTIMEZONE\r\n" +
      event("UID:1\r\nDTSTART;TZID=Here:20260101T100000\r\n") + "END:VCALENDAR\r\n";
  import_text(text);
  const std::string first = exported();
  store.put_back({});
  import_text(first);
  EXPECT_EQ(missing(text, exported()), "");
}

TEST_F(ExportTest, PlainEventsNeedNoText) {
  const std::string text = calendar(
      event("UID:1\r\nDTSTART:20260101T100000\r\nDTEND:20260101T110000\r\nSUMMARY:One\\, two\r\n"
            "CATEGORIES:A,B\r\nRRULE:FREQ=DAILY;INTERVAL=3\r\n") +
      event("UID:2\r\nDTSTART;VALUE=DATE:20260101\r\nDTEND;VALUE=DATE:20260103\r\n"));
  import_text(text);
  for (const auto& [oid, record] : store.contents().records)
    EXPECT_EQ(record.residue.find("BEGIN"), std::string::npos) << record.residue;
  EXPECT_EQ(missing(text, exported()) + missing(exported(), text), "");
}

TEST_F(ExportTest, OldFormComesOutInTheNewOne) {
  import_files({data_file("old.vcs")}, open_input_file, store, clock);
  const std::string text = exported();
  EXPECT_NE(text.find("VERSION:2.0\r\n"), std::string::npos);
  EXPECT_NE(text.find("DAYLIGHT:TRUE;+02;"), std::string::npos);
  EXPECT_NE(text.find("RRULE:FREQ=WEEKLY;COUNT=10;BYDAY=MO,TU\r\n"), std::string::npos);
  // TZ and DAYLIGHT have no meaning in the newer form, and are all that is at fault.
  EXPECT_EQ(errors_libical_finds(text), 2);
  expect_same_after_import(text);
}

TEST_F(ExportTest, OnlyWhatChangedIsWrittenAnew) {
  import_files({data_file("series.ics")}, open_input_file, store, clock);
  const std::string before = exported();
  AppointmentRecord record = *of_uid("weekly@sample");
  record.fields.location = u"Room 2";
  record.fields.reminder_minutes = 45;
  record.recipients.erase(record.recipients.begin() + 1);
  record.recipients.push_back({u"Dora", u"dora@sample.org"});
  record.exceptions.push_back({at(2026, 2, 9, 9), true, {}, {}, {}, {}, {}, {}});
  record.exceptions[0].fields.subject = u"Moved";
  record.modified = utc_at_offset(at(2026, 6, 1), 0);
  store.put(record);
  const std::string text = exported();
  EXPECT_EQ(missing(before, text),
            "ATTENDEE;PARTSTAT=ACCEPTED;CN=Bob;X-ID=7:MAILTO:bob@sample.org\n"
            "DTSTAMP:20260101T080000Z\nDTSTAMP:20260101T080000Z\nLOCATION:Room 1\n"
            "SUMMARY:Meeting\\, moved\nTRIGGER;RELATED=START:-PT20M\n");
  EXPECT_EQ(missing(text, before),
            "ATTENDEE;CN=Dora:mailto:dora@sample.org\n"
            "DTSTAMP:20260601T000000Z\nDTSTAMP:20260601T000000Z\n"
            "EXDATE;TZID=Town:20260209T090000\nLOCATION:Room 2\n"
            "SUMMARY:Moved\nTRIGGER:-PT45M\n");
  // A changed rule takes the old one's place, and an exclusion that is gone goes.
  record.pattern->interval = 2;
  record.exceptions.clear();
  store.put(record);
  const std::string later = exported();
  EXPECT_EQ(missing(text, later).find("X-LIST"), std::string::npos);
  EXPECT_EQ(later.find("EXDATE"), std::string::npos);
  EXPECT_NE(later.find("INTERVAL=2"), std::string::npos);
  expect_same_after_import(later);
}

// What hangs on a series goes out where the series has gone to.
TEST_F(ExportTest, ASeriesAtOtherTimesTakesItsOccurrencesAlong) {
  const std::string uid = "UID:s\r\n", zone = ";TZID=Europe/Berlin:";
  import_text(
      calendar(event(uid + "DTSTART" + zone + "20260702T090000\r\nDURATION:PT1H\r\nX-KEPT:1\r\n" +
                     "RRULE:FREQ=MONTHLY;BYDAY=TH,MO;UNTIL=20260901T070000Z\r\nEXDATE" + zone +
                     "20260706T090000\r\n") +
               event(uid + "RECURRENCE-ID" + zone + "20260713T090000\r\nDTSTART" + zone +
                     "20260714T100000\r\nDURATION:PT1H\r\nX-CHANGED:1\r\n") +
               event(uid + "RECURRENCE-ID" + zone + "20260716T090000\r\nDTSTART" + zone +
                     "20260716T090000\r\nSTATUS:CANCELLED\r\nX-GONE:1\r\n")));
  AppointmentRecord moved = *of_uid("s");
  ASSERT_TRUE(moved.pattern == std::nullopt && moved.exceptions.size() == 3);
  ASSERT_TRUE(move_series(moved, moved.start + 5400, moved.end + 7200));
  ASSERT_NE(store.put(moved), 0);
  const std::string text = exported();
  EXPECT_NE(text.find("X-KEPT:1"), std::string::npos);
  EXPECT_NE(text.find("X-CHANGED:1"), std::string::npos);
  EXPECT_NE(text.find("X-GONE:1"), std::string::npos);
  store.put_back({});
  import_text(text);
  const AppointmentRecord* again = of_uid("s");
  ASSERT_TRUE(again);
  EXPECT_EQ(again->start, moved.start);
  EXPECT_EQ(again->end, moved.end);
  EXPECT_EQ(again->rules, moved.rules);
  ASSERT_EQ(again->exceptions.size(), 3u);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(again->exceptions[i].original_start, moved.exceptions[i].original_start);
    EXPECT_EQ(again->exceptions[i].deleted, moved.exceptions[i].deleted);
  }
}

// UNTIL counts in the zone that the series has now.
TEST_F(ExportTest, TheEndOfASeriesFollowsItsZone) {
  import_text(calendar(event("UID:z\r\nDTSTART;TZID=Europe/Berlin:20260105T090000\r\nSUMMARY:S\r\n"
                             "RRULE:FREQ=WEEKLY;UNTIL=20260202T080000Z\r\nX-KEPT:1\r\n") +
                       event("UID:p\r\nDTSTART;TZID=America/New_York:20260105T090000\r\n"
                             "DTEND;TZID=America/New_York:20260105T100000\r\n"
                             "RRULE:FREQ=WEEKLY;UNTIL=20260202T140000Z\r\n")));
  EXPECT_NE(exported().find("UNTIL=20260202T080000Z"), std::string::npos);
  for (const auto& [uid, zone] : {std::pair("z", "America/New_York"), {"p", "UTC"}})
    change_of(uid, [zone = zone](AppointmentRecord& record) {
      record.zone = zone;
      record.modified = utc_at_offset(at(2026, 6, 1), 0);
    });
  const std::string text = exported();
  EXPECT_NE(text.find("UNTIL=20260203T045959Z"), std::string::npos) << "that day in New York";
  EXPECT_NE(text.find("UNTIL=20260202T235959Z"), std::string::npos) << "in Greenwich";
  EXPECT_EQ(text.find("UNTIL=20260202T080000Z"), std::string::npos);
  change_of("p", [](AppointmentRecord& record) { record.zone.clear(); });
  EXPECT_NE(exported().find("UNTIL=20260202T235959;"), std::string::npos) << "with a time";
}

TEST_F(ExportTest, ANulIsNoPartOfALine) {
  AppointmentRecord record = own("n");
  record.fields.subject = Text(u"a\0b", 3);
  record.fields.body = Text(u"\0", 1);
  record.recipients = {{Text(u"A\0nn", 4), Text(u"a\0@x.org", 8)}};
  store.put(record);
  const std::string text = exported();
  EXPECT_EQ(text.find('\0'), std::string::npos);
  EXPECT_NE(text.find("SUMMARY:ab\r\n"), std::string::npos);
  EXPECT_NE(text.find("ATTENDEE;CN=Ann:mailto:a@x.org\r\n"), std::string::npos);
}

TEST_F(ExportTest, OwnAppointments) {
  AppointmentRecord plain = own("plain");
  plain.fields.subject =
      u"Semicolons; commas, \\ and \u00fcml\u00e4uts far beyond seventy-five octets: "
      u"\u0437\u0434\u0440\u0430\u0432\u0441\u0442\u0432\u0443\u0439\u0442\u0435, "
      u"\u0434\u043e\u0431\u0440\u044b\u0439 \u0434\u0435\u043d\u044c";
  plain.fields.body = u"One\nTwo";
  plain.fields.categories = u"Work, Home";
  plain.fields.sensitivity = 2;
  plain.fields.busy_status = BusyStatus::out_of_office;
  plain.fields.reminder_set = true;
  plain.fields.reminder_minutes = 90;
  plain.fields.body_ink = std::string("\x00\x01\xFF ink", 7);
  plain.recipients = {{u"Lee, \"Ann\"", u"ann@sample.org"}, {u"", u"bob@sample.org"}};
  store.put(plain);

  AppointmentRecord days = own("days");
  days.fields.all_day = true;
  days.start = at(2026, 5, 4);
  days.end = at(2026, 5, 6, 23, 59);
  local_times(days);
  days.fields.busy_status = BusyStatus::free;
  store.put(days);

  import_text(calendar(event("UID:zoned\r\nDTSTART;TZID=Europe/Berlin:20260501T100000\r\n")));
  AppointmentRecord series = own("series");
  series.zone = "Europe/Berlin";
  series.start = at(2026, 3, 2, 9);
  series.end = at(2026, 3, 2, 10);
  series.fields.start = to_calendar_date(at(2026, 3, 2, 10));
  series.fields.end = to_calendar_date(at(2026, 3, 2, 11));
  series.pattern = pattern_from_rule(*parse_rule("FREQ=WEEKLY;BYDAY=MO;UNTIL=20260629T235959"),
                                     series.start, 3600);
  ASSERT_TRUE(series.pattern);
  AppointmentException gone, moved;
  gone.original_start = at(2026, 3, 9, 9);
  gone.deleted = true;
  moved.original_start = at(2026, 3, 16, 9);
  moved.fields = series.fields;
  moved.zone = series.zone;
  moved.start = at(2026, 3, 17, 9);
  moved.end = at(2026, 3, 17, 10);
  moved.fields.start = to_calendar_date(at(2026, 3, 17, 10));
  moved.fields.end = to_calendar_date(at(2026, 3, 17, 11));
  series.exceptions = {gone, moved};
  store.put(series);

  const std::string text = exported();
  EXPECT_EQ(errors_libical_finds(text), 0);
  std::size_t begin = 0;
  for (std::string_view line; next_line(text, begin, line);) EXPECT_LE(line.size(), 75u) << line;
  for (const char* line :
       {"DTSTART;VALUE=DATE:20260504", "DTEND;VALUE=DATE:20260507", "TRIGGER:-PT1H30M",
        "RECURRENCE-ID;TZID=Europe/Berlin:20260316T090000", "CATEGORIES:Work,Home",
        "EXDATE;TZID=Europe/Berlin:20260309T090000", "TZID:Europe/Berlin",
        "RRULE:FREQ=WEEKLY;UNTIL=20260629T215959Z;BYDAY=MO"})
    EXPECT_NE(text.find(std::string(line) + "\r\n"), std::string::npos) << line;
  // "Work, Home" comes back without the blank.
  change_of("plain", [](auto& record) { record.fields.categories = u"Work,Home"; });
  expect_same_after_import(text);

  // Of the 5th of May: the second of the three days, neither the 4th nor a Monday.
  const auto fifth = export_calendar(store, day_of(2026, 5, 5), day_of(2026, 5, 5), clock);
  EXPECT_NE(fifth->find("UID:days"), std::string::npos);
  for (const char* other : {"UID:plain", "UID:series"})
    EXPECT_EQ(fifth->find(other), std::string::npos) << other;
}

TEST_F(ExportTest, OneAppointmentGoesOutAloneAsItStands) {
  import_text(calendar("BEGIN:VTODO\r\nUID:t\r\nSUMMARY:Task\r\nEND:VTODO\r\n" +
                       event("UID:a\r\nSUMMARY:First\r\nDTSTART:20260504T090000\r\nX-KEPT:1\r\n") +
                       event("UID:b\r\nSUMMARY:Second\r\nDTSTART:20260505T090000\r\n")));
  auto record = *store.load(**store.oid_of_uid("a"));
  ASSERT_TRUE(record);
  record->fields.subject = u"Not saved yet";
  const std::string text = *export_appointments(store, {*record}, clock);
  EXPECT_EQ(errors_libical_finds(text), 0);
  EXPECT_NE(text.find("X-KEPT:1"), std::string::npos);
  EXPECT_NE(text.find("SUMMARY:Not saved yet"), std::string::npos);
  for (const char* other : {"Task", "Second", "First"})
    EXPECT_EQ(text.find(other), std::string::npos) << other;
  const std::string own_text = *export_appointments(store, {own("c")}, clock);
  EXPECT_NE(own_text.find("UID:c"), std::string::npos) << "one that is not stored";
}

TEST_F(ExportTest, AnEmptyStoreIsStillACalendar) {
  EXPECT_EQ(errors_libical_finds(exported()), 0);
  EXPECT_EQ(problems_of(import_text(exported())), "");
}

}  // namespace
}  // namespace orvello
