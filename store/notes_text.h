// What the bubble beside a row of the Day view says.
#pragma once

#include "ports/message_box.h"
#include "store/store_session.h"

namespace orvello {

// The notes of the appointment, of a recurring one those of the occurrence that starts then (see
// DayRow::start); at most 599 characters, "(Drawing)" for strokes without words, "(No Notes)"
// for neither. Empty when they cannot be read, which is said.
Text notes_text(StoreSession& session, MessageBoxes& boxes, std::int32_t oid, CalendarDate start);

}  // namespace orvello
