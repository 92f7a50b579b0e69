// What the bubble beside a row of the Day view says.
#pragma once

#include <optional>

#include "ports/message_box.h"
#include "store/store_session.h"

namespace orvello {

struct AppointmentNotes {
  Text text;   // at most 599 characters, "(Drawing)" for strokes without words, "(No Notes)" for
               // neither
  Text place;  // where the appointment is; may be empty
};

// Those of the appointment, of a recurring one of the occurrence that starts then (see
// DayRow::start). Nothing when they cannot be read, which is said.
std::optional<AppointmentNotes> notes_of(StoreSession& session, MessageBoxes& boxes,
                                         std::int32_t oid, CalendarDate start);

}  // namespace orvello
