// A series cut in two: what a person does with "this and all that follow", and what a file says.
#pragma once

#include <optional>
#include <vector>

#include "calendar/rule.h"
#include "calendar/zone.h"
#include "store/appointment_record.h"

namespace orvello {

// The record's recurrence as a set of rules and dates, in the record's own time. Its deleted
// occurrences are not excluded. `zone` is the record's, null without one.
RecurrenceSet recurrence_of(const AppointmentRecord& record, const Zone* zone = nullptr);

// Gives the record that recurrence: a pattern where one holds it, else its lines. A set of nothing
// but the start still makes a series.
void set_recurrence_of(AppointmentRecord& record, const RecurrenceSet& set);

bool has_instance(const RecurrenceSet& set, LocalSeconds moment);
bool has_occurrence(const RecurrencePattern& pattern, LocalSeconds moment);

// The set's part before `end`, counts turned into last moments.
void end_before(RecurrenceSet& set, LocalSeconds end);

// Takes the exceptions, which are in order, of that occurrence and all later ones.
std::vector<AppointmentException> take_exceptions(AppointmentRecord& record, LocalSeconds from);

// Ends a series, whose exceptions are in order, before that moment.
void end_series_before(AppointmentRecord& record, LocalSeconds moment, const Zone* zone = nullptr);

// Whether the series shows an occurrence before that one.
bool shows_before(const AppointmentRecord& record, LocalSeconds moment, const Zone* zone);

// The series from its occurrence at that moment on, as a record of its own without id and UID: with
// the rest of a count, the exceptions from there on, and everything else. Nothing where no
// recurrence says that.
std::optional<AppointmentRecord> rest_of_series(const AppointmentRecord& record, LocalSeconds from,
                                                const Zone* zone);

}  // namespace orvello
