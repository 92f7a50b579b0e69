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
  SettingsForm* settings = nullptr;          // a missing one greys its command
};

class Forms {
 public:
  Forms(const FormParts& parts, const EditorContext& context)
      : parts_(parts), host_(context.host), editor_(context) {}

  bool can_set() const { return parts_.settings != nullptr; }

  // The appointment that the state names, which then names none.
  void edit_appointment(ApplicationState& state);
  // What an earlier run could not save; true when there was something.
  bool offer_draft() { return editor_.offer_draft(); }
  void change_settings(SettingsRecord& settings, SettingsCommands& commands);

 private:
  FormParts parts_;
  Host& host_;
  EditorForms editor_;
};

}  // namespace orvello
