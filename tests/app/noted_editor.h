// An editor that only notes what it was opened for.
#pragma once

#include <vector>

#include "editor/appointment_editor.h"

namespace orvello {

struct NotedEditor : AppointmentEditor {
  void edit(const EditorChoice& choice) override { edited.push_back(choice); }
  std::vector<EditorChoice> edited;
};

}  // namespace orvello
