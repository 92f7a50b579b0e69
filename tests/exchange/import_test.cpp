#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

using ImportTest = ExchangeTest;

TEST_F(ImportTest, SeriesWithItsChangesInAnyOrderIsOneAppointment) {
  const auto result = import_files({data_file("series.ics")}, open_input_file, store, clock);
  ASSERT_TRUE(result.done) << result.failure;
  EXPECT_EQ(counts_line(result.counts), "1 imported, 0 updated, 0 skipped");
  EXPECT_EQ(problems_of(result), "");
  const AppointmentRecord* record = of_uid("weekly@sample");
  ASSERT_TRUE(record);
  EXPECT_EQ(record->fields.subject, u"Meeting");
  EXPECT_EQ(record->fields.body,
            u"First line\nsecond; line with a long tail that a writer had to fold, although not "
            u"at the usual place");
  EXPECT_EQ(record->fields.categories, u"Work,Team,Regular");
  EXPECT_EQ(record->fields.sensitivity, 2);
  EXPECT_EQ(record->fields.busy_status, BusyStatus::tentative);
  EXPECT_TRUE(record->fields.reminder_set);
  EXPECT_EQ(record->fields.reminder_minutes, 20);  // not the mail a day ahead
  ASSERT_EQ(record->recipients.size(), 3u);
  EXPECT_EQ(record->recipients[0].name, u"Lee, Ann");
  EXPECT_EQ(record->recipients[1].address, u"bob@sample.org");
  EXPECT_EQ(record->recipients[2].name, u"Carl \"C\" Doe");
  EXPECT_EQ(record->zone, "Town");
  EXPECT_EQ(record->start, at(2026, 1, 5, 9));
  // 9:00 an hour east of Greenwich is 10:00 on this device.
  EXPECT_EQ(to_seconds(record->fields.start), at(2026, 1, 5, 10));
  EXPECT_EQ(to_seconds(record->fields.end), at(2026, 1, 5, 11, 30));
  ASSERT_TRUE(record->pattern);
  EXPECT_EQ(record->pattern->type, RecurrenceType::weekly);
  // The end in UTC is 9:00 in the series' own zone, so that day is still part of it.
  EXPECT_EQ(record->pattern->pattern_end_date, to_calendar_date(day_of(2026, 3, 2)));
  ASSERT_EQ(record->exceptions.size(), 4u);
  EXPECT_EQ(record->exceptions[0].original_start, at(2026, 1, 12, 9));
  EXPECT_EQ(record->exceptions[0].start, at(2026, 1, 12, 14));
  EXPECT_EQ(record->exceptions[0].fields.subject, u"Meeting, moved");
  EXPECT_TRUE(record->exceptions[1].deleted && record->exceptions[2].deleted);
  EXPECT_TRUE(record->exceptions[3].deleted);  // cancelled, named in UTC
  EXPECT_EQ(record->exceptions[3].original_start, at(2026, 2, 2, 9));
}

TEST_F(ImportTest, RulesNoPatternHoldsAndPeriods) {
  const auto result = import_files({data_file("rules.ics")}, open_input_file, store, clock);
  EXPECT_EQ(counts_line(result.counts), "4 imported, 0 updated, 0 skipped");
  const AppointmentRecord* odd = of_uid("odd@sample");
  ASSERT_TRUE(odd);
  EXPECT_FALSE(odd->pattern);
  EXPECT_EQ(odd->rules,
            "RRULE:FREQ=MONTHLY;BYDAY=MO,TU;BYSETPOS=-1;UNTIL=20261231T100000\n"
            "RRULE:FREQ=YEARLY;BYYEARDAY=-1\nEXRULE:FREQ=YEARLY;BYMONTH=6\n"
            "RDATE:20260505T100000");
  const AppointmentRecord* periods = of_uid("periods@sample");
  ASSERT_TRUE(periods);
  EXPECT_EQ(periods->rules, "RRULE:FREQ=DAILY;COUNT=5\nRDATE:20260102T150000,20260103T150000");
  ASSERT_EQ(periods->exceptions.size(), 1u);  // the other period is as long as the rest
  EXPECT_EQ(periods->exceptions[0].end, at(2026, 1, 2, 17));
  const AppointmentRecord* trip = of_uid("trip@sample");
  ASSERT_TRUE(trip);
  EXPECT_TRUE(trip->fields.all_day);
  EXPECT_EQ(trip->end, at(2026, 7, 2, 23, 59));
  EXPECT_EQ(trip->fields.busy_status, BusyStatus::free);
  EXPECT_TRUE(trip->pattern);
  EXPECT_TRUE(of_uid("later@sample#20260108T120000Z"));  // a change without a series
}

