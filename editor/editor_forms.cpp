#include "editor/editor_forms.h"

namespace orvello {

void EditorForms::edit(const EditorChoice&) {}
bool EditorForms::offer_draft() { return false; }

}  // namespace orvello
