// The forms over the views: the appointment editor and the settings sheet, as far as there are any.
#pragma once

#include "app/application_state.h"
#include "editor/appointment_form.h"
#include "options/settings_form.h"
#include "ports/host.h"

namespace orvello {

// Outlive the application. A missing one greys its command.
struct FormParts {
  AppointmentForm* appointment = nullptr;
  SettingsForm* settings = nullptr;
};

class Forms {
 public:
  Forms(const FormParts& parts, Host& host) : parts_(parts), host_(host) {}

  bool can_edit() const { return parts_.appointment != nullptr; }
  bool can_set() const { return parts_.settings != nullptr; }
  // Greys what cannot be opened, in the content and once the bar stands.
  void grey(MenuBarContent& content) const;
  void grey(MenuBar& bar) const;

  // The appointment that the state names, which then names none; without an editor nothing opens.
  void edit_appointment(ApplicationState& state);
  void change_settings(SettingsRecord& settings, SettingsCommands& commands);

 private:
  FormParts parts_;
  Host& host_;
};

}  // namespace orvello
