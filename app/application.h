// The program: one window, its dispatch tables, the views and the drawing worker. Everything here
// runs on the user-interface thread except what the worker draws.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/application_state.h"
#include "app/day_dialogs.h"
#include "app/drawing_worker.h"
#include "app/month_pointer.h"
#include "ports/calendar_store.h"
#include "ports/dialogs.h"
#include "ports/host.h"
#include "ports/main_window.h"
#include "resources/strings.h"
#include "settings/settings_record.h"
#include "settings/volume.h"
#include "store/store_session.h"
#include "views/month_layout.h"

namespace orvello {

// What the command line decides about a start.
struct StartOptions {
  int view = -1;      // 0 Day, 1 Month, 2 Year; -1: as the setting says
  MonthDayYear date;  // shown first; year 0: today
  // Forms that open from commands. An empty one greys its command.
  std::function<void(std::int32_t oid, bool whole_series)> edit_appointment;
  std::function<void()> edit_settings;
};

enum class StartResult { running, other_instance, no_window };

inline constexpr int kExitNoWindow = 16;

class Application : public MessageHandler, public StoreListener, private DayCommands {
 public:
  Application(Host host, StartOptions options);
  ~Application() override;

  StartResult start_up();

  bool handle_message(const Message& message) override;
  void store_changed(std::uint32_t notification) override;

  // Requests a drawing of the current view from fresh data; nothing in the Day view.
  void request_redraw();
  void set_current_date(const MonthDayYear& date);
  void send_command(std::uint32_t command);
  void open_day(int day_parameter);  // the Day view, by its parameter
  void ask_for_day_popup(const MonthDayYear& date);

  ApplicationState& state() { return state_; }
  const SettingsRecord& settings() const { return settings_; }
  DrawingWorker& worker() { return worker_; }
  StoreSession& session() { return session_; }
  int redraw_requests() const { return redraw_requests_; }
  const MonthLayout& month_layout() const { return month_layout_; }

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
  bool on_key_down(const Message&);
  bool on_setting_change(const Message&);
  bool on_refresh(const Message&);

  // Commands.
  void new_appointment();
  void exit_program();
  void open_settings();
  void day_view();
  void month_view();
  void year_view();
  void select_profile(std::uint32_t command);

  void measure_screen();
  void lay_out();
  void create_surface();
  void create_menu_bar();
  void list_profiles();
  void show_checked_view();
  void load_ink_libraries();
  void open_store();
  void load_conventions();
  bool enter_view(int mode);
  void open_day_dialog();
  void close_day_dialog();
  void show_day();
  DayContent content_of(const MonthDayYear& date);
  void check_day_change();
  void step_months(int months);
  void month_action(const MonthPointer::Action& action);
  MonthTarget month_target(Point point) const;
  ViewDrawing month_drawing();
  ViewDrawing year_drawing();
  Language language() const;
  bool low_resolution() const;

  // DayCommands.
  DayContent day_content() override;
  void step_days(int days) override;
  void go_to_today() override;

  Host host_;
  StartOptions options_;
  ApplicationState state_;
  SettingsVolume volume_;
  SettingsRecord settings_;
  StoreSession session_;
  DrawingWorker worker_;
  MonthPointer month_pointer_;
  MonthLayout month_layout_;
  DayProcedure day_procedure_{*this};
  std::unique_ptr<Dialog> day_view_;
  std::vector<MenuItem> profile_menu_;
  Image today_button_;
  Rect place_;  // the window's, in the work area
  bool started_ = false;
  int redraw_requests_ = 0;
  bool ink_loaded_[2] = {false, false};
};

}  // namespace orvello
