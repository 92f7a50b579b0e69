// The recurrence editor: three steps over the pattern of an appointment.
#pragma once

#include "editor/editor_context.h"

namespace orvello {

// Modal. True when the person finished with Done: `pattern` then is what was chosen, else it is as
// it was.
bool edit_recurrence(const EditorContext& context, RecurrencePattern& pattern, bool all_day);

}  // namespace orvello
