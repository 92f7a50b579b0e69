// The forms over the views: the appointment editor and the settings sheet.
#pragma once

#include "app/application_state.h"
#include "editor/editor_forms.h"
#include "options/settings_form.h"
#include "ports/host.h"

namespace orvello {

// Outlive the application.
struct FormParts {
  AppointmentEditor* appointment = nullptr;  // in place of the program's own
  SettingsForm* settings = nullptr;          // likewise
};

class Forms {
 public:
  Forms(const FormParts& parts, const EditorContext& context)
      : parts_(parts), context_(context), editor_(context) {}

  // The appointment that the state names, which then names none.
  void edit_appointment(ApplicationState& state);
  // What an earlier run could not save; true when there was something.
  bool offer_draft() { return editor_.offer_draft(); }
  void change_settings(SettingsCommands& commands);

 private:
  FormParts parts_;
  EditorContext context_;
  EditorForms editor_;
};

}  // namespace orvello
