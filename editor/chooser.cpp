#include "editor/chooser.h"

namespace orvello {

bool choose_categories(const EditorContext&, Text&) { return false; }
bool choose_attendees(const EditorContext&, std::vector<StoreRecipient>&) { return false; }

}  // namespace orvello
