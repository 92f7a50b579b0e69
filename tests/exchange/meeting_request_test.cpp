// Meetings that are sent, and the answers to them.
#include "exchange/meeting_request.h"

#include "calendar/rule_text.h"
#include "exchange/calendar_keys.h"
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

class MeetingRequestTest : public ExchangeTest {
 protected:
  MeetingRequestTest() { clock.set_zone("Europe/Berlin"); }

  // Weekly on Mondays at nine, not on the 18th, later on the 25th.
  AppointmentRecord weekly() {
    AppointmentRecord record;
    record.uid = "m";
    record.fields.subject = u"Plan";
    record.fields.reminder_set = true;
    record.fields.body_ink = "ink";
    record.start = at(2026, 5, 4, 9);
    record.end = at(2026, 5, 4, 10);
    record.rules = "RRULE:FREQ=WEEKLY;COUNT=9";
    record.recipients = {
        {u"Ann", u"ann@x.org"}, {u"Berg, Bob", u"bob@x.org"}, {u"Eve", u""}, {u"I", u"ME@x.org"}};
    AppointmentException deleted, moved;
    deleted.original_start = at(2026, 5, 18, 9);
    deleted.deleted = true;
    moved.original_start = at(2026, 5, 25, 9);
    moved.fields = record.fields;
    moved.start = at(2026, 5, 25, 11);
    moved.end = at(2026, 5, 25, 12);
    record.exceptions = {deleted, moved};
    return record;
  }
  AppointmentRecord stored() {
    const auto oid = store.oid_of_uid("m");
    return **store.load(**oid);
  }
  // As a host sends it.
  std::string send() {
    const auto request = meeting_request(store, stored(), me, clock);
    EXPECT_TRUE(request) << request.reason();
    if (!request) return {};
    EXPECT_TRUE(store.put_foreign(request->sent));
    return request->calendar;
  }
  static std::string sequence_in(const std::string& text) {
    const std::size_t place = text.find("SEQUENCE:");
    return place == text.npos ? "none" : text.substr(place + 9, text.find('\r', place) - place - 9);
  }
  std::string reply(const std::string& lines) {
    return problems_of(import_text("BEGIN:VCALENDAR\r\nMETHOD:REPLY\r\nBEGIN:VEVENT\r\nUID:m\r\n" +
                                   lines + "END:VEVENT\r\nEND:VCALENDAR\r\n"));
  }

  const StoreRecipient me{u"Me, the boss", u"me@x.org"};
};

TEST_F(MeetingRequestTest, SaysAllOfASeries) {
  ASSERT_NE(store.put(weekly()), 0) << store.problem();
  const auto request = meeting_request(store, stored(), me, clock);
  ASSERT_TRUE(request) << request.reason();
  ASSERT_EQ(request->attendees.size(), 2u) << "who has an address, and not oneself";
  EXPECT_EQ(request->attendees[1].name, u"Berg, Bob");
  const std::string text = request->calendar;
  const std::size_t events = text.find("BEGIN:VEVENT");
  const std::string zone = text.substr(0, events);
  EXPECT_TRUE(zone.starts_with("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:" +
                               std::string(kOwnProduct) + "\r\nMETHOD:REQUEST\r\nBEGIN:VTIMEZONE"))
      << zone;
  EXPECT_NE(zone.find("TZID:Europe/Berlin\r\n"), std::string::npos) << zone;
  const std::string people =
      "ATTENDEE;CN=Ann;ROLE=REQ-PARTICIPANT;PARTSTAT=NEEDS-ACTION;RSVP=TRUE:mailto:ann@x.org\r\n"
      "ATTENDEE;CN=\"Berg, Bob\";ROLE=REQ-PARTICIPANT;PARTSTAT=NEEDS-ACTION;RSVP=TRUE:"
      "mailto:bob@x.org\r\n"
      "ATTENDEE;CN=I;ROLE=REQ-PARTICIPANT;PARTSTAT=ACCEPTED:mailto:ME@x.org\r\n";
  const std::string head =
      "BEGIN:VEVENT\r\nDTSTAMP:" + moment_text(clock.utc_now()) +
      "\r\nSEQUENCE:0\r\nORGANIZER;CN=\"Me, the boss\":mailto:me@x.org\r\nUID:m\r\n";
  const std::string own = ";TZID=Europe/Berlin:202605";
  const auto lines = [&](const std::string& folded_text) { return unfolded_lines(folded_text); };
  EXPECT_EQ(lines(text.substr(events)),
            lines(head + "DTSTART" + own + "04T090000\r\nDTEND" + own + "04T100000\r\n" +
                  "SUMMARY:Plan\r\nRRULE:FREQ=WEEKLY;COUNT=9\r\nEXDATE" + own + "18T090000\r\n" +
                  people + "END:VEVENT\r\n" + head + "RECURRENCE-ID" + own +
                  "25T090000\r\nDTSTART" + own + "25T110000\r\nDTEND" + own +
                  "25T120000\r\nSUMMARY:Plan\r\n" + people + "END:VEVENT\r\nEND:VCALENDAR\r\n"));
  // Where it is read, it is the same meeting.
  MemoryStore theirs{clock};
  const auto result = import_files({file_of(text)}, open_input_file, theirs, clock);
  EXPECT_EQ(counts_line(result.counts), "1 imported, 0 updated, 0 skipped");
  EXPECT_TRUE(result.problems.empty());
  const AppointmentRecord* read = of_uid("m", theirs);
  ASSERT_TRUE(read && read->exceptions.size() == 2u);
  EXPECT_EQ(read->exceptions[1].start, at(2026, 5, 25, 11));
  // A device that does not know where it is says single moments as they are everywhere.
  clock.set_zone(Zone("", {{LocalSeconds(), 7200, 7200, std::nullopt, {}}}));
  AppointmentRecord single = weekly();
  single.rules.clear();
  single.exceptions.clear();
  EXPECT_NE(meeting_request(store, single, me, clock)->calendar.find("DTSTART:20260504T070000Z"),
            std::string::npos);
  clock.zone_rules["Etc/UTC"] = "UTC0";
  clock.set_zone("Etc/UTC");
  const std::string everywhere = meeting_request(store, weekly(), me, clock)->calendar;
  EXPECT_NE(everywhere.find("EXDATE:20260518T090000Z"), std::string::npos) << everywhere;
  EXPECT_EQ(everywhere.find("VTIMEZONE"), std::string::npos) << everywhere;
}