TEST_F(ImportTest, EndsAndZones) {
  struct Case {
    const char* lines;
    const char* zone;
    LocalSeconds start, end;
  };
  const Case cases[] = {
      {"DTSTART:20260301T100000\r\n", "", at(2026, 3, 1, 10), at(2026, 3, 1, 10)},
      {"DTSTART:20260301T100000Z\r\nDTEND:20260301T113000Z\r\n", "UTC", at(2026, 3, 1, 10),
       at(2026, 3, 1, 11, 30)},
      {"DTSTART;VALUE=DATE:20260301\r\n", "", at(2026, 3, 1), at(2026, 3, 1, 23, 59)},
      {"DTSTART;VALUE=DATE:16040229\r\n", "", at(1604, 2, 29), at(1604, 2, 29, 23, 59)},
      {"DTSTART;VALUE=DATE:20260301\r\nDTEND;VALUE=DATE:20260301\r\n", "", at(2026, 3, 1),
       at(2026, 3, 1, 23, 59)},
      {"DTSTART;VALUE=DATE:20260301\r\nDURATION:P1W\r\n", "", at(2026, 3, 1),
       at(2026, 3, 7, 23, 59)},
      // A day over the change to summer time is 24 hours by the calendar, 23 by the clock.
      {"DTSTART;TZID=Europe/Berlin:20260328T120000\r\nDURATION:P1D\r\n", "Europe/Berlin",
       at(2026, 3, 28, 12), at(2026, 3, 29, 12)},
      {"DTSTART;TZID=Europe/Berlin:20260328T120000\r\nDURATION:PT24H\r\n", "Europe/Berlin",
       at(2026, 3, 28, 12), at(2026, 3, 29, 13)},
      {"DTSTART;TZID=Europe/Berlin:20260701T120000\r\nDTEND:20260701T110000Z\r\n", "Europe/Berlin",
       at(2026, 7, 1, 12), at(2026, 7, 1, 13)},
      {"DTSTART;TZID=\"W. Europe Standard Time\":20260701T120000\r\n", "Europe/Berlin",
       at(2026, 7, 1, 12), at(2026, 7, 1, 12)},
      {"DTSTART;TZID=/sample.org/Olson/Europe/Berlin:20260701T120000\r\n", "Europe/Berlin",
       at(2026, 7, 1, 12), at(2026, 7, 1, 12)},
      {"DTSTART;TZID=../../etc/passwd:20260701T120000\r\n", "", at(2026, 7, 1, 12),
       at(2026, 7, 1, 12)},
  };
  for (const Case& one : cases) {
    import_text(calendar(event("UID:x\r\n" + std::string(one.lines))));
    const AppointmentRecord* record = of_uid("x");
    ASSERT_TRUE(record) << one.lines;
    EXPECT_EQ(record->zone, one.zone) << one.lines;
    EXPECT_EQ(record->start, one.start) << one.lines;
    EXPECT_EQ(record->end, one.end) << one.lines;
    if (record->zone == "Europe/Berlin") {
      const auto zone = *store.zone(record->zone);
      ASSERT_TRUE(zone);
      EXPECT_EQ(zone->to_utc(at(2026, 7, 1, 12)), utc_at_offset(at(2026, 7, 1, 10), 0));
      EXPECT_EQ(zone->to_utc(at(2045, 1, 1, 12)), utc_at_offset(at(2045, 1, 1, 11), 0));
    }
  }
}

TEST_F(ImportTest, OneNameForTwoZonesKeepsBothApart) {
  const auto text = [](const char* offset) {
    return calendar(
        std::string("BEGIN:VTIMEZONE\nTZID:Here\nBEGIN:STANDARD\nDTSTART:19700101T000000\n"
                    "TZOFFSETFROM:") +
        offset + "\nTZOFFSETTO:" + offset + "\nEND:STANDARD\nEND:VTIMEZONE\n" +
        event("UID:at" + std::string(offset) + "\nDTSTART;TZID=Here:20260101T120000\n"));
  };
  import_text(text("+0100"));
  import_text(text("+0500"));
  import_text(text("+0100"));
  EXPECT_EQ(store.contents().zones.size(), 2u);
  EXPECT_EQ(to_seconds(of_uid("at+0100")->fields.start), at(2026, 1, 1, 13));
  EXPECT_EQ(to_seconds(of_uid("at+0500")->fields.start), at(2026, 1, 1, 9));
  EXPECT_EQ(missing(text("+0100"), exported()) + missing(text("+0500"), exported()), "");
}

