// What the recurrence editor's controls hold, and its rules: the pattern as it is shown and back.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "base/text.h"
#include "calendar/recurrence_pattern.h"
#include "ports/files.h"
#include "resources/strings.h"

namespace orvello {

// Rows of the list of kinds.
inline constexpr int kRowDaily = 0, kRowWeekly = 1, kRowMonthly = 2, kRowYearly = 3;
inline constexpr std::array<TextView, 4> kRecurrenceKinds = {u"Daily", u"Weekly", u"Monthly",
                                                             u"Yearly"};

// The kinds of day that can be counted in a month, by row: any day, the two classes, and Sunday to
// Saturday. The rows are the day classes of calendar/next_dates.h.
inline constexpr std::array<int, 10> kDayKindMasks = {127, 62, 65, 1, 2, 4, 8, 16, 32, 64};
inline constexpr std::array<TextView, 3> kDayClassNames = {u"Day", u"Weekday", u"Weekend Day"};
inline constexpr int kEveryWeekdayMask = 62;

// What the drop-down edits offer; anything else can be typed.
inline constexpr std::array<int, 7> kOfferedCounts = {1, 2, 3, 4, 5, 10, 20};
inline constexpr std::array<int, 7> kOfferedMonths = {1, 2, 3, 4, 6, 12, 18};

// February has its 29th in every year.
int longest_month(int month);  // 1-12

enum class SeriesEnd { none, by_date, by_count };

struct RecurrenceForm {
  int kind = kRowDaily;
  CalendarDate start_time = 0, end_time = 0;  // fractions of a day
  bool all_day = false;                       // the times are not to be changed

  bool every_weekday = false;
  int daily_interval = 1;
  int weekly_interval = 1;
  int weekdays = 0;  // Sunday 1 .. Saturday 64
  bool month_nth = false;
  int month_day = 1;
  int monthly_interval = 1;
  int month_instance = 0, month_kind = 0;  // rows
  int nth_interval = 1;
  bool year_nth = false;
  int year_month = 0;  // row
  int year_day = 1;
  int year_instance = 0, year_kind = 0, nth_month = 0;  // rows
  int yearly_interval = 1;  // above 1 only for a series that skipped years already

  CalendarDate start_date = 0, end_date = 0;  // whole days
  SeriesEnd end = SeriesEnd::none;
  int count = 10;
};

RecurrenceForm recurrence_form(const RecurrencePattern& pattern, bool all_day);

// The pattern that the form means. `before` is the one that it was filled from: what no control
// holds stays. "Every weekday" is a weekly pattern with an interval of 0, deliberately. Where the
// first day has to suit the pattern, the start date becomes the first that does.
RecurrencePattern recurrence_pattern(const RecurrenceForm& form, const RecurrencePattern& before);

// Leading digits, as typed; 0 without any.
int typed_count(TextView text);

// Another start keeps the length of an occurrence.
void choose_start_time(RecurrenceForm& form, CalendarDate start);
// Another first day takes the last one along.
void choose_start_date(RecurrenceForm& form, CalendarDate start);
void choose_year_month(RecurrenceForm& form, int row);  // which may not have the day

// What a person cannot mean, in words, and the control that holds it. Nothing: all is well.
struct RecurrenceFault {
  Text message;
  int step = 0;
  int control = 0;
};
std::optional<RecurrenceFault> recurrence_fault(const RecurrenceForm& form, Language language);

// Appends the pattern to the diagnostic log, a field a line. False when that failed.
bool dump_pattern(Files& files, const RecurrencePattern& pattern);

}  // namespace orvello
