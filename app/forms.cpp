#include "app/forms.h"

#include "settings/registry_access.h"
#include "store/wait_cursor.h"

namespace orvello {

void Forms::edit_appointment(ApplicationState& state) {
  AppointmentEditor& editor = parts_.appointment ? *parts_.appointment : editor_;
  editor.edit(state.to_edit);
  state.to_edit = {};
  host_.input.hide_input_panel();
}

void Forms::change_settings(SettingsRecord& settings, SettingsCommands& commands) {
  if (parts_.settings) parts_.settings->run(settings, commands);
  const WaitCursor waiting(host_.window);
  FlushSettings(host_.registry);
}

}  // namespace orvello
