// Series that were divided by hand, out to a file and back.
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

class DivisionTest : public ExchangeTest {
 protected:
  static std::string part_of(const char* id, const char* start, const char* more) {
    return event(std::string("UID:s\r\nRECURRENCE-ID") + (id[0] == ';' ? "" : ":") + id +
                 "\r\nDTSTART:" + start + "\r\nDURATION:PT1H\r\n" + more);
  }
  // Divides the series of that UID at its occurrence on that day of January; the new UID.
  std::string divide(std::string_view uid, int day) {
    const auto app = store.create_application(false);
    EXPECT_TRUE(app->logon(nullptr));
    const auto item = app->item_from_oid(of_uid(uid)->oid);
    OccurrenceError error;
    const auto rest = item->pattern()->following(to_calendar_date(day_of(2026, 1, day)), error);
    EXPECT_TRUE(rest && rest->save());
    return (*store.load(rest->oid()))->uid;
  }
  void expect_same_after_export(const char* what) {
    SCOPED_TRACE(what);
    const std::string rows = shown(), out = exported();
    const auto before = store.contents();
    store.put_back({});
    EXPECT_EQ(problems_of(import_text(out)), "");
    EXPECT_EQ(shown(), rows) << out;
    EXPECT_EQ(exported(), out);
    store.put_back(before);
  }
};

const char* const kSeriesWords =
    "URL:http://x.org/\r\nX-ROOM:7\r\nATTACH:http://x.org/plan.pdf\r\nORGANIZER:mailto:o@x.org\r\n"
    "ATTENDEE;ROLE=CHAIR;PARTSTAT=ACCEPTED:mailto:a@x.org\r\n";

TEST_F(DivisionTest, BothHalvesSayWhatTheSeriesSaid) {
  for (const char* rule :
       {"RRULE:FREQ=DAILY;COUNT=9\r\n", "RRULE:FREQ=DAILY;COUNT=9\r\nRDATE:20260120T090000\r\n"}) {
    store.put_back({});
    import_text(calendar(
        event(std::string("UID:s\r\nDTSTART:20260105T090000\r\nDTEND:20260105T100000\r\n"
                          "SUMMARY:All\r\nEXDATE:20260106T090000,20260110T090000\r\n") +
              rule + kSeriesWords) +
        part_of("20260107T090000", "20260107T150000", "SUMMARY:Early\r\nX-EARLY:1\r\n") +
        part_of("20260111T090000", "20260111T150000", "SUMMARY:Late\r\nX-LATE:1\r\n") +
        part_of("20260112T090000", "20260112T090000", "STATUS:CANCELLED\r\nX-GONE:1\r\n")));
    const std::string rows = shown();
    const std::string uid = divide("s", 9);
    EXPECT_EQ(shown(), rows);
    const std::string out = exported();
    const std::string half = out.substr(out.find("BEGIN:VEVENT\r\nUID:" + uid));
    for (const char* line : {"URL:http://x.org/", "X-ROOM:7", "ATTACH:http://x.org/plan.pdf",
                             "ATTENDEE;ROLE=CHAIR;PARTSTAT=ACCEPTED:mailto:a@x.org",
                             "DTSTART:20260109T090000", "X-LATE:1", "X-GONE:1"})
      EXPECT_NE(half.find(std::string(line) + "\r\n"), std::string::npos) << line;
    EXPECT_EQ(half.find("UID:s\r\n"), std::string::npos) << half;
    expect_same_after_export(rule);
  }
}

// Of a series that a file changed from one occurrence on, too, whichever half is divided or
// changed.
TEST_F(DivisionTest, PartsOfAFileGoOutTogetherOrEachByItself) {
  const auto start_over = [&] {
    store.put_back({});
    import_text(calendar(
        event(std::string("UID:s\r\nDTSTART:20260105T090000\r\nDTEND:20260105T100000\r\n"
                          "SUMMARY:All\r\nRRULE:FREQ=DAILY;COUNT=20\r\n") +
              kSeriesWords) +
        part_of(";RANGE=THISANDFUTURE:20260110T090000", "20260110T110000", "SUMMARY:Second\r\n") +
        part_of(";RANGE=THISANDFUTURE:20260115T090000", "20260115T120000", "SUMMARY:Third\r\n")));
    ASSERT_EQ(count(), 3u);
  };
  start_over();
  expect_same_after_export("as it came");
  const std::string first = "s", second = "s#20260110T090000", third = "s#20260115T090000";
  for (const auto& [uid, day] : {std::pair(first, 7), {second, 12}, {third, 17}}) {
    start_over();
    const std::string rows = shown();
    divide(uid, day);
    EXPECT_EQ(shown(), rows);
    expect_same_after_export(uid.c_str());
  }
  for (const std::string& uid : {first, second, third}) {
    start_over();
    store.erase(of_uid(uid)->oid);
    expect_same_after_export(("without " + uid).c_str());
    start_over();
    change_of(uid, [](AppointmentRecord& record) { record.start += 1800, record.end += 1800; });
    expect_same_after_export(("half an hour later: " + uid).c_str());
    start_over();
    change_of(uid, [](AppointmentRecord& record) { record.pattern->interval = 2; });
    expect_same_after_export(("every second: " + uid).c_str());
  }
  // A series that was divided is not taken for what the file had in parts.
  start_over();
  const std::string half = divide(first, 7);
  import_text(calendar(event("UID:" + half + "\r\nDTSTART:20260107T090000\r\nSUMMARY:One\r\n")));
  EXPECT_TRUE(of_uid(second) && of_uid(third));
}

}  // namespace
}  // namespace orvello