TEST_F(MeetingRequestTest, TheSequenceRisesWithWhatWasAgreed) {
  ASSERT_NE(store.put(weekly()), 0) << store.problem();
  EXPECT_EQ(sequence_in(send()), "0");
  EXPECT_EQ(sequence_in(send()), "0") << "the same again";
  struct Step {
    const char* what;
    void (*change)(AppointmentRecord& record);
    const char* sequence;
  };
  const Step steps[] = {
      {"subject", [](auto& one) { one.fields.subject = u"Better plan"; }, "0"},
      {"place", [](auto& one) { one.fields.location = u"Here"; }, "1"},
      {"reminder", [](auto& one) { one.fields.reminder_minutes = 5; }, "1"},
      {"end", [](auto& one) { one.end = one.end + 1800; }, "2"},
      {"rule", [](auto& one) { one.rules = "RRULE:FREQ=WEEKLY;COUNT=12"; }, "3"},
      {"a date less", [](auto& one) { one.exceptions[1].deleted = true; }, "4"},
      {"who comes",
       [](auto& one) {
         one.recipients.push_back({u"", u"carl@x.org"});
       },
       "4"},
  };
  const AppointmentRecord before = stored();
  for (const Step& step : steps) {
    AppointmentRecord record = stored();
    step.change(record);
    ASSERT_NE(store.put(record), 0) << step.what;
    EXPECT_EQ(sequence_in(send()), step.sequence) << step.what;
    EXPECT_EQ(sequence_in(exported()), *step.sequence == '0' ? "none" : step.sequence) << step.what;
  }
  // What was undone is one more version to those who have the later one.
  ASSERT_NE(store.put(before), 0);
  EXPECT_EQ(sequence_in(exported()), "4");
  EXPECT_EQ(sequence_in(send()), "5");
  // Its own earlier request takes nothing back.
  const std::string request = send();
  AppointmentRecord moved = stored();
  moved.fields.location = u"There";
  store.put(moved);
  send();
  EXPECT_EQ(problems_of(import_text(request)).find("older") == std::string::npos, false);
  EXPECT_EQ(stored().fields.location, u"There");
}

