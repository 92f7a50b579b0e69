// The commands: switching views, the forms, the active profile.

#include "app/application.h"
#include "app/own_messages.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "settings/profiles.h"
#include "settings/registry_access.h"

namespace orvello {

// False for a mode that names no view: nothing is entered then.
bool Application::enter_view(int mode) {
  if (mode < 0 || mode > 2) return false;
  state_.view_mode = ViewMode::none_yet;
  send_command(kViewCommands[mode]);
  return true;
}

void Application::set_current_date(const MonthDayYear& date) {
  state_.current = date;
  settings_.shown = date;
}

void Application::day_view() {
  if (state_.view_mode == ViewMode::day && day_view_.is_open()) return;
  if (state_.view_mode != ViewMode::day && state_.view_mode != ViewMode::none_yet)
    state_.previous_view_mode = state_.view_mode;
  state_.view_mode = ViewMode::day;
  grid_.leave();
  day_view_.open();
  show_checked_view();
}

void Application::show_day(const MonthDayYear& date) {
  set_current_date(date);
  day_view_.close();
  send_command(kCommandDayView);
}

void Application::month_view() { show_grid(ViewMode::month); }
void Application::year_view() { show_grid(ViewMode::year); }

void Application::show_grid(ViewMode mode) {
  if (state_.view_mode == mode) return;
  day_view_.close();
  state_.view_mode = mode;
  grid_.enter(mode);
  show_checked_view();
}

void Application::show_checked_view() {
  for (int mode = 0; mode < 3; ++mode)
    host_.menu_bar.check_button(kViewCommands[mode], state_.view_mode == ViewMode{mode});
}

void Application::new_appointment() {
  state_.whole_series = false;
  if (options_.edit_appointment)
    options_.edit_appointment(state_.appointment_to_edit, state_.whole_series);
  state_.appointment_to_edit = 0;
  state_.occurrence_to_edit = kNoDate;
  host_.input.hide_input_panel();
  day_view_.focus_list();
}

void Application::exit_program() { handle_message({kMessageClose, 0, {}, 0}); }

void Application::open_settings() {
  const std::int32_t clock24 = settings_.timeformat;
  if (options_.edit_settings) options_.edit_settings();
  grid_.request_redraw();
  if (day_view_.is_open()) {
    if (settings_.timeformat != clock24) handle_message({kMessageRefresh, 0, {}, 0});
    day_view_.focus_list();
  }
  host_.window.show_wait_cursor();
  FlushSettings(host_.registry);
  host_.window.hide_wait_cursor();
}

void Application::list_profiles() {
  std::vector<MenuItem> items;
  items.push_back({kCommandFirstProfile, load_string(StringId::all_profiles, language()), true,
                   settings_.activeprofilename == kAllProfile});
  items.push_back({});  // the separator keeps the second position
  state_.profile_count = listProfilesInMenu(volume_, settings_.activeprofilename, items);
  if (state_.profile_count == 0) items.resize(1);
  settings_.profile_item_count = state_.profile_count;
  profile_menu_ = items;
  host_.menu_bar.set_menu(kCommandProfileMenu, items);
}

void Application::select_profile(std::uint32_t command) {
  Text name;
  for (MenuItem& item : profile_menu_) {
    item.checked = item.command == command;
    if (item.checked) name = command == kCommandFirstProfile ? Text(kAllProfile) : item.text;
  }
  if (name.empty()) return;  // the menu holds fewer than the range of commands
  name = cut(name, kProfileNameLength);
  const bool changed = name != settings_.activeprofilename;
  settings_.activeprofilename = name;
  WriteTextSetting(host_.registry, u"activeprofilename", name);
  FlushSettings(host_.registry);
  load_active_profile(volume_, settings_);
  list_profiles();
  if (changed) reload_view();
}

}  // namespace orvello
