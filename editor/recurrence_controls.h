// Between the recurrence editor's controls and its form.
#pragma once

#include "calendar/dates.h"
#include "calendar/locale_data.h"
#include "editor/recurrence_rules.h"
#include "ports/dialog.h"

namespace orvello {

struct RecurrenceLooks {
  LocaleData locale;
  bool monday_first = false;
  MonthDayYear today;
};

// Fills lists and pickers, and shows the form in them, all but the times.
void show_recurrence(Dialog& dialog, const RecurrenceForm& form, const RecurrenceLooks& looks);
// The days of the chosen month; what stands in the control is the form's.
void show_year_days(Dialog& dialog, const RecurrenceForm& form);
// Kind, pages and range as they stand there; not the times and the days of the week.
void read_recurrence(Dialog& dialog, RecurrenceForm& form);

// The radio button that a field belongs to; 0: none.
int radio_of(int field);

}  // namespace orvello
