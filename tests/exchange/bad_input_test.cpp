#include <random>
#include <sstream>

#include "exchange/charset.h"
#include "exchange/line_reader.h"
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

class BadInputTest : public ExchangeTest {
 protected:
  static std::string good(const std::string& uid) {
    return event("UID:" + uid + "\r\nDTSTART:20260101T100000\r\nDTEND:20260101T110000\r\n");
  }
};

// What has a start is shown, what has none is kept; either comes back as it was.
TEST_F(BadInputTest, OneLineForEachAndNothingIsLost) {
  struct Case {
    const char* lines;  // of the event between two good ones, from line 12 on
    const char* problem;
    bool shown = false;
    bool kept = true;
  };
  const Case cases[] = {
      {"SUMMARY:no start\r\n", "10: event without a start; not shown\n"},
      {"DTSTART:20260230T100000\r\n",
       "12: start \"20260230T100000\" is no date; event not shown\n"},
      {"DTSTART:20260101T250000\r\n",
       "12: start \"20260101T250000\" is no date; event not shown\n"},
      {"DTSTART:20260101T100000\r\nDTEND:20260101T090000\r\n",
       "13: end lies before the start; not used\n", true},
      {"DTSTART:20260101T100000\r\nDTEND:20261301T090000\r\n", "13: end is no date; not used\n",
       true},
      {"DTSTART:20260101T100000\r\nDURATION:-PT1H\r\n", "13: duration is negative; not used\n",
       true},
      {"DTSTART:20260101T100000\r\nDURATION:an hour\r\n", "13: duration cannot be read; not used\n",
       true},
      {"DTSTART:20260101T100000\r\nRECURRENCE-ID:yesterday\r\n",
       "13: RECURRENCE-ID is no date; shown as an appointment of its own\n", true},
      {"DTSTART:20260101T100000\r\nEND:VALARM\r\n", "10: VEVENT ends with END:VALARM; left out\n",
       false, false},
      {"DTSTART:20260101T100000\r\nBEGIN:VEVENT\r\n", nullptr, false, false},
  };
  for (const Case& one : cases) {
    store.put_back({});
    const std::string text = calendar(good("a") + event(one.lines) + good("b"));
    const auto result = import_text(text);
    EXPECT_TRUE(result.done);
    if (one.problem) {
      EXPECT_EQ(problems_of(result), one.problem);
    }
    EXPECT_EQ(result.counts.skipped >= 1, !one.shown) << one.lines;
    EXPECT_TRUE(of_uid("a") && of_uid("b")) << one.lines;
    EXPECT_EQ(count(), one.shown ? 3u : 2u) << one.lines;
    if (!one.kept) continue;
    const std::string first = exported();
    EXPECT_EQ(missing(text, first), "");
    import_text(text);
    EXPECT_EQ(exported(), first) << "once more";
  }
}

TEST_F(BadInputTest, FlawsThatCostNoEvent) {
  struct Case {
    const char* lines;
    const char* problem;
  };
  const Case cases[] = {
      {"RRULE:FREQ=SOMETIMES\r\n", "rule cannot be read"},
      {"RRULE:FREQ=DAILY;COUNT=3;UNTIL=20270101T000000\r\n",
       "rule is odd (COUNT with UNTIL: the earlier end counts); used for the rest of it"},
      {"RRULE:RSCALE=GREGORIAN;FREQ=DAILY;X-FOO=1;BYDAY=\r\n", "rule is odd (X-FOO=1, BYDAY=)"},
      {"RRULE:\r\n", "RRULE is empty; not used"},
      {"EXDATE:20260230T100000\r\n", "is no date; not used"},
      {"this is no property\r\n", "line is no property"},
      {"RRULE:FREQ=DAILY;BYMONTH=2;BYMONTHDAY=30\r\n", "rule names no day"},
      {"RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=29\r\n", nullptr},
      {"RRULE:FREQ=SECONDLY\r\n", nullptr},
  };
  for (const Case& one : cases) {
    store.put_back({});
    const auto result = import_text(
        calendar(event("UID:a\r\nDTSTART:20260101T100000\r\n" + std::string(one.lines))));
    EXPECT_EQ(counts_line(result.counts), "1 imported, 0 updated, 0 skipped") << one.lines;
    ASSERT_EQ(result.problems.size(), one.problem ? 1u : 0u) << one.lines;
    if (!one.problem) continue;
    EXPECT_NE(result.problems[0].text.find(one.problem), std::string::npos);
    EXPECT_EQ(result.problems[0].line, 8);
    // An unreadable rule is kept as it is.
    if (one.lines[0] == 'R') {
      EXPECT_NE(exported().find(one.lines), std::string::npos);
    }
  }
}