TEST_F(MeetingRequestTest, AnswersAreKeptAndStaleOnesAreNot) {
  ASSERT_NE(store.put(weekly()), 0) << store.problem();
  send();
  AppointmentRecord record = stored();
  record.fields.location = u"Here";
  store.put(record);
  EXPECT_EQ(sequence_in(send()), "1");
  const std::string ann = "ATTENDEE;PARTSTAT=ACCEPTED;CN=\"Ann, A.\":MAILTO:Ann@X.org\r\n";
  EXPECT_EQ(reply("SEQUENCE:0\r\n" + ann),
            "3: event is answered as it was before it changed; left out\n");
  EXPECT_EQ(reply("SEQUENCE:1\r\nATTENDEE;PARTSTAT=ACCEPTED;SENT-BY=\"mailto:desk@x.org\":"
                  "mailto:ann@x.org\r\n"),
            "3: event is answered by ann@x.org: accepted\n");
  EXPECT_EQ(reply("SEQUENCE:1\r\n" + ann), "3: event is answered by Ann, A.: accepted\n");
  EXPECT_EQ(reply("ATTENDEE;PARTSTAT=OK^nATTACH:mailto:ann@x.org\r\n"),
            "3: event is answered by ann@x.org in no known word; left out\n");
  EXPECT_EQ(reply("RECURRENCE-ID;TZID=Europe/Berlin:20260505T090000\r\n" + ann),
            "3: event is answered for an occurrence that the calendar does not have; left out\n");
  EXPECT_EQ(reply("RECURRENCE-ID:20260511T070000Z\r\nATTENDEE;PARTSTAT=DECLINED:mailto:bob@x.org"
                  "\r\n"),
            "3: event is answered by bob@x.org: declined\n");
  // Who was added here later answers, and one sends somebody else.
  record = stored();
  record.recipients.push_back({u"Carl", u"carl@x.org"});
  store.put(record);
  EXPECT_EQ(reply("ATTENDEE;PARTSTAT=TENTATIVE:mailto:carl@x.org\r\n"),
            "3: event is answered by carl@x.org: tentative\n");
  EXPECT_EQ(reply("ATTENDEE;PARTSTAT=DELEGATED;DELEGATED-TO=\"mailto:dora@x.org\":"
                  "mailto:bob@x.org\r\nATTENDEE;PARTSTAT=ACCEPTED;DELEGATED-FROM="
                  "\"mailto:bob@x.org\":mailto:dora@x.org\r\n"),
            "3: event is answered by bob@x.org: delegated\n"
            "3: event is answered by dora@x.org: accepted\n");
  EXPECT_EQ(reply("ATTENDEE;PARTSTAT=ACCEPTED;DELEGATED-FROM=\"mailto:nobody@x.org\":"
                  "mailto:fay@x.org\r\n"),
            "3: event is answered by fay@x.org, who is not among its people; left out\n");
  EXPECT_EQ(stored().recipients.size(), 6u);
  const AppointmentRecord answered = stored();
  EXPECT_EQ(answered.start, at(2026, 5, 4, 9));
  EXPECT_EQ(answered.exceptions.size(), 3u) << "the answered occurrence has words of its own";
  const std::string text = send();
  EXPECT_EQ(sequence_in(text), "1") << "an answer changes nothing of the meeting";
  EXPECT_EQ(text.find("RECURRENCE-ID:"), std::string::npos) << "all of it is in one zone";
  const auto sent = unfolded_lines(text);
  const auto count = [&](const std::string& line) {
    return std::count(sent.begin(), sent.end(), line);
  };
  EXPECT_EQ(count("ATTENDEE;PARTSTAT=ACCEPTED;CN=Ann;ROLE=REQ-PARTICIPANT:mailto:ann@x.org"), 3);
  EXPECT_EQ(count("ATTENDEE;PARTSTAT=TENTATIVE;CN=Carl;ROLE=REQ-PARTICIPANT:mailto:carl@x.org"), 2);
  EXPECT_EQ(count("ATTENDEE;PARTSTAT=DELEGATED;DELEGATED-TO=\"mailto:dora@x.org\";"
                  "CN=\"Berg, Bob\";ROLE=REQ-PARTICIPANT:mailto:bob@x.org"),
            2);
  EXPECT_EQ(count("ATTENDEE;PARTSTAT=DECLINED;CN=\"Berg, Bob\";ROLE=REQ-PARTICIPANT:"
                  "mailto:bob@x.org"),
            1);
  EXPECT_EQ(count("ATTENDEE;PARTSTAT=ACCEPTED;DELEGATED-FROM=\"mailto:bob@x.org\";"
                  "ROLE=REQ-PARTICIPANT:mailto:dora@x.org"),
            2);
}

TEST_F(MeetingRequestTest, WhatCannotBeSentIsSaid) {
  AppointmentRecord record = weekly();
  record.recipients = {{u"Eve", u""}, {u"I", u"me@x.org"}, {u"X", u"no address"}};
  EXPECT_EQ(meeting_request(store, record, me, clock).reason(),
            "None of the attendees has an address that mail can be sent to.");
  import_text(
      "BEGIN:VCALENDAR\r\nMETHOD:REQUEST\r\nBEGIN:VEVENT\r\nUID:m\r\n"
      "DTSTART:20260504T090000Z\r\nORGANIZER:mailto:o@x.org\r\nSEQUENCE:4\r\n"
      "ATTENDEE:mailto:ann@x.org\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
  EXPECT_EQ(meeting_request(store, stored(), me, clock).reason(),
            "This is a meeting of o@x.org, who alone can send it.");
  // One's own, from another calendar: it goes on from where that was.
  AppointmentRecord own = stored();
  EXPECT_EQ(sequence_in(meeting_request(store, own, {u"", u"O@x.org"}, clock)->calendar), "4");
  own.end = own.end + 3600;
  EXPECT_EQ(sequence_in(meeting_request(store, own, {u"", u"O@x.org"}, clock)->calendar), "5");
  for (const TextView address : {u"a@x", u"o'neil+work@x.org", u"ü@x.org"})
    EXPECT_TRUE(is_mail_address(address));
  for (const TextView address : {u"", u"@", u"a@", u"@x", u"a b@x", u"a@x@y", u"<a@x>", u"a@x,b@y",
                                 u"-f@x", u"a@x\r\nBcc: b@y", u"\"a\"@x", u"mailto:a@x"})
    EXPECT_FALSE(is_mail_address(address)) << to_utf8(address);
}

}  // namespace
}  // namespace orvello
