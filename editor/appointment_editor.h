// The appointment editor, as the program opens it.
#pragma once

#include "store/appointment_form.h"

namespace orvello {

class AppointmentEditor {
 public:
  virtual ~AppointmentEditor() = default;
  // Modal; the views hear of what was saved by a refresh message.
  virtual void edit(const EditorChoice& choice) = 0;
};

}  // namespace orvello