// What the editor reads of a rule that says no interval or no day: one that means what is shown.
TEST_F(BadInputTest, PatternsAreWholeWhateverTheRuleLacks) {
  struct Case {
    const char* rule;
    RecurrenceType type;
    int mask, day;
  };
  for (const Case& one :
       {Case{"FREQ=WEEKLY;INTERVAL=0", RecurrenceType::weekly, 2, 0},
        {"FREQ=WEEKLY;BYDAY=", RecurrenceType::weekly, 2, 0},
        {"INTERVAL=0;FREQ=DAILY", RecurrenceType::daily, 0, 0},
        {"FREQ=MONTHLY;INTERVAL=0;BYDAY=;BYMONTHDAY=", RecurrenceType::monthly, 0, 5}}) {
    store.put_back({});
    import_text(calendar(
        event("UID:a\r\nDTSTART:20260105T100000\r\nRRULE:" + std::string(one.rule) + "\r\n")));
    const auto session = store.create_application(false);
    const auto item = session->item_from_oid(of_uid("a")->oid);
    const auto fields = item->pattern()->fields();
    ASSERT_TRUE(fields && *fields) << one.rule;
    EXPECT_EQ((*fields)->type, one.type) << one.rule;
    EXPECT_EQ((*fields)->interval, 1) << one.rule;
    EXPECT_EQ((*fields)->day_of_week_mask, one.mask) << one.rule;
    EXPECT_EQ((*fields)->day_of_month, one.day) << one.rule;
    EXPECT_NE(exported().find(std::string("RRULE:") + one.rule), std::string::npos);
  }
}

TEST_F(BadInputTest, FilesCutOffAnywhere) {
  const std::string whole = content_of(data_file("series.ics"));
  for (std::size_t length = 0; length < whole.size(); length += 7) {
    store.put_back({});
    const auto result = import_text(std::string_view(whole).substr(0, length));
    EXPECT_TRUE(result.done);
    EXPECT_FALSE(result.problems.empty()) << length;
    exported();
  }
}

TEST_F(BadInputTest, NoCalendarAtAll) {
  for (const std::string& text : {std::string(), std::string("\n\n"),
                                  std::string("%PDF-1.4\nwhatever"), std::string(300, '\0')}) {
    const auto result = import_text(text);
    ASSERT_EQ(result.problems.size(), 1u);
    EXPECT_EQ(result.problems[0].text, "no calendar and no contact in this file");
    EXPECT_EQ(result.counts, ImportCounts());
  }
  EXPECT_EQ(problem_line({"a.ics", 1, "no calendar and no contact in this file"}),
            "a.ics:1: no calendar and no contact in this file");
}

TEST_F(BadInputTest, RubbishOfAnySizePassesThrough) {
  std::mt19937 random(3);
  std::string noise(3 << 20, ' ');
  for (char& c : noise) c = static_cast<char>(random());
  EXPECT_EQ(import_text(noise).counts, ImportCounts());
  // One endless line within an event, and a thousand bad lines.
  const std::string endless = calendar(
      good("a") + event("DTSTART:20260101T100000\r\nX-BIG:" + std::string(34 << 20, 'x') + "\r\n") +
      good("b"));
  const auto large = import_text(endless);
  EXPECT_EQ(problems_of(large), "10: VEVENT is too large; left out\n");
  EXPECT_TRUE(of_uid("a") && of_uid("b"));
  std::string many;
  for (int i = 0; i < 1000; ++i) many += event("SUMMARY:no start\r\n");
  const auto bad = import_text(calendar(many));
  EXPECT_EQ(bad.counts.skipped, 1000);
  EXPECT_LE(bad.problems.size(), 201u);
}

