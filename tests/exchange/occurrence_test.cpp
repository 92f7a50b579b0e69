// Changed occurrences: with a series, without one, of all that follow; and several events of one
// UID.
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

class OccurrenceTest : public ExchangeTest {
 protected:
  static std::string change(const char* id, const char* start, const char* more = "") {
    return event(std::string("UID:s\r\nRECURRENCE-ID") + (id[0] == ';' ? "" : ":") + id +
                 "\r\nDTSTART:" + start + "\r\nDURATION:PT1H\r\nSUMMARY:Changed\r\n" + more);
  }
  static std::string series(const char* rule) {
    return event("UID:s\r\nDTSTART:20260105T090000\r\nDTEND:20260105T100000\r\nSUMMARY:All\r\n" +
                 std::string(rule));
  }
  void expect_round_trip(const std::string& text, const std::string& rows) {
    EXPECT_EQ(shown(), rows);
    const std::string out = exported();
    EXPECT_EQ(missing(text, out), "");
    EXPECT_EQ(missing(out, text), "");
    import_text(text);
    EXPECT_EQ(exported(), out) << "imported once more";
    store.put_back({});
    import_text(out);
    EXPECT_EQ(shown(), rows);
    EXPECT_EQ(exported(), out);
  }
};

TEST_F(OccurrenceTest, ChangesOfWhatIsNoSeriesAreShown) {
  const std::string changes =
      change("20260106T090000", "20260106T170000") + change("20260105T090000", "20260105T120000");
  for (const char* rule : {"", "RRULE:FREQ=SOMETIMES\r\n"}) {
    const std::string rows = "0105T12 Changed, 0106T17 Changed";
    store.put_back({});
    import_text(calendar(series(rule) + changes));
    expect_round_trip(calendar(series(rule) + changes), rows);
    // From two files, in both orders.
    for (const bool first : {true, false}) {
      store.put_back({});
      import_text(calendar(first ? changes : series(rule)));
      import_text(calendar(first ? series(rule) : changes));
      EXPECT_EQ(shown(), rows) << first;
    }
  }
  // Without a series they stand by themselves until it comes.
  store.put_back({});
  import_text(calendar(changes));
  expect_round_trip(calendar(changes), "0105T12 Changed, 0106T17 Changed");
  import_text(calendar(series("RRULE:FREQ=DAILY;COUNT=3\r\n")));
  EXPECT_EQ(shown(), "0105T12 Changed, 0106T17 Changed, 0107T09 All");
}

TEST_F(OccurrenceTest, SeveralEventsOfOneUid) {
  const std::string one =
      series("RRULE:FREQ=DAILY;COUNT=3\r\n") + change("20260106T090000", "20260106T170000");
  const std::string other = event("UID:s\r\nDTSTART:20260109T090000\r\nSUMMARY:Other\r\n");
  // Different events: each is shown, and is itself the next time.
  for (const std::string& text : {calendar(one) + calendar(other), calendar(one + other)}) {
    store.put_back({});
    const auto result = import_text(text);
    EXPECT_EQ(problems_of(result), "");
    EXPECT_EQ(counts_line(result.counts), "2 imported, 0 updated, 0 skipped");
    expect_round_trip(text == calendar(one + other) ? text : calendar(one + other),
                      "0105T09 All, 0106T17 Changed, 0107T09 All, 0109T09 Other");
  }
  // The same series twice, each with a change: one series with both.
  store.put_back({});
  const auto again =
      import_text(calendar(one) + calendar(series("RRULE:FREQ=DAILY;COUNT=3\r\n") +
                                           change("20260107T090000", "20260107T180000")));
  EXPECT_EQ(problems_of(again), "4: an event of the same UID follows; this one is left out\n");
  EXPECT_EQ(shown(), "0105T09 All, 0106T17 Changed, 0107T18 Changed");
}

TEST_F(OccurrenceTest, AChangeOfAllThatFollows) {
  struct Case {
    const char* rule;
    const char* id;
    const char* start;
    const char* rows;
  };
  const Case cases[] = {
      {"RRULE:FREQ=WEEKLY;COUNT=5\r\n", "20260119T090000", "20260119T150000",
       "0105T09 All, 0112T09 All, 0119T15 Changed, 0126T15 Changed, 0202T15 Changed"},
      {"RRULE:FREQ=WEEKLY;BYDAY=MO,WE;UNTIL=20260121T235959\r\n", "20260112T090000",
       "20260113T090000",
       "0105T09 All, 0107T09 All, 0113T09 Changed, 0115T09 Changed, 0120T09 Changed, "
       "0122T09 Changed"},
      // No rule says these, moved: they are listed.
      {"RRULE:FREQ=MONTHLY;BYDAY=1MO,-1FR;COUNT=4\r\n", "20260130T090000", "20260131T080000",
       "0105T09 All, 0131T08 Changed, 0203T08 Changed, 0228T08 Changed"},
      {"RRULE:FREQ=DAILY;COUNT=3\r\n", "20260105T090000", "20260105T100000",
       "0105T10 Changed, 0106T10 Changed, 0107T10 Changed"},
      {"RRULE:FREQ=DAILY;COUNT=2\r\nRDATE:20260201T120000\r\nEXDATE:20260106T090000\r\n",
       "20260201T120000", "20260201T130000", "0105T09 All, 0201T13 Changed"},
  };
  for (const Case& one : cases) {
    store.put_back({});
    const std::string text =
        calendar(series(one.rule) +
                 change((";RANGE=THISANDFUTURE:" + std::string(one.id)).c_str(), one.start));
    EXPECT_EQ(problems_of(import_text(text)), "") << one.rule;
    expect_round_trip(text, one.rows);
    // In two files, the change first or last.
    for (const bool first : {true, false}) {
      store.put_back({});
      const std::string all = calendar(series(one.rule));
      const std::string moved =
          calendar(change((";RANGE=THISANDFUTURE:" + std::string(one.id)).c_str(), one.start));
      import_text(first ? moved : all);
      import_text(first ? all : moved);
      EXPECT_EQ(shown(), one.rows) << one.rule << first;
      EXPECT_EQ(missing(text, exported()), "") << one.rule << first;
    }
  }
}

