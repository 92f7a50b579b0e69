// What the bubble beside a row of the Day view says.
#pragma once

#include "ports/message_box.h"
#include "store/store_session.h"

namespace orvello {

// The notes of the appointment, of a recurring one those of the occurrence shown on the day; at
// most 599 characters, "(No Notes)" without any. Empty when the appointment cannot be fetched.
Text notes_text(StoreSession& session, MessageBoxes& boxes, std::int32_t oid,
                std::int32_t shown_day);

}  // namespace orvello