TEST_F(BadInputTest, EncodingsAndLineEnds) {
  const std::string text = calendar(
      event("UID:e\r\nDTSTART:20260101T100000\r\nSUMMARY:Caf\xC3\xA9 \xF0\x9F\x98\x80\r\n"));
  const auto in_utf16 = [](std::string_view utf8, bool little, bool mark) {
    std::string bytes;
    const Text units = (mark ? Text(1, 0xFEFF) : Text()) + to_utf16(utf8);
    for (const char16_t unit : units) {
      const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
      bytes += little ? low : high;
      bytes += little ? high : low;
    }
    return bytes;
  };
  std::string lone_cr, no_cr, folded_inside = text, nul = text;
  for (const char c : text) {
    if (c != '\n') lone_cr += c;
    if (c != '\r') no_cr += c;
  }
  folded_inside.insert(folded_inside.find('\xA9'), "\r\n ");
  nul.insert(nul.find("Caf"), 1, '\0');
  for (const std::string& one :
       {"\xEF\xBB\xBF" + text, in_utf16(text, true, true), in_utf16(text, false, true),
        in_utf16(text, true, false), lone_cr, no_cr, folded_inside, nul}) {
    store.put_back({});
    const auto result = import_text(one);
    ASSERT_TRUE(of_uid("e")) << problems_of(result);
    EXPECT_EQ(of_uid("e")->fields.subject, u"Caf\u00e9 \U0001F600");
    EXPECT_EQ(result.problems.size(), one == nul ? 1u : 0u) << problems_of(result);
  }
  const auto latin = import_text(
      calendar(event("UID:l\r\nDTSTART:20260101T100000\r\nSUMMARY:Caf\xE9\r\nLOCATION:\x80\r\n")));
  EXPECT_EQ(problems_of(latin), "8: text is not UTF-8; read as Windows-1252\n");
  EXPECT_EQ(of_uid("l")->fields.subject, u"Caf\u00e9");
  EXPECT_EQ(of_uid("l")->fields.location, u"\u20ac");
}

// The reader's buffer may end anywhere, between CR and LF too.
TEST_F(BadInputTest, ABufferThatEndsInsideALineEnd) {
  constexpr std::size_t kPiece = 1 << 18;
  for (const std::size_t rest : {0, 1, 2}) {
    std::string text = "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nDTSTART:20260101T100000\r\nUID:x\r\n";
    const std::size_t room = kPiece - rest - text.size() - std::string("X-A:").size();
    text += "X-A:" + std::string(room, 'a') + "\r\n";
    const int line = static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
    std::istringstream in(text + "no property\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
    LineReader reader(in);
    std::string_view one;
    while (reader.next(one, kPiece * 2) && one != "no property") EXPECT_NE(one, "") << rest;
    EXPECT_EQ(reader.number(), line) << rest;
  }
}

// Bytes of real files changed at random: whatever comes in must come out readable.
TEST_F(BadInputTest, MutatedFilesNeverBreakAnything) {
  const std::string path = file_of("");
  std::vector<std::string> seeds;
  for (const char* name : {"series.ics", "rules.ics", "old.vcs"})
    seeds.push_back(content_of(data_file(name)));
  const std::string_view pieces[] = {"BEGIN:VEVENT\n",
                                     "END:VEVENT\n",
                                     "\n ",
                                     ":",
                                     ";",
                                     "\"",
                                     "=",
                                     "T",
                                     "Z",
                                     "-1",
                                     "99999999999",
                                     ",",
                                     "\r",
                                     "END:VCALENDAR\n",
                                     "RRULE:FREQ=SECONDLY\n",
                                     "\xFF",
                                     "VALUE=PERIOD",
                                     "/P1D"};
  std::mt19937 random(20261121);
  constexpr int kRounds = 400;
  for (int round = 0; round < kRounds; ++round) {
    std::string text = seeds[random() % seeds.size()];
    for (auto edits = 1 + random() % 6; edits > 0; --edits) {
      const std::size_t where = random() % text.size();
      switch (random() % 4) {
        case 0:
          text[where] = static_cast<char>(random());
          break;
        case 1:
          text.erase(where, random() % 60);
          break;
        case 2:
          text.insert(where, pieces[random() % std::size(pieces)]);
          break;
        default:
          text.insert(where, text.substr(random() % text.size(), random() % 200));
      }
      if (text.empty()) text = "B";
    }
    std::ofstream(path, std::ios::binary) << text;
    store.put_back({});
    const auto result = import_files({path}, open_input_file, store, clock);
    ASSERT_TRUE(result.done);
    const std::string out = exported();
    std::ofstream(path, std::ios::binary) << out;
    MemoryStore other(clock);
    const auto again = import_files({path}, open_input_file, other, clock);
    EXPECT_EQ(other.contents().records.size(), count()) << text << "\n----\n" << out;
    EXPECT_TRUE(is_utf8(out)) << round;
  }
}

}  // namespace
}  // namespace orvello
