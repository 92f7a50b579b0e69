// How one appointment reads on one day: its times, or which part of a longer span the day holds.
#pragma once

#include "ports/calendar_store.h"

namespace orvello {

// An all-day item's end moved to 23:59 of the day on which it falls; any other end as it is.
CalendarDate shown_end(const StoreItem& item);

// Whole days are compared: an item that ends at midnight still belongs to the day which that
// begins.
bool touches_day(const StoreItem& item, Day day);

// "All Day", "9:00-10:00", "multiday-5:00p", "9:00a-multiday" or "multiday"; "---" for each time of
// an item without dates.
Text day_label(const StoreItem& item, Day day, bool clock24);

inline constexpr TextView kNoSubject = u"No Subject";

// What rows, lines and labels say of an appointment, that where it has no subject.
Text shown_subject(TextView subject);
// The same; of an item that stands for many occurrences "and 83,400 more: Subject".
Text shown_subject(const StoreItem& item);

// A location in brackets; one of 30 characters or more is cut to 29 and "...".
Text location_label(TextView location);

// The label before the first comma, the whole text without one.
Text first_category(TextView categories);

}  // namespace orvello
