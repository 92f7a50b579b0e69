#include "app/forms.h"

#include "options/settings_sheet.h"

namespace orvello {

void Forms::edit_appointment(ApplicationState& state) {
  AppointmentEditor& editor = parts_.appointment ? *parts_.appointment : editor_;
  editor.edit(state.to_edit);
  state.to_edit = {};
  context_.host.input.hide_input_panel();
}

void Forms::change_settings(SettingsCommands& commands) {
  if (parts_.settings)
    parts_.settings->run(context_.settings, commands);
  else
    ShowSettingsSheet({context_.host, context_.session, context_.settings, context_.volume,
                       context_.screen, context_.platform_generation, context_.history, commands});
}

}  // namespace orvello
