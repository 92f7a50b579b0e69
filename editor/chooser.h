// The chooser: which categories an appointment carries, and which contacts attend it.
#pragma once

#include <vector>

#include "editor/editor_context.h"

namespace orvello {

// Modal. True with OK: the second argument then is what was chosen, else it is as it was.
// Categories are comma-separated.
bool choose_categories(const EditorContext& context, Text& categories);
bool choose_attendees(const EditorContext& context, std::vector<StoreRecipient>& attendees);

}  // namespace orvello
