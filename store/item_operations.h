// What is done to one appointment: finding the occurrence that is meant, deleting, copying, moving.
// The item is fetched by its id, and nothing obtained outlives a call. What fails is said in a box,
// with the store's reason on a line of its own, and heard as a beep where a person knows that.
#pragma once

#include <memory>

#include "ports/message_box.h"
#include "store/operation_context.h"
#include "store/store_session.h"

namespace orvello {

// False for id 0, and after its message when the item cannot be fetched.
bool isApptRecurring(StoreSession& session, MessageBoxes& boxes, std::int32_t oid);

// Moves `moment` to the start of the first exception on the same day, so that a moved occurrence is
// found. False when the pattern has no exceptions.
bool find_exception_date(StorePattern& pattern, MessageBoxes& boxes, CalendarDate& moment);

// The occurrence that starts exactly then, as its row in a list says: never another one of the same
// day, which might be there after a change. Null without one; `error` is then why.
std::unique_ptr<Appointment> find_listed_occurrence(Appointment& item, CalendarDate start,
                                                    OccurrenceError& error);

// `start` is that of the row (kNoDate when unknown) and tells the occurrences of a series apart; an
// item that does not recur is known by its id alone.

// Modes as the delete confirmation answers. An item that does not recur goes in any mode. True when
// the item could not be fetched and the session has been closed: it must be opened again.
inline constexpr int kDeleteOccurrence = 2, kDeleteSeries = 3, kDeleteFollowing = 4;
bool delete_appointment(const OperationContext& context, std::int32_t oid, int mode,
                        CalendarDate start);

// Whether there are occurrences before that one, and the store can part it and all that follow from
// them.
bool can_follow(Appointment& item, CalendarDate start);

// Puts the item, or its occurrence, on the target day: it keeps its time of day and everything
// else, and an occurrence becomes a changed one of its series. False when nothing was changed.
bool move_appointment(const OperationContext& context, std::int32_t oid, CalendarDate source_start,
                      Day target_day);
// Gives it another start of the same length; nothing else changes.
bool shift_appointment(const OperationContext& context, std::int32_t oid, CalendarDate source_start,
                       CalendarDate target_start);
// Likewise a copy on a day, which keeps all but the recurrence.
bool copy_appointment(const OperationContext& context, std::int32_t oid, CalendarDate source_start,
                      Day target_day);

// The fixed text of a box, with the reason for the last failure below it where the store knows one.
Text with_reason(const StoreSession& session, TextView text);

}  // namespace orvello
