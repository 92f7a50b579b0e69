#include <sstream>

#include "calendar/week_numbers.h"
#include "tests/calendar/dates_case_file.h"

namespace orvello {
namespace {

// By the definition: a week belongs to the year that holds its Thursday.
int iso_week_by_thursday(Day day) {
  const int from_monday = (civil_of(day).day_of_week + 6) % 7;
  const Day thursday = day - from_monday + 3;
  const Day new_year = day_of(civil_of(thursday).year, 1, 1);
  return (thursday - new_year) / 7 + 1;
}

TEST(WeekNumbers, IsoAgreesWithTheDefinition) {
  for (Day day = day_of(1990, 1, 1); day <= day_of(2030, 12, 31); ++day) {
    const SystemTime date = civil_of(day);
    ASSERT_EQ(IsoWeekNumber(date.month, date.day, date.year, 1), iso_week_by_thursday(day))
        << date.year << "-" << date.month << "-" << date.day;
  }
}

TEST(WeekNumbers, PinnedCases) {
  for (const std::string& line : case_lines("week_numbers.txt")) {
    std::istringstream words(line);
    std::string kind, date_text, start;
    int first = 0, week = -1, start_month = 0, start_day = 0;
    words >> kind >> date_text >> first >> start >> week;
    ASSERT_EQ(std::sscanf(start.c_str(), "%d-%d", &start_month, &start_day), 2) << line;
    const MonthDayYear date = read_date(date_text);
    const WeekNumberSettings settings{kind == "us" ? 2 : 1, first, start_month, start_day};
    EXPECT_EQ(week_number(date, settings), week) << line;
  }
}

TEST(WeekNumbers, UsWeeksChangeOnSundayOrAheadOfTheNewYear) {
  for (Day day = day_of(1990, 1, 1); day <= day_of(2030, 12, 31); ++day) {
    const SystemTime a = civil_of(day), b = civil_of(day + 1);
    const int before = UsWeekNumber(a.month, a.day, a.year, 0, 1, 1);
    const int after = UsWeekNumber(b.month, b.day, b.year, 0, 1, 1);
    ASSERT_TRUE(after >= 1 && after <= 53);
    const bool near_new_year = b.month == 12 && b.day >= 26;
    if (b.day_of_week != 0 && !(near_new_year && before == 53)) {
      ASSERT_EQ(before, after) << b.year << "-" << b.month << "-" << b.day;
    } else {
      ASSERT_TRUE(after == before + 1 || after == 1) << b.year << "-" << b.month << "-" << b.day;
    }
  }
}

TEST(WeekNumbers, RowsTakeTheirFirstDayOfTheMonth) {
  const WeekNumberSettings iso{1, 1, 1, 1};
  // January 2010 starts on a Friday of week 53; its sixth row would be all February.
  EXPECT_EQ(row_week_number(0, 1, 2010, iso), 53);
  EXPECT_EQ(row_week_number(1, 1, 2010, iso), 1);
  EXPECT_EQ(row_week_number(5, 1, 2010, iso), 5);
  // Past December the number is of a day in January.
  EXPECT_EQ(row_week_number(4, 12, 2026, iso), 53);
  EXPECT_EQ(row_week_number(5, 12, 2026, iso), 1);
  EXPECT_EQ(row_week_number(0, 1, 2010, WeekNumberSettings{}), 0);
}

}  // namespace
}  // namespace orvello
