// The program: one window, its dispatch tables, the views and the drawing worker. Everything here
// runs on the user-interface thread except what the worker draws.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/application_state.h"
#include "app/day_view.h"
#include "app/forms.h"
#include "app/grid_view.h"
#include "app/modality.h"
#include "app/once_boxes.h"
#include "app/profile_menu.h"
#include "app/read_trouble.h"
#include "app/told_registry.h"
#include "ports/calendar_store.h"
#include "ports/dialog.h"
#include "ports/host.h"
#include "ports/main_window.h"
#include "resources/strings.h"
#include "settings/settings_record.h"
#include "settings/volume.h"
#include "store/store_session.h"

namespace orvello {

// What the command line decides about a start.
struct StartOptions {
  int view = -1;      // 0 Day, 1 Month, 2 Year; -1: as the setting says
  MonthDayYear date;  // shown first; year 0: today
};

enum class StartResult { running, other_instance, no_window };

inline constexpr int kExitNoWindow = 16;

class Application : public MessageHandler,
                    public StoreListener,
                    private ViewCommands,
                    private SettingsCommands {
 public:
  Application(Host host, const StartOptions& options, const FormParts& forms = {});

  StartResult start_up();
  // Shows a new user what can be done, once: until it has been seen to its end.
  void greet();
  // What was typed into the editor when an earlier run ended without saving it.
  void offer_draft();

  // Another process has changed settings.
  void load_settings_again();

  bool handle_message(const Message& message) override;
  void store_changed(std::uint32_t notification) override;

  void set_current_date(const MonthDayYear& date) override;
  void show_day(const MonthDayYear& date, const RowKey& key = {}) override;
  void send_command(std::uint32_t command) override;
  Canvas& measuring_canvas() override { return measuring_->canvas(); }

  // Runs a call that may open a dialog, in the order of the calls: from the message loop, once the
  // start-up has ended and nothing modal stands.
  void when_free(std::function<void()> call) { modality_.when_free(std::move(call)); }
  // The ports to open boxes and dialogs with.
  const Host& host() const { return host_; }

  ApplicationState& state() { return state_; }
  const SettingsRecord& settings() const { return settings_; }
  StoreSession& session() { return session_; }
  EditHistory& history() { return history_; }
  // Labels that came with appointments from elsewhere get a colour each, if they have none.
  void color_labels(const std::vector<Text>& labels);
  const ReadTrouble& trouble() const { return trouble_; }
  GridView& grid() { return grid_; }
  const DayView& day() const { return day_view_; }
  const PasteSource& paste_source() const { return operations_.source(); }

 private:
  friend struct MessageTable;
  friend struct CommandTable;

  // Messages.
  bool on_create(const Message&);
  bool on_paint(const Message&);
  bool on_deactivated(const Message&);
  bool on_activate(const Message&);
  bool on_destroy(const Message&);
  bool on_command(const Message&);
  bool on_close(const Message&);
  bool on_timer(const Message&);
  bool on_pointer(const Message&);
  bool on_focus(const Message&);
  bool on_key_down(const Message&);
  bool on_setting_change(const Message&);
  bool on_refresh(const Message&);
  bool on_snapshot(const Message&);
  bool on_free(const Message&);
  bool on_drawing_failed(const Message&);

  // Commands.
  void new_appointment();
  void exit_program();
  void open_settings();
  void undo();
  void redo();
  void search();
  void day_view();
  void month_view();
  void year_view();

  void run_command(std::uint32_t command);
  void measure_screen();
  Rect window_place(const ScreenInfo& screen) const;
  void lay_out();
  void create_menu_bar();
  void show_checked_view();
  void show_options_menu();
  void load_ink_libraries();
  void open_store();
  void load_conventions();
  bool enter_view(int mode);
  void show_grid(ViewMode mode);
  void check_day_change();
  void tell_unkept(Text reason);
  void read_again();
  bool low_resolution() const;

  // ViewCommands.
  void appointments_changed(bool reconnect) override;
  void note_read(ReadOutcome outcome) override;
  bool is_free() const override { return modality_.free(); }
  Language language() const override { return language_of(host_.locale); }

  // SettingsCommands.
  bool preview(ViewMode view, const SettingsRecord& settings, Canvas& canvas) override;
  void preview_colors(ColorGroup group, const SettingsRecord& settings, Canvas& canvas) override;
  void reload_view() override;
  void reopen_day_view() override;
  void rebuild_profile_menu() override { profiles_.rebuild(); }

  ToldRegistry registry_;
  Modality modality_;
  Host host_;  // with the counted ports
  StartOptions options_;
  ApplicationState state_;
  OnceBoxes volume_boxes_;
  SettingsVolume volume_;
  SettingsRecord settings_;
  ProfileMenu profiles_{host_, volume_, settings_};
  StoreSession session_;
  EditHistory history_{session_};
  Forms forms_;
  ReadTrouble trouble_{modality_, session_};
  AppointmentOperations operations_;
  GridView grid_;
  DayView day_view_;
  std::unique_ptr<Surface> measuring_;
  Image today_button_;
  Text search_text_;    // the last one typed
  RowKey row_to_show_;  // with the Day view that is opened next
  Rect place_;          // the window's, in the work area
  bool started_ = false;
  bool ink_loaded_[2] = {false, false};
};

}  // namespace orvello
