#include "app/forms.h"

#include "app/wait_cursor.h"
#include "resources/ids.h"
#include "settings/registry_access.h"

namespace orvello {

void Forms::grey(MenuBarContent& content) const {
  for (MenuBarButton& button : content.buttons)
    for (MenuItem& item : button.menu)
      if (item.command == kCommandSettings) item.enabled = can_set();
}

void Forms::grey(MenuBar& bar) const { bar.enable_button(kCommandNew, can_edit()); }

void Forms::edit_appointment(ApplicationState& state) {
  state.to_edit.whole_series = false;
  if (parts_.appointment) parts_.appointment->edit(state.to_edit);
  state.to_edit = {};
  host_.input.hide_input_panel();
}

void Forms::change_settings(SettingsRecord& settings, SettingsCommands& commands) {
  if (parts_.settings) parts_.settings->run(settings, commands);
  const WaitCursor waiting(host_.window);
  FlushSettings(host_.registry);
}

}  // namespace orvello
