#include <chrono>
#include <cmath>
#include <limits>

#include "calendar/month_grid_range.h"
#include "calendar/time_slots.h"
#include "tests/calendar/dates_case_file.h"

namespace orvello {
namespace {

namespace ch = std::chrono;

// The standard library's calendar is the independent judge.
ch::sys_days sys_day(Day day) {
  return ch::sys_days(ch::December / 30 / 1899) + ch::days(day.number());
}

TEST(CalendarDate, AgreesWithTheStandardCalendarOnEveryDay) {
  const Day first = day_of(1600, 1, 1), last = day_of(4600, 12, 31);
  for (Day day = first; day <= last; ++day) {
    const ch::year_month_day want{sys_day(day)};
    const SystemTime got = civil_of(day);
    ASSERT_EQ(got.year, static_cast<int>(want.year()));
    ASSERT_EQ(got.month, static_cast<int>(static_cast<unsigned>(want.month())));
    ASSERT_EQ(got.day, static_cast<int>(static_cast<unsigned>(want.day())));
    ASSERT_EQ(got.day_of_week, static_cast<int>(ch::weekday(sys_day(day)).c_encoding()));
    ASSERT_EQ(day_of(got.year, got.month, got.day), day);
    ASSERT_EQ(DayOfWeek(got.month, got.day, got.year), got.day_of_week);
    ASSERT_EQ(JulianDayNumber(got.month, got.day, got.year), day.number() + 2415019);
  }
}

TEST(CalendarDate, SecondsSurviveTheDouble) {
  const LocalSeconds from = midnight_of(day_of(1600, 1, 1));
  const LocalSeconds to = midnight_of(day_of(4600, 12, 31));
  for (LocalSeconds s = from; s < to; s += 86399 * 7 + 1)
    ASSERT_EQ(to_seconds(to_calendar_date(s)), s);
  for (const LocalSeconds edge : {from, LocalSeconds(), midnight_of(Day(-1)), to})
    for (LocalSeconds s = edge - kSecondsPerDay; s < edge + kSecondsPerDay; s += 1)
      ASSERT_EQ(to_seconds(to_calendar_date(s)), s);
}

TEST(CalendarDate, FractionsCountForwardBefore1900) {
  SystemTime time;
  ASSERT_TRUE(VariantTimeToSystemTime(-1.25, time));
  EXPECT_EQ(time, (SystemTime{1899, 12, 5, 29, 6, 0, 0, 0}));
  CalendarDate date = 0;
  ASSERT_TRUE(SystemTimeToVariantTime(time, date));
  EXPECT_EQ(date, -1.25);
  ASSERT_TRUE(VariantTimeToSystemTime(-0.25, time));
  EXPECT_EQ(time.day, 30);
  // Half a second short of midnight is the next day, on either side of the epoch.
  ASSERT_TRUE(VariantTimeToSystemTime(-1.999999, time));
  EXPECT_EQ(time, (SystemTime{1899, 12, 6, 30, 0, 0, 0, 0}));
}

TEST(CalendarDate, PartsOfADateAreRightOnEitherSideOfItsEpoch) {
  for (const Day day : {Day(-108100), Day(-1), Day(0), Day(1), Day(46000)})
    for (const int second : {0, 1, 43200, 86399}) {
      const CalendarDate date = to_calendar_date(midnight_of(day) + second);
      EXPECT_EQ(whole_day(date), day);
      EXPECT_NEAR(time_of_day(date) * 86400, second, 1e-4);
      EXPECT_EQ(joined(day, second / 86400.0), date);
      EXPECT_TRUE(is_before(date, to_calendar_date(midnight_of(day) + second + 1)));
      EXPECT_FALSE(is_before(date, date));
      EXPECT_EQ(calendar_date_of(triple_of(date)), to_calendar_date(day));
    }
  EXPECT_EQ(whole_day(std::numeric_limits<double>::quiet_NaN()), Day());
  EXPECT_EQ(whole_day(1e300), Day(100000000));
}

TEST(CalendarDate, FieldsPastTheirRangeRollForward) {
  const auto converted = [](SystemTime time) {
    CalendarDate date = 0;
    EXPECT_TRUE(SystemTimeToVariantTime(time, date));
    return date;
  };
  const auto day = [](int y, int m, int d) { return to_calendar_date(day_of(y, m, d)); };
  EXPECT_EQ(converted({2026, 4, 0, 31, 0, 0, 0, 0}), day(2026, 5, 1));
  EXPECT_EQ(converted({2026, 12, 0, 31, 24, 0, 0, 0}), day(2027, 1, 1));
  EXPECT_EQ(converted({2026, 14, 0, 1, 0, 0, 0, 0}), day(2027, 2, 1));
  EXPECT_EQ(converted({2026, 11, 0, 21, 23, 59, 60, 0}), day(2026, 11, 22));
  EXPECT_EQ(converted({0, 0, 0, 0, 6, 0, 0, 0}), 0.25);
  SystemTime time{.year = 2026, .month = 11, .day = 21, .hour = 23, .minute = 59, .second = 59};
  const CalendarDate without = converted(time);
  time.milliseconds = 999;
  EXPECT_EQ(converted(time), without);
}

TEST(CalendarDate, RefusesWhatIsNoDate) {
  SystemTime time{.year = 2026, .month = 1, .day = 2};
  const SystemTime before = time;
  for (const double date :
       {std::nan(""), std::numeric_limits<double>::infinity(), 1e300,
        to_calendar_date(day_of(10000, 1, 1)), to_calendar_date(day_of(99, 12, 31))})
    EXPECT_FALSE(VariantTimeToSystemTime(date, time)) << date;
  EXPECT_EQ(time, before);
  EXPECT_TRUE(VariantTimeToSystemTime(to_calendar_date(day_of(9999, 12, 31)), time));
}

TEST(Dates, TheTwoLeapYearRulesDiffer) {
  EXPECT_EQ(DaysInMonth(1, 1900), 29);
  EXPECT_EQ(DaysInMonth(1, 2100), 29);
  EXPECT_EQ(DaysInMonth(1, 2026), 28);
  EXPECT_EQ(DaysInMonth(12, 2026), 0);
  EXPECT_EQ(DaysInMonth(-1, 2026), 0);
  EXPECT_EQ(DayOfYear(12, 31, 2000), 365);
  EXPECT_EQ(DayOfYear(12, 31, 1900), 364);
  EXPECT_EQ(DayOfYear(1, 1, 2026), 0);
}

TEST(Dates, JulianTextIgnoresTheTimeOfDay) {
  EXPECT_EQ(JulianDateText({2008, 2, 0, 1, 0, 0, 0, 0}), u"08032");
  EXPECT_EQ(JulianDateText({2008, 12, 0, 31, 23, 59, 59, 0}), u"08366");
  EXPECT_EQ(JulianDateText({2100, 1, 0, 1, 12, 0, 0, 0}), u"00001");
  EXPECT_EQ(JulianDateText({1899, 12, 0, 29, 18, 0, 0, 0}), u"99363");
}

TEST(Dates, BothFormsOfAddDaysStepOverEveryBorder) {
  const SystemTime evening{.year = 2001,
                           .month = 1,
                           .day = 1,
                           .hour = 23,
                           .minute = 59,
                           .second = 59,
                           .milliseconds = 999};
  for (const MonthDayYear from : {MonthDayYear{12, 30, 1899}, {2, 28, 2100}, {12, 31, 2026}}) {
    for (const int days : {-7, -1, 0, 1, 7, 400}) {
      const int want = WholeDayNumber(from.month, from.day, from.year) + days;
      MonthDayYear a = from, b = from;
      AddDays(a.month, a.day, a.year, days, evening);
      AddDays(b.month, b.day, b.year, days);
      EXPECT_EQ(WholeDayNumber(a.month, a.day, a.year), want);
      EXPECT_EQ(a, b);
      EXPECT_EQ(triple_of(want + (want < 0 ? -0.75 : 0.75)), a);
    }
  }
}

TEST(Dates, KeysOrderTriples) {
  EXPECT_LT(DateKey(1, 31, 2026), DateKey(2, 1, 2026));
  EXPECT_LT(DateKey(12, 31, 2026), DateKey(1, 1, 2027));
  EXPECT_EQ(DateKey(11, 21, 2026), 202611021);
}

TEST(MonthGrid, StartsInItsColumnAndHoldsTheMonth) {
  for (int year = 1950; year <= 2099; ++year) {
    for (int month = 1; month <= 12; ++month) {
      for (const int first : {0, 1}) {
        const MonthGrid grid = MonthGridRange(month, year, 0, first);
        const MonthDayYear start = triple_of(grid.grid_start);
        ASSERT_EQ(DisplayDayOfWeek(start.month, start.day, start.year, first), 0);
        ASSERT_EQ(grid.month_start - grid.grid_start, grid.first_column);
        ASSERT_EQ(grid.month_end - grid.month_start + 1, DaysInMonth(month - 1, year));
        // The last row is needed and enough.
        ASSERT_LE(grid.month_end, grid.grid_end);
        ASSERT_GT(grid.month_end, grid.grid_end - 7);
        ASSERT_EQ(grid.grid_end - grid.grid_start + 1, 7 * grid.rows);
        ASSERT_EQ(MonthGridRange(month, year, 1, first).rows, 6);
      }
    }
  }
  EXPECT_EQ(MonthGridRange(2, 2009, 0, 0).rows, 4);
}

TEST(TimeSlots, SlotsZeroAndOneSayTwentyFourAndMeanMidnight) {
  EXPECT_EQ(TimeSlotToHourMinute(0), (HourMinute{24, 0}));
  EXPECT_EQ(TimeSlotToHourMinute(1), (HourMinute{24, 30}));
  EXPECT_EQ(TimeSlotToHourMinute(47), (HourMinute{23, 30}));
  EXPECT_EQ(TimeSlotToHourMinute(-5), TimeSlotToHourMinute(0));
  EXPECT_EQ(TimeSlotToHourMinute(48), TimeSlotToHourMinute(47));
  for (int slot = 0; slot < kTimeSlots; ++slot)
    EXPECT_EQ(std::llround(time_of_slot(slot) * 48), slot);
}

TEST(TimeSlots, BandBoundsAreSinglePrecision) {
  const auto bounds = TimeBandBounds(0, 14, 25, 47);
  EXPECT_EQ(bounds[0], 0.0);
  EXPECT_EQ(bounds[1], static_cast<double>(static_cast<float>(7.0 / 24)));
  EXPECT_NE(bounds[1], 7.0 / 24);
  EXPECT_NEAR(bounds[2], 12.5 / 24, 1e-7);
  EXPECT_NEAR(bounds[3], 23.5 / 24, 1e-7);
}

TEST(TimeSlots, TimeOfDayPartDropsDaysAndSeconds) {
  const double minute = 1.0 / 1440;
  EXPECT_DOUBLE_EQ(TimeOfDayPart(46347 + 541 * minute + minute * 0.75), 541 * minute);
  EXPECT_DOUBLE_EQ(TimeOfDayPart(-100.5), 0.5);
  EXPECT_EQ(TimeOfDayPart(std::nan("")), 0.0);
}

}  // namespace
}  // namespace orvello
