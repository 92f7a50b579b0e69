// What a file says of recurrence, as days show it: from text through the store to the lists.
#include "calendar/rule_text.h"
#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_store.h"
#include "store/day_agenda.h"
#include "tests/exchange/exchange_fixture.h"

namespace orvello {
namespace {

constexpr char kBerlin[] =
    "BEGIN:VTIMEZONE\r\nTZID:B\r\nBEGIN:STANDARD\r\nDTSTART:19701025T030000\r\n"
    "RRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\r\nTZOFFSETFROM:+0200\r\nTZOFFSETTO:+0100\r\n"
    "END:STANDARD\r\nBEGIN:DAYLIGHT\r\nDTSTART:19700329T020000\r\n"
    "RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\n"
    "END:DAYLIGHT\r\nEND:VTIMEZONE\r\n";

class RulesInDays : public ExchangeTest {
 protected:
  // The starts of what the days [from, to] hold, an item that stands for many as "START+N".
  std::string starts(MemoryStore& days, const char* from, const char* to) {
    const auto application = days.create_application(false);
    EXPECT_TRUE(application->logon(nullptr));
    const auto items = application->default_folder(kFolderCalendar)->items();
    items->set_include_recurrences(true);
    items->sort(u"[Start]", false);
    const auto day = [](const char* text) { return day_of(parse_moment(text).value()); };
    std::string list;
    const Text span = restriction_to(day(from), day(to));
    int rows = 0;
    for (auto item = items->find(span); item; item = items->find_next(), ++rows) {
      if (rows < 6 || item->many != 0)
        list += moment_text(to_seconds(item->start)).substr(2, 11) + " ";
      if (item->many != 0) list.back() = '+', list += std::to_string(item->many) + " ";
    }
    return list + (rows < 7 ? "" : "of " + std::to_string(rows));
  }
};

TEST_F(RulesInDays, ShowWhatTheFileMeans) {
  const struct {
    const char *lines, *from, *to, *starts;
    int problems;
  } kCases[] = {
      {"DTSTART;VALUE=DATE:16040229\r\nRRULE:FREQ=YEARLY\r\n", "20240101", "20250101",
       "240229T0000 ", 0},
      {"DTSTART;VALUE=DATE:16040229\r\n", "16040301", "20250101", "", 0},
      {"DTSTART:20260105T090000\r\nRRULE:FREQ=DAILY;COUNT=2\r\nRDATE:20260102T090000\r\n",
       "20260101", "20260131", "260102T0900 260105T0900 260106T0900 ", 0},
      {"DTSTART;VALUE=DATE:20260105\r\nRDATE;VALUE=DATE:20260103\r\n", "20260101", "20260131",
       "260103T0000 260105T0000 ", 0},
      {"DTSTART;VALUE=DATE:20260105\r\nRRULE:FREQ=DAILY;BYHOUR=9,10,11;COUNT=2\r\n", "20260101",
       "20260131", "260105T0000 260106T0000 ", 0},
      {"DTSTART;VALUE=DATE:20260105\r\nRRULE:FREQ=MONTHLY;BYDAY=MO;BYSECOND=7;BYSETPOS=-1\r\n",
       "20260106", "20260301", "260126T0000 260223T0000 ", 0},
      {"DTSTART:20260105T090000\r\nRRULE:FREQ=DAILY;COUNT=9;UNTIL=20260106T090000\r\n", "20260101",
       "20260131", "260105T0900 260106T0900 ", 1},
      {"DTSTART:20260105T090000\r\nRRULE:FREQ=MONTHLY;BYDAY=1MO,3MO;X-A=1\r\n", "20260106",
       "20260301", "260119T0900 260202T0900 260216T0900 ", 1},
      {"DTSTART:20260105T090000\r\nRRULE:\r\n", "20260101", "20260131", "260105T0900 ", 1},
      // The end in UTC is read with the offset of its own day, not with the start's: 9:30 in
      // summer.
      {"DTSTART;TZID=B:20260327T093000\r\nRRULE:FREQ=DAILY;UNTIL=20260330T073000Z\r\n", "20260326",
       "20260405", "260327T0830 260328T0830 260329T0730 260330T0730 ", 0},
      {"DTSTART;TZID=B:20260327T093000\r\nRRULE:FREQ=DAILY;UNTIL=20260330T072959Z\r\n"
       "EXRULE:FREQ=YEARLY;BYMONTH=1\r\n",
       "20260326", "20260405", "260327T0830 260328T0830 260329T0730 ", 0},
  };
  for (const auto& one : kCases) {
    SCOPED_TRACE(one.lines);
    HeadlessClock at_import;
    MemoryStore days(at_import);
    const auto result = import_files(
        {file_of(calendar(kBerlin + event("UID:a\r\nSUMMARY:x\r\n" + std::string(one.lines))))},
        open_input_file, days, at_import);
    EXPECT_EQ(starts(days, one.from, one.to), one.starts);
    EXPECT_EQ(result.problems.size(), static_cast<std::size_t>(one.problems))
        << problems_of(result);
  }
}

}  // namespace
}  // namespace orvello
