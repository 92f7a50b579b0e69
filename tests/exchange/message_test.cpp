// What calendars send each other: METHOD, SEQUENCE and STATUS.
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

class MessageTest : public ExchangeTest {
 protected:
  static std::string message(const std::string& method, const std::string& lines) {
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Sample//EN\r\n" +
           (method.empty() ? "" : "METHOD:" + method + "\r\n") + "BEGIN:VEVENT\r\nUID:m\r\n" +
           lines + "END:VEVENT\r\nEND:VCALENDAR\r\n";
  }
  static std::string meeting(int sequence, const char* stamp, const char* start,
                             const char* rule = "") {
    return message("REQUEST", "SEQUENCE:" + std::to_string(sequence) + "\r\nDTSTAMP:" + stamp +
                                  "\r\nDTSTART:" + start +
                                  "\r\nDURATION:PT1H\r\nSUMMARY:Plan\r\nORGANIZER:mailto:o@x.org"
                                  "\r\nATTENDEE;CN=Ann;PARTSTAT=NEEDS-ACTION;X-A=\"1;2\":"
                                  "mailto:ann@x.org\r\nATTENDEE:mailto:bob@x.org\r\n" +
                                  rule);
  }
  std::string told(const std::string& text) { return problems_of(import_text(text)); }
  LocalSeconds start() { return of_uid("m") ? of_uid("m")->start : LocalSeconds(); }
};

constexpr const char* kStamp = "20260101T000000Z";

TEST_F(MessageTest, RequestsMoveAMeetingForwardOnly) {
  import_text(meeting(1, "20260102T000000Z", "20260105T090000Z"));
  EXPECT_EQ(told(meeting(0, "20260103T000000Z", "20260105T080000Z")),
            "5: \"Plan\" is older than what the calendar has; left out\n");
  EXPECT_EQ(told(meeting(1, kStamp, "20260105T070000Z")),
            "5: \"Plan\" is older than what the calendar has; left out\n");
  EXPECT_EQ(start(), at(2026, 1, 5, 9));
  EXPECT_EQ(told(meeting(1, "20260102T000000Z", "20260105T090000Z")), "") << "the same again";
  EXPECT_EQ(told(meeting(1, "20260103T000000Z", "20260105T100000Z")), "");
  EXPECT_EQ(start(), at(2026, 1, 5, 10));
  EXPECT_EQ(told(meeting(2, kStamp, "20260105T110000Z")), "");
  EXPECT_EQ(start(), at(2026, 1, 5, 11));
  EXPECT_EQ(told(message("CANCEL", "SEQUENCE:1\r\nDTSTAMP:20260104T000000Z\r\nSUMMARY:Plan\r\n")),
            "5: \"Plan\" is older than what the calendar has; left out\n");
  EXPECT_EQ(start(), at(2026, 1, 5, 11));
}

