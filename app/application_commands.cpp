// The commands: switching views and the forms.

#include <utility>

#include "app/application.h"
#include "app/color_preview.h"
#include "app/own_messages.h"
#include "app/search_form.h"
#include "app/view_preview.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "resources/menus.h"
#include "settings/new_labels.h"
#include "settings/profiles.h"
#include "settings/registry_access.h"
#include "store/wait_cursor.h"

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
  day_view_.open(std::exchange(row_to_show_, {}));
  show_checked_view();
}

void Application::show_day(const MonthDayYear& date, const RowKey& key) {
  set_current_date(date);
  day_view_.close();
  row_to_show_ = key;
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
  forms_.edit_appointment(state_);
  day_view_.focus_list();
}

// What the options' menu offers now.
void Application::show_options_menu() {
  host_.menu_bar.set_menu(kCommandOptions,
                          options_menu(language(), {history_.can_undo(), history_.can_redo()}));
}

void Application::color_labels(const std::vector<Text>& labels) {
  give_label_colors(volume_, settings_.category_props, labels);
}

void Application::undo() {
  const bool undone = [&] {
    const WaitCursor waiting(host_.window);
    return history_.can_undo() && history_.undo(host_.boxes);
  }();
  if (undone) appointments_changed(false);
  show_options_menu();
}

void Application::redo() {
  const bool redone = [&] {
    const WaitCursor waiting(host_.window);
    return history_.can_redo() && history_.redo(host_.boxes);
  }();
  if (redone) appointments_changed(false);
  show_options_menu();
}

// A search finds what the active profile hides as well: that must not stay hidden when it is
// opened.
void Application::search() {
  const auto found = ask_search({host_, session_, settings_, state_.form_layout, language(),
                                 measuring_canvas(), state_.store_changes},
                                search_text_);
  if (!found) return day_view_.focus_list();
  if (!profileAllowsCategory(settings_, found->item.summary->categories))
    profiles_.select(kCommandFirstProfile);
  const SystemTime day = civil_of(whole_day(found->item.start));
  if (day.year < kFirstYear || day.year > kLastYear) return day_view_.focus_list();
  show_day({day.month, day.day, day.year}, found->key());
}

void Application::offer_draft() {
  if (forms_.offer_draft()) day_view_.focus_list();
}

void Application::exit_program() { handle_message({kMessageClose, 0, {}, 0}); }

void Application::open_settings() {
  forms_.change_settings(*this);
  // Also the Day view's rows: few settings leave them as they were.
  reload_view();
  day_view_.focus_list();
  const WaitCursor waiting(host_.window);
  FlushSettings(host_.registry);
}

bool Application::preview(ViewMode view, const SettingsRecord& settings, Canvas& canvas) {
  return draw_preview(view, {settings, state_, session_, host_.clock, language(), today_button_},
                      canvas);
}

void Application::preview_colors(ColorGroup group, const SettingsRecord& settings, Canvas& canvas) {
  draw_color_preview(group, {settings, state_, session_, host_.clock, language(), today_button_},
                     canvas);
}

void Application::reopen_day_view() {
  day_view_.close();
  send_command(kCommandDayView);
}

}  // namespace orvello
