// The first instance of a recurrence on or after a date. The date's time of day is carried over.
#pragma once

#include "calendar/calendar_date.h"

namespace orvello {

// "No such date": 4 October 2170.
inline constexpr CalendarDate NoDateSentinel = 98894.0;

// The day classes of NextYearlyDate; 3-9 are Sunday .. Saturday.
inline constexpr int kAnyDay = 0;
inline constexpr int kWeekday = 1;
inline constexpr int kWeekendDay = 2;
inline constexpr int kNamedDay = 3;

// Kind 1: month and day every year. Kind 2: the instance-th (1-4, 5 last) day of a class.
CalendarDate NextYearlyDate(int kind, CalendarDate date, int instance, int day_class, int month,
                            int day_of_month);

// Only kind 1 is defined: a day of the month every `interval` months.
CalendarDate NextMonthlyDate(int kind, CalendarDate date, int interval, int day_of_month);

// `mask`: bit 0 Sunday .. bit 6 Saturday. NoDateSentinel when neither the rest of this week nor as
// many days of the week `interval` weeks on hold a day of the mask.
CalendarDate NextWeeklyDate(CalendarDate date, int interval, int mask);

}  // namespace orvello