TEST_F(MessageTest, AReplyChangesAnAnswerOnly) {
  const auto reply = [](const char* who, const char* more = "") {
    return message("REPLY", std::string("DTSTAMP:20260105T000000Z\r\nATTENDEE;PARTSTAT=ACCEPTED:") +
                                who + "\r\n" + more);
  };
  EXPECT_EQ(told(reply("mailto:ann@x.org")),
            "5: event is answered, but the calendar does not have it; left out\n");
  EXPECT_EQ(exported().find("METHOD"), std::string::npos) << "a message leaves no calendar";
  const std::string request = meeting(0, kStamp, "20260105T090000Z", "RRULE:FREQ=DAILY\r\n");
  import_text(request);
  const std::string before = exported();
  EXPECT_EQ(told(reply("MAILTO:Ann@X.org")), "5: event is answered by Ann@X.org: accepted\n");
  const std::string answered = "ATTENDEE;PARTSTAT=ACCEPTED;CN=Ann;X-A=\"1;2\":mailto:ann@x.org\n";
  EXPECT_EQ(missing(exported(), before), answered);
  EXPECT_EQ(missing(before, exported()),
            "ATTENDEE;CN=Ann;PARTSTAT=NEEDS-ACTION;X-A=\"1;2\":mailto:ann@x.org\n");
  EXPECT_NE(told(reply("mailto:eve@x.org")).find("who is not among its people; left out"),
            std::string::npos);
  // To one occurrence: the others keep their answers.
  EXPECT_EQ(told(reply("mailto:bob@x.org", "RECURRENCE-ID:20260107T090000Z\r\n")),
            "5: event is answered by bob@x.org: accepted\n");
  const AppointmentRecord& record = *of_uid("m");
  ASSERT_EQ(record.exceptions.size(), 1u);
  EXPECT_EQ(record.exceptions[0].start, at(2026, 1, 7, 9));
  const std::string text = exported();
  EXPECT_NE(text.find("ATTENDEE:mailto:bob@x.org"), std::string::npos);
  EXPECT_NE(text.find("ATTENDEE;PARTSTAT=ACCEPTED:mailto:bob@x.org"), std::string::npos);
  EXPECT_NE(text.find("RECURRENCE-ID:20260107T090000Z"), std::string::npos);
  // To an appointment of our own, which has no text yet.
  AppointmentRecord own;
  own.uid = "m";
  own.oid = of_uid("m")->oid;
  own.start = at(2026, 5, 4, 9);
  own.end = at(2026, 5, 4, 10);
  own.recipients = {{u"Ann", u"ann@x.org"}};
  store.put(own);
  import_text(reply("mailto:ann@x.org"));
  EXPECT_NE(exported().find("ATTENDEE;PARTSTAT=ACCEPTED;CN=Ann:mailto:ann@x.org"),
            std::string::npos);
}

TEST_F(MessageTest, WhatIsCancelledIsKeptOutOfSight) {
  const std::string cancel =
      message("CANCEL", "SEQUENCE:1\r\nDTSTAMP:20260106T000000Z\r\nSUMMARY:Plan\r\n");
  EXPECT_EQ(told(cancel),
            "5: \"Plan\" is cancelled, but the calendar does not have it; left out\n");
  import_text(meeting(0, kStamp, "20260105T090000Z"));
  change_of("m", [](auto& record) { record.fields.body = u"My notes"; });
  EXPECT_EQ(told(cancel), "5: \"Plan\" is cancelled; kept, but no longer shown\n");
  EXPECT_EQ(count(), 0u);
  for (int round = 0; round < 2; ++round) {
    const std::string text = exported();
    for (const char* line : {"STATUS:CANCELLED", "SEQUENCE:1", "DESCRIPTION:My notes",
                             "ATTENDEE:mailto:bob@x.org", "DTSTART:20260105T090000Z"})
      EXPECT_NE(text.find(line), std::string::npos) << line;
    store.put_back({});
    EXPECT_EQ(told(text), "5: \"Plan\" is cancelled; kept, but not shown\n");
    EXPECT_EQ(count(), 0u);
  }
  EXPECT_EQ(told(cancel), "5: \"Plan\" is cancelled already\n");
  EXPECT_NE(told(meeting(0, kStamp, "20260105T090000Z")).find("older"), std::string::npos);
  EXPECT_EQ(count(), 0u);
  // It takes place after all.
  EXPECT_EQ(told(meeting(2, "20260107T000000Z", "20260105T090000Z")), "");
  EXPECT_TRUE(of_uid("m"));
  EXPECT_EQ(exported().find("CANCELLED"), std::string::npos);
  // Without a METHOD the STATUS says it.
  EXPECT_EQ(told(message("", "SEQUENCE:3\r\nSTATUS:CANCELLED\r\nDTSTART:20260105T090000Z\r\n")),
            "4: event is cancelled; kept, but not shown\n");
  EXPECT_FALSE(of_uid("m"));
}

