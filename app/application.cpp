// Dispatch: the message and command tables, searched in order.

#include "app/application.h"

#include <utility>

#include "app/own_messages.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "store/wait_cursor.h"

namespace orvello {

struct MessageTable {
  using Handler = bool (Application::*)(const Message&);
  struct Row {
    std::uint32_t id;
    Handler handler;
  };
  static constexpr Row kRows[] = {
      {kMessageCreate, &Application::on_create},
      {kMessagePaint, &Application::on_paint},
      {kMessageDeactivated, &Application::on_deactivated},
      {kMessageActivate, &Application::on_activate},
      {kMessageDestroy, &Application::on_destroy},
      {kMessageCommand, &Application::on_command},
      {kMessageClose, &Application::on_close},
      {kMessageTimer, &Application::on_timer},
      {kMessageButtonDown, &Application::on_pointer},
      {kMessageButtonUp, &Application::on_pointer},
      {kMessageMouseMove, &Application::on_pointer},
      {kMessageMouseWheel, &Application::on_pointer},
      {kMessageMouseSideWheel, &Application::on_pointer},
      {kMessageContextMenu, &Application::on_pointer},
      {kMessageSetFocus, &Application::on_focus},
      {kMessageKillFocus, &Application::on_focus},
      {kMessageKeyDown, &Application::on_key_down},
      {kMessageSettingChange, &Application::on_setting_change},
      {kMessageSnapshot, &Application::on_snapshot},
      {kMessageFree, &Application::on_free},
      {kMessageDrawingFailed, &Application::on_drawing_failed},
      {kMessageRefresh, &Application::on_refresh},
      {kMessageReconnect, &Application::on_refresh},
      {kMessageRefresh401, &Application::on_refresh},
      {kMessageRefresh3FD, &Application::on_refresh},
      {kItemCreatedLocal, &Application::on_refresh},
      {kItemDeletedLocal, &Application::on_refresh},
      {kItemChangedLocal, &Application::on_refresh},
      {kItemCreatedRemote, &Application::on_refresh},
      {kItemDeletedRemote, &Application::on_refresh},
      {kItemChangedRemote, &Application::on_refresh},
  };
};

struct CommandTable {
  using Handler = void (Application::*)();
  struct Row {
    std::uint32_t id;
    Handler handler;
  };
  static constexpr Row kRows[] = {
      {kCommandNew, &Application::new_appointment},
      {kCommandExit, &Application::exit_program},
      {kCommandSettings, &Application::open_settings},
      {kCommandDayView, &Application::day_view},
      {kCommandMonthView, &Application::month_view},
      {kCommandYearView, &Application::year_view},
      {kCommandUndo, &Application::undo},
      {kCommandRedo, &Application::redo},
      {kCommandSearch, &Application::search},
  };
};

namespace {

Host with_registry(const Host& host, Registry& registry) {
  return {host.clock,    host.locale, registry,      host.files, host.databases,
          host.surfaces, host.window, host.menu_bar, host.boxes, host.dialogs,
          host.store,    host.input,  host.shell};
}

}  // namespace

Application::Application(Host host, const StartOptions& options, const FormParts& forms)
    : registry_(host.registry, [this](Text reason) { tell_unkept(std::move(reason)); }),
      modality_(with_registry(host, registry_)),
      host_(modality_.counted()),
      options_(options),
      volume_boxes_(host_.boxes),
      volume_{host.databases, volume_boxes_, host.files},
      session_(host.store, host_.boxes),
      forms_(forms, {host_, session_, settings_, volume_, state_.form_layout,
                     state_.platform_generation, history_}),
      operations_({host_, state_, settings_, session_, history_, *this}),
      grid_({host_, state_, settings_, session_, operations_, *this}),
      day_view_({host_, state_, settings_, session_, operations_, *this, today_button_}) {}

bool Application::handle_message(const Message& message) {
  for (const MessageTable::Row& row : MessageTable::kRows)
    if (row.id == message.id) return (this->*row.handler)(message);
  return false;
}

// One that was chosen before what stands now is for later.
bool Application::on_command(const Message& message) {
  const std::uint32_t command = message.wparam;
  if (modality_.free())
    run_command(command);
  else
    when_free([this, command] { run_command(command); });
  return true;
}

void Application::run_command(std::uint32_t command) {
  for (const CommandTable::Row& row : CommandTable::kRows)
    if (row.id == command) return (this->*row.handler)();
  if (profiles_.select(command)) reload_view();
}

void Application::send_command(std::uint32_t command) { run_command(command); }

void Application::tell_unkept(Text reason) {
  when_free([this, reason = std::move(reason)] {
    host_.boxes.show(load_string(StringId::box_unkept, language()) + u"\n" + reason,
                     load_string(StringId::box_error, language()), BoxIcon::error, BoxButtons::ok,
                     true);
  });
}

bool Application::on_free(const Message&) {
  modality_.run_next();
  return true;
}

bool Application::on_drawing_failed(const Message&) {
  grid_.worker().rethrow_failure();
  return true;
}

void Application::store_changed(std::uint32_t notification) {
  ++state_.store_changes;
  host_.window.post({notification, 0, {}, 0});
}

bool Application::on_snapshot(const Message&) {
  grid_.draw_requested();
  return true;
}

bool Application::on_paint(const Message&) {
  grid_.copy_to_window();
  return true;
}

bool Application::on_pointer(const Message& message) { return grid_.on_pointer(message); }

bool Application::on_focus(const Message& message) {
  grid_.show_focus(message.id == kMessageSetFocus);
  return true;
}

bool Application::on_key_down(const Message& message) {
  const bool held = (message.detail & kControlHeld) != 0;
  if (held && message.wparam >= u'1' && message.wparam <= u'3')
    return enter_view(static_cast<int>(message.wparam - u'1'));
  if (held && message.wparam == u'Z') {
    send_command((message.detail & kShiftHeld) != 0 ? kCommandRedo : kCommandUndo);
    return true;
  }
  if (held && message.wparam == u'F') return send_command(kCommandSearch), true;
  if (message.wparam == kKeyInsert || message.wparam == u'N') {
    send_command(kCommandNew);  // on the selected day
    return true;
  }
  return grid_.on_key(message);
}

bool Application::on_deactivated(const Message&) {
  if (!host_.window.is_active()) host_.menu_bar.destroy();
  return true;
}

bool Application::on_activate(const Message& message) {
  if ((message.wparam & 0xFFFF) != 0 && !host_.menu_bar.exists()) create_menu_bar();
  return true;
}

bool Application::on_close(const Message& message) {
  if (!modality_.free()) return when_free([this, message] { handle_message(message); }), true;
  host_.menu_bar.destroy();
  host_.window.destroy();
  return true;
}

bool Application::on_timer(const Message& message) {
  if (message.wparam == kTimerDayChange) check_day_change();
  if (message.wparam == kTimerReadAgain) read_again();
  if (message.wparam == kTimerHold) grid_.on_hold();
  if (message.wparam == kTimerEdge) grid_.on_edge();
  return true;
}

bool Application::on_refresh(const Message& message) {
  if (!started_) return when_free([this, message] { handle_message(message); }), true;
  if (message.id == kMessageReconnect) {
    session_.Close();
    session_.Open(this);
  }
  reload_view();
  return true;
}

// The view that is shown, from the store and the settings as they are now.
void Application::reload_view() {
  grid_.hide_label();
  show_options_menu();
  if (grid_.is_shown()) return grid_.request_redraw();
  const WaitCursor waiting(host_.window);
  day_view_.rebuild();
}

void Application::note_read(ReadOutcome outcome) {
  trouble_.note(outcome, state_.form_layout, language(), measuring_canvas());
}

void Application::read_again() {
  if (!trouble_.standing()) return;
  day_view_.read_again();
  grid_.request_redraw();
}

void Application::appointments_changed(bool reconnect) {
  handle_message({reconnect ? kMessageReconnect : kMessageRefresh, 0, {}, 0});
}

// Nothing but the day matters to this timer: it moves the mark of today at midnight.
void Application::check_day_change() {
  const MonthDayYear now = TodayTriple(host_.clock.local_time());
  if (now == state_.today) return;
  state_.today = now;
  settings_.today = now;
  if (state_.view_mode != ViewMode::month) return;
  grid_.request_redraw();
  host_.window.invalidate();
}

// Layout and surface change together, or not at all: an input panel that comes up only takes room
// from the window.
bool Application::on_setting_change(const Message& message) {
  if (message.wparam != kScreenRotated) {
    host_.window.move(window_place(host_.window.screen()));
    return true;
  }
  measure_screen();
  grid_.fit();
  host_.window.move(place_);
  const ViewMode mode = state_.view_mode;
  state_.view_mode = ViewMode::none_yet;
  if (!enter_view(static_cast<int>(mode))) state_.view_mode = mode;
  return true;
}

}  // namespace orvello
