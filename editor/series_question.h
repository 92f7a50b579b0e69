// The question which of a series is meant.
#pragma once

#include "editor/editor_context.h"
#include "store/appointment_form.h"

namespace orvello {

// Asks where the appointment recurs, and puts the answer into the choice. False: none of them.
bool choose_scope(const EditorContext& context, EditorChoice& choice);

}  // namespace orvello