TEST_F(ImportTest, ALowerSequenceTakesNothingBack) {
  const auto text = [](int sequence, const char* subject) {
    return calendar(event("UID:a\r\nSEQUENCE:" + std::to_string(sequence) +
                          "\r\nDTSTART:20260101T100000\r\nSUMMARY:" + subject + "\r\n") +
                    event("DTSTART:20260102T100000\r\nSUMMARY:Nameless\r\n"));
  };
  EXPECT_EQ(counts_line(import_text(text(5, "One")).counts), "2 imported, 0 updated, 0 skipped");
  EXPECT_EQ(
      counts_line(preview_files({file_of(text(6, "Two"))}, open_input_file, store, clock).counts),
      "0 imported, 2 updated, 0 skipped");
  EXPECT_EQ(of_uid("a")->fields.subject, u"One");  // a preview changes nothing
  const auto older = import_text(text(1, "Old"));
  EXPECT_EQ(counts_line(older.counts), "0 imported, 1 updated, 1 skipped");
  EXPECT_EQ(problems_of(older), "4: \"Old\" is older than what the calendar has; left out\n");
  EXPECT_EQ(of_uid("a")->fields.subject, u"One");
  // The same file once more is what somebody wants, also after a change by hand.
  change_of("a", [](auto& record) { record.fields.subject = u"Mine"; });
  EXPECT_EQ(counts_line(import_text(text(5, "One")).counts), "0 imported, 2 updated, 0 skipped");
  EXPECT_EQ(of_uid("a")->fields.subject, u"One");
  EXPECT_EQ(counts_line(import_text(text(7, "Two")).counts), "0 imported, 2 updated, 0 skipped");
  EXPECT_EQ(of_uid("a")->fields.subject, u"Two");
  EXPECT_EQ(count(), 2u);
}

TEST_F(ImportTest, AFileWithoutInkTakesNoneFromNotesWhoseTextIsTheSame) {
  const auto file = [](std::string_view text, std::string_view ink) {
    const std::string notes = "DESCRIPTION:" + std::string(text) + "\r\n" + std::string(ink);
    return calendar(
        event("UID:a\r\nDTSTART:20260501T100000Z\r\nRRULE:FREQ=DAILY;COUNT=3\r\n" + notes) +
        event("UID:a\r\nRECURRENCE-ID:20260502T100000Z\r\nDTSTART:20260502T120000Z\r\n" + notes));
  };
  import_text(file("drawn", "X-ORVELLO-INK:aW5r\r\n"));
  for (const auto& [text, ink] : {std::pair{"drawn", "ink"}, {"other words", ""}}) {
    import_text(file(text, ""));
    const AppointmentRecord& record = *of_uid("a");
    ASSERT_EQ(record.exceptions.size(), 1u);
    EXPECT_EQ(record.fields.body_ink, ink) << text;
    EXPECT_EQ(record.exceptions[0].fields.body_ink, ink) << text;
    EXPECT_EQ(record.fields.body, to_utf16(text));
    EXPECT_EQ(exported().find("aW5r") != std::string::npos, *ink != 0);
  }
}

TEST_F(ImportTest, AllFilesOrNothing) {
  const std::string two = calendar(event("UID:1\r\nDTSTART:20260101T100000\r\n") +
                                   event("UID:2\r\nDTSTART:20260101T100000\r\n"));
  const auto gone =
      import_files({file_of(two), "/nowhere/at-all.ics"}, open_input_file, store, clock);
  EXPECT_FALSE(gone.done);
  EXPECT_EQ(gone.failure, "/nowhere/at-all.ics cannot be read: there is no such file or folder.");
  EXPECT_EQ(gone.counts, ImportCounts());
  EXPECT_EQ(count(), 0u);
  // Also when something is thrown through it.
  const auto fails_at = [](const std::string& name) -> std::unique_ptr<InputStream> {
    if (name == "bad") throw std::bad_alloc();
    return open_input_file(name);
  };
  EXPECT_THROW(import_files({file_of(two), "bad"}, fails_at, store, clock), std::bad_alloc);
  EXPECT_EQ(count(), 0u);
  EXPECT_TRUE(import_text(two).done);
}

