// What is done to one appointment: finding the occurrence that is meant, deleting, copying, moving.
// The item is fetched by its id, and nothing obtained outlives a call. Failures are shown, or heard
// as a beep where there is nothing to say.
#pragma once

#include <memory>

#include "ports/message_box.h"
#include "store/store_session.h"

namespace orvello {

// False for id 0, and after its message when the item cannot be fetched.
bool isApptRecurring(StoreSession& session, MessageBoxes& boxes, std::int32_t oid);

// Moves `moment` to the start of the first exception on the same day, so that a moved occurrence is
// found. False when the pattern has no exceptions.
bool find_exception_date(StorePattern& pattern, MessageBoxes& boxes, CalendarDate& moment);

// The occurrence at that moment, or at the same time of one of the days before, from which a long
// one may still run. Null without one; `last` is then why.
std::unique_ptr<Appointment> find_occurrence(Appointment& item, StorePattern& pattern,
                                             CalendarDate moment, OccurrenceError& last);

// The occurrence that the lists show on the day: one that touches it, however it was moved and
// however long it has been running. Null without one.
std::unique_ptr<Appointment> find_shown_occurrence(StoreSession& session, MessageBoxes& boxes,
                                                   Appointment& item, std::int32_t day);

// Modes as the delete confirmation answers: 3 deletes a whole series, every other one the
// occurrence shown on the day; an item that does not recur goes in any mode. True when the item
// could not be fetched and the session has been closed: it must be opened again.
bool delete_appointment(StoreSession& session, MessageBoxes& boxes, std::int32_t oid, int mode,
                        std::int32_t selected_day);

// Puts a copy of the item, or of its occurrence shown on the source day, on the target day; it
// keeps its time of day and everything else but the recurrence. Moving deletes the source once the
// copy is saved. False when nothing was changed.
bool copy_or_move(StoreSession& session, MessageBoxes& boxes, std::int32_t oid,
                  std::int32_t source_day, std::int32_t target_day, bool move);

}  // namespace orvello
