#include <sstream>

#include "calendar/next_dates.h"
#include "tests/calendar/dates_case_file.h"

namespace orvello {
namespace {

CalendarDate next_date(std::istringstream& words, double time_of_day) {
  std::string what, date_text;
  int kind = 0, a = 0, b = 0, c = 0, d = 0;
  words >> what;
  if (what != "weekly") words >> kind;
  words >> date_text >> a >> b;
  const CalendarDate date = calendar_date_of(read_date(date_text)) + time_of_day;
  if (what == "weekly") return NextWeeklyDate(date, a, b);
  if (what == "monthly") return NextMonthlyDate(kind, date, a, b);
  words >> c >> d;
  return NextYearlyDate(kind, date, a, b, c, d);
}

TEST(NextDates, PinnedCasesCarryTheTimeOfDay) {
  for (const std::string& line : case_lines("next_dates.txt")) {
    for (const double time_of_day : {0.0, 0.75, 1.0 / 3}) {
      std::istringstream words(line);
      const CalendarDate got = next_date(words, time_of_day);
      std::string arrow, want;
      words >> arrow >> want;
      ASSERT_EQ(arrow, "->") << line;
      if (want == "none") {
        EXPECT_EQ(got, NoDateSentinel) << line;
      } else {
        EXPECT_NEAR(got, calendar_date_of(read_date(want)) + time_of_day, 1e-9) << line;
      }
    }
  }
}

TEST(NextDates, TheSentinelIsADayOfOctober2170) {
  EXPECT_EQ(triple_of(NoDateSentinel), (MonthDayYear{10, 4, 2170}));
}

}  // namespace
}  // namespace orvello
