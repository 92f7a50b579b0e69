// How the form's list of recurrences and the pattern go together.
#pragma once

#include <vector>

#include "calendar/locale_data.h"
#include "store/appointment_form.h"

namespace orvello {

// The rows of the list.
enum class Occurs { once, weekly, monthly, yearly, pattern };
inline constexpr TextView kEditPattern = u"<Edit pattern...>";

std::vector<Text> occurs_rows(CalendarDate start_date, const LocaleData& locale);
// The row that says what the form does; a rule that no pattern holds is none of the simple ones.
Occurs shown_occurs(const AppointmentForm& form);
// The date that the rows speak of.
CalendarDate occurs_date(const AppointmentForm& form);

// A pattern's days as a start date has them: weekday, day of the month, month.
void take_days(RecurrencePattern& pattern, CalendarDate start_date);
// Of an appointment that does not recur.
RecurrencePattern fresh_pattern(CalendarDate start_date);
// What one of the three simple rows means, without end.
RecurrencePattern simple_pattern(Occurs row, const RecurrencePattern& before,
                                 CalendarDate start_date);

}  // namespace orvello