// What the store could not answer is not "there is nothing": a part of the file would come in as if
// it were new, and the rest be lost.
TEST_F(ImportTest, NoFailureOfTheStoreIsTakenForAnAnswer) {
  const auto change = [](const char* day, const char* more) {
    return event(std::string("UID:a\r\nRECURRENCE-ID:202601") + day +
                 "T100000\r\nSUMMARY:changed\r\nDTSTART:202601" + day + "T120000\r\n" + more);
  };
  const std::string before =
      calendar(event("UID:a\r\nDTSTART:20260101T100000\r\nRRULE:FREQ=DAILY;COUNT=9\r\n") +
               event("UID:b#\r\nRECURRENCE-ID:20260105T100000\r\nDTSTART:20260105T110000\r\n") +
               event("UID:c\r\nDTSTART:20260101T100000\r\n") +
               event("UID:d\r\nSUMMARY:without a start\r\n"));
  const std::string text =
      calendar("BEGIN:VTODO\r\nUID:t\r\nEND:VTODO\r\n" +
               event("UID:b#\r\nDTSTART:20260101T100000\r\nRRULE:FREQ=DAILY;COUNT=9\r\n") +
               event("UID:d\r\nDTSTART;TZID=Europe/Berlin:20260101T100000\r\n")) +
      calendar(change("03", "") + change("04", "SEQUENCE:2\r\n")) +
      calendar("METHOD:CANCEL\r\n" + event("UID:c\r\nDTSTART:20260101T100000\r\n"));
  store.faults.reason = "the disk is full";
  for (int calls = 1, reached = 1; reached != 0; ++calls) {
    store.put_back({});
    ASSERT_TRUE(import_text(before).done);
    const std::string old = exported();
    store.faults.call = calls;
    const auto result = import_text(text);
    reached = store.faults.call == 0;
    store.faults.call = 0;
    EXPECT_EQ(result.done, !reached) << "call " << calls;
    EXPECT_EQ(result.failure, reached ? store.faults.reason : "") << "call " << calls;
    EXPECT_EQ(exported() == old, reached) << "call " << calls;
  }
  for (int calls = 1, reached = 1; reached != 0; ++calls) {
    store.faults.call = calls;
    const auto whole = export_calendar(store, {}, {}, clock);
    reached = store.faults.call == 0;
    EXPECT_EQ(static_cast<bool>(whole), !reached) << "call " << calls;
  }
}

TEST_F(ImportTest, Reminders) {
  struct Case {
    const char* alarm;
    int minutes;  // -1: none
  };
  const Case cases[] = {
      {"ACTION:AUDIO\r\nTRIGGER:-P1DT1H\r\n", 25 * 60},
      {"ACTION:DISPLAY\r\nTRIGGER:PT0S\r\n", 0},
      {"ACTION:DISPLAY\r\nTRIGGER:PT10M\r\n", -1},
      {"ACTION:DISPLAY\r\nTRIGGER;RELATED=END:-PT90M\r\n", 30},
      {"ACTION:DISPLAY\r\nTRIGGER;VALUE=DATE-TIME:20260101T094500Z\r\n", 15},
      {"ACTION:DISPLAY\r\nTRIGGER:soon\r\n", -1},
      {"ACTION:EMAIL\r\nTRIGGER:-PT5M\r\n", -1},
  };
  for (const Case& one : cases) {
    import_text(
        calendar(event("UID:r\r\nDTSTART:20260101T100000Z\r\nDTEND:20260101T110000Z\r\n"
                       "BEGIN:VALARM\r\n" +
                       std::string(one.alarm) + "END:VALARM\r\n")));
    const AppointmentFields& fields = of_uid("r")->fields;
    EXPECT_EQ(fields.reminder_set, one.minutes >= 0) << one.alarm;
    if (one.minutes >= 0) {
      EXPECT_EQ(fields.reminder_minutes, one.minutes) << one.alarm;
    }
  }
}

TEST_F(ImportTest, OlderForm) {
  const auto result = import_files({data_file("old.vcs")}, open_input_file, store, clock);
  EXPECT_EQ(counts_line(result.counts), "2 imported, 0 updated, 0 skipped");
  EXPECT_EQ(problems_of(result), "");
  const AppointmentRecord* first = of_uid("old1");
  ASSERT_TRUE(first);
  EXPECT_EQ(first->fields.subject, u"Gr\u00fc\u00dfe, Frau Meier; bis\nbald");
  EXPECT_EQ(first->fields.body, u"Caf\u00e9");
  EXPECT_EQ(first->fields.categories, u"PERSONAL,SPECIAL OCCASION");
  EXPECT_EQ(first->fields.reminder_minutes, 15);
  EXPECT_EQ(first->fields.busy_status, BusyStatus::free);
  EXPECT_EQ(first->recipients.at(0).address, u"ann@sample.org");
  ASSERT_TRUE(first->pattern);
  EXPECT_EQ(first->pattern->occurrences, 10);
  EXPECT_EQ(first->pattern->day_of_week_mask, 6);
  const AppointmentRecord* second = of_uid("old2");
  ASSERT_TRUE(second && second->pattern);
  EXPECT_EQ(second->end, at(2026, 3, 16));
  EXPECT_EQ(second->pattern->day_of_month, 15);
  // The last day that the rule itself names.
  EXPECT_EQ(second->pattern->pattern_end_date, to_calendar_date(day_of(2026, 12, 15)));
  EXPECT_EQ(second->exceptions.size(), 2u);
}

}  // namespace
}  // namespace orvello
