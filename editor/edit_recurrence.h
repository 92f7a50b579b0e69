// The recurrence editor: three steps over the pattern of an appointment.
#pragma once

#include <string_view>

#include "editor/editor_context.h"

namespace orvello {

// Modal. True when the person finished with Done: `pattern` then is what was chosen, else it is as
// it was. Where the appointment recurs by `rules` that no pattern holds, the person is told of them
// in words first, and asked whether they are to be replaced; `pattern` is then where to begin.
bool edit_recurrence(const EditorContext& context, RecurrencePattern& pattern, bool all_day,
                     std::string_view rules = {});

}  // namespace orvello
