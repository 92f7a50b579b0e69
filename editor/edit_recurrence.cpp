#include "editor/edit_recurrence.h"

namespace orvello {

bool edit_recurrence(const EditorContext&, RecurrencePattern&, bool) { return false; }

}  // namespace orvello