TEST_F(OccurrenceTest, ChangesBehindAChangeOfAllThatFollows) {
  const std::string later = change("20260110T090000", "20260110T200000", "X-LATER:1\r\n");
  const std::string text =
      calendar(series("RRULE:FREQ=DAILY;COUNT=6\r\nEXDATE:20260109T090000\r\n") +
               change(";RANGE=THISANDFUTURE:20260107T090000", "20260107T110000"));
  import_text(text);
  import_text(calendar(later));
  const std::string rows =
      "0105T09 All, 0106T09 All, 0107T11 Changed, 0108T11 Changed, 0110T20 Changed";
  EXPECT_EQ(shown(), rows);
  const std::string out = exported();
  EXPECT_EQ(missing(text, out) + missing(calendar(later), out), "");
  store.put_back({});
  import_text(out);
  EXPECT_EQ(shown(), rows);
  EXPECT_EQ(exported(), out);
  // An occurrence deleted by hand there is named as the file would name it.
  AppointmentException gone;
  gone.original_start = at(2026, 1, 8, 11);
  gone.deleted = true;
  change_of("s#20260107T090000",
            [&](auto& part) { part.exceptions.insert(part.exceptions.begin(), gone); });
  const std::string less = exported();
  EXPECT_NE(less.find("RECURRENCE-ID:20260108T090000\r\n"), std::string::npos);
  store.put_back({});
  import_text(less);
  EXPECT_EQ(shown(), "0105T09 All, 0106T09 All, 0107T11 Changed, 0110T20 Changed");
  // A part that is gone does not come back; a series without the first part is one of its own.
  const MemoryStore::Contents both = store.contents();
  store.erase(of_uid("s#20260107T090000")->oid);
  const std::string first = exported();
  store.put_back({});
  import_text(first);
  EXPECT_EQ(shown(), "0105T09 All, 0106T09 All");
  store.put_back(both);
  store.erase(of_uid("s")->oid);
  const std::string rest = exported();
  store.put_back({});
  import_text(rest);
  EXPECT_EQ(shown(), "0107T11 Changed, 0110T20 Changed");
  // Without the change in a newer version there is one series again.
  store.put_back(both);
  import_text(calendar(series("RRULE:FREQ=DAILY;COUNT=2\r\n")));
  EXPECT_EQ(shown(), "0105T09 All, 0106T09 All");
}

// However many calendars a file has, a series that they change is read and written once.
TEST_F(OccurrenceTest, ManyCalendarsWriteASeriesOnce) {
  import_text(calendar(series("RRULE:FREQ=DAILY\r\n")));
  std::string text;
  constexpr int kCalendars = 20;
  for (int i = 0; i < kCalendars; ++i) {
    const std::string day = "202602" + std::to_string(i + 10 - i % 2) + "T";  // each second twice
    text += calendar(change((day + "090000").c_str(), (day + "120000").c_str()));
  }
  const int before = store.writes;
  import_text(text);
  EXPECT_EQ(store.writes - before, kCalendars + 3);  // their own properties, begin and commit
  EXPECT_EQ(of_uid("s")->exceptions.size(), kCalendars / 2 + 0u);
}

TEST_F(OccurrenceTest, AnOccurrenceChangedByHandKeepsWhatItsSeriesSaid) {
  import_text(calendar(
      event("UID:s\r\nDTSTART:20260105T090000Z\r\nDTEND:20260105T100000Z\r\nSUMMARY:All\r\n"
            "RRULE:FREQ=DAILY\r\nEXDATE:20260108T090000Z\r\nURL:http://x.org/\r\nX-ROOM:7\r\n"
            "ORGANIZER:mailto:o@x.org\r\nATTENDEE;ROLE=CHAIR;PARTSTAT=ACCEPTED:mailto:a@x.org\r\n"
            "BEGIN:VALARM\r\nACTION:DISPLAY\r\nTRIGGER:-PT5M\r\nX-TONE:1\r\nEND:VALARM\r\n")));
  AppointmentRecord record = *of_uid("s");
  AppointmentException moved;
  moved.original_start = at(2026, 1, 7, 9);
  moved.fields = record.fields;
  moved.fields.subject = u"Moved";
  moved.zone = "UTC";
  moved.start = at(2026, 1, 7, 15);
  moved.end = at(2026, 1, 7, 16);
  moved.recipients = record.recipients;
  record.exceptions.insert(record.exceptions.begin(), moved);
  store.put(record);
  const std::string text = exported();
  const std::size_t begin = text.rfind("BEGIN:VEVENT");
  const std::string occurrence = text.substr(begin);
  for (const char* line :
       {"UID:s", "RECURRENCE-ID:20260107T090000Z", "DTSTART:20260107T150000Z", "SUMMARY:Moved",
        "URL:http://x.org/", "X-ROOM:7", "ORGANIZER:mailto:o@x.org",
        "ATTENDEE;ROLE=CHAIR;PARTSTAT=ACCEPTED:mailto:a@x.org", "TRIGGER:-PT5M", "X-TONE:1"})
    EXPECT_NE(occurrence.find(std::string(line) + "\r\n"), std::string::npos) << line;
  for (const char* name : {"RRULE", "EXDATE"})
    EXPECT_EQ(occurrence.find(name), std::string::npos) << name;
}

}  // namespace
}  // namespace orvello