TEST_F(MessageTest, OneOccurrenceIsCancelledOrTheRest) {
  const auto cancel = [](const char* id) {
    return message("CANCEL", std::string("DTSTAMP:20260106T000000Z\r\nSUMMARY:Plan\r\n") + id);
  };
  import_text(meeting(0, kStamp, "20260105T090000Z", "RRULE:FREQ=DAILY\r\n"));
  EXPECT_EQ(told(cancel("RECURRENCE-ID:20260107T090000Z\r\n")),
            "5: \"Plan\" is cancelled on 20260107\n");
  ASSERT_EQ(of_uid("m")->exceptions.size(), 1u);
  EXPECT_TRUE(of_uid("m")->exceptions[0].deleted);
  const std::string text = exported();
  EXPECT_NE(text.find("STATUS:CANCELLED"), std::string::npos);
  store.put_back({});
  import_text(text);
  ASSERT_EQ(of_uid("m")->exceptions.size(), 1u) << text;
  EXPECT_TRUE(of_uid("m")->exceptions[0].deleted);
  EXPECT_EQ(exported(), text);
  EXPECT_EQ(told(cancel("RECURRENCE-ID;RANGE=THISANDFUTURE:20260110T090000Z\r\n")),
            "5: \"Plan\" is cancelled from 20260110 on\n");
  EXPECT_EQ(of_uid("m")->pattern->pattern_end_date, to_calendar_date(day_of(2026, 1, 9)));
  // Its cancelled occurrence may come before the series.
  store.put_back({});
  const std::string early = message(
      "", "RECURRENCE-ID:20260107T090000Z\r\nDTSTART:20260107T090000Z\r\nSTATUS:CANCELLED\r\n");
  EXPECT_EQ(told(early), "4: event is cancelled; kept, but not shown\n");
  EXPECT_EQ(count(), 0u);
  import_text(meeting(0, kStamp, "20260105T090000Z", "RRULE:FREQ=DAILY\r\n"));
  ASSERT_EQ(of_uid("m")->exceptions.size(), 1u);
  EXPECT_TRUE(of_uid("m")->exceptions[0].deleted);
}

TEST_F(MessageTest, AdditionsAndWhatChangesNothing) {
  import_text(meeting(0, kStamp, "20260105T090000Z", "RRULE:FREQ=DAILY;COUNT=2\r\n"));
  const std::string before = exported();
  for (const char* method : {"COUNTER", "DECLINECOUNTER", "REFRESH"})
    EXPECT_EQ(
        told(message(method, "DTSTART:20260105T130000Z\r\n")),
        std::string("5: event comes as ") + method + ", which changes nothing here; left out\n");
  EXPECT_EQ(exported(), before);
  EXPECT_EQ(told(message("ADD", "SEQUENCE:1\r\nDTSTART:20260109T120000Z\r\nSUMMARY:More\r\n")),
            "5: \"More\" has one more date, 20260109\n");
  const std::string text = exported();
  EXPECT_NE(text.find("RDATE:20260109T120000Z"), std::string::npos);
  EXPECT_NE(text.find("RECURRENCE-ID:20260109T120000Z"), std::string::npos);
  store.put_back({});
  import_text(text);
  ASSERT_EQ(of_uid("m")->exceptions.size(), 1u);
  EXPECT_EQ(of_uid("m")->exceptions[0].fields.subject, u"More");
}

// What goes out as one's own collection must not read as somebody's message.
TEST_F(MessageTest, OwnItemsStandInNoMessage) {
  for (const char* header : {"METHOD:REQUEST\r\n", "method:publish\r\n", ""}) {
    store.put_back({});
    AppointmentRecord own;
    own.uid = "own";
    own.start = at(2026, 5, 4, 9);
    own.end = at(2026, 5, 4, 10);
    store.put(own);
    import_text("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Sample//EN\r\n" + std::string(header) +
                event("UID:a\r\nDTSTART:20260101T100000\r\n") + "END:VCALENDAR\r\n");
    const std::string text = exported();
    const std::size_t item = text.find("UID:own");
    ASSERT_NE(item, std::string::npos);
    const std::size_t begin = text.rfind("BEGIN:VCALENDAR", item);
    const std::string around = text.substr(begin, text.find("END:VCALENDAR", item) - begin);
    EXPECT_EQ(around.find("UID:a\r\n") == std::string::npos, *header != '\0') << header;
  }
}

}  // namespace
}  // namespace orvello
