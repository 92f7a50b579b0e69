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
#include "app/drawing_worker.h"
#include "app/grid_pointer.h"
#include "app/modality.h"
#include "app/once_boxes.h"
#include "app/read_trouble.h"
#include "ports/calendar_store.h"
#include "ports/dialog.h"
#include "ports/host.h"
#include "ports/main_window.h"
#include "resources/strings.h"
#include "settings/settings_record.h"
#include "settings/volume.h"
#include "store/store_session.h"
#include "views/accessible_text.h"
#include "views/month_layout.h"
#include "views/month_snapshot.h"
#include "views/year_layout.h"
#include "views/year_snapshot.h"

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

class Application : public MessageHandler,
                    public StoreListener,
                    public AccessibleView,
                    private ViewCommands {
 public:
  Application(Host host, StartOptions options);
  ~Application() override;

  StartResult start_up();
  // Shows a new user what can be done, once: until it has been seen to its end.
  void greet();

  bool handle_message(const Message& message) override;
  void store_changed(std::uint32_t notification) override;

  // What a screen reader reads of the Month and Year views.
  AccessibleGrid accessible_grid() override;
  std::vector<Text> accessible_items(int cell) override;
  void choose_accessible(int cell) override;

  // Requests a drawing of the current view; nothing in the Day view. Several requests before the
  // next messages are handled make one drawing.
  void request_redraw();
  // Hands a requested drawing to the worker at once: for a caller without a message loop.
  void draw_requested();
  void set_current_date(const MonthDayYear& date) override;
  void send_command(std::uint32_t command) override;
  void open_day(int day_parameter);  // the Day view, by its parameter
  void ask_for_day_popup(const MonthDayYear& date);

  // Runs a call that may open a dialog, in the order of the calls: from the message loop, once the
  // start-up has ended and nothing modal stands.
  void when_free(std::function<void()> call) { modality_.when_free(std::move(call)); }
  // The ports to open boxes and dialogs with.
  const Host& host() const { return host_; }

  ApplicationState& state() { return state_; }
  const SettingsRecord& settings() const { return settings_; }
  DrawingWorker& worker() { return worker_; }
  StoreSession& session() { return session_; }
  int redraw_requests() const { return redraw_requests_; }
  const MonthLayout& month_layout() const { return month_layout_; }
  const YearLayout& year_layout() const { return year_layout_; }
  const ReadTrouble& trouble() const { return trouble_; }
  const MonthSnapshot* drawn_month() const { return month_snapshot_.get(); }
  const YearSnapshot* drawn_year() const { return year_snapshot_.get(); }
  const DayView& day() const { return day_view_; }
  const PasteSource& paste_source() const { return paste_source_; }
  bool focus_visible() const { return focus_visible_; }

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
  bool on_snapshot(const Message&);
  bool on_free(const Message&);
  bool on_drawing_failed(const Message&);

  // Commands.
  void new_appointment();
  void exit_program();
  void open_settings();
  void day_view();
  void month_view();
  void year_view();
  void select_profile(std::uint32_t command);

  void run_command(std::uint32_t command);
  void measure_screen();
  Rect window_place(const ScreenInfo& screen) const;
  void lay_out();
  void create_surface();
  void create_menu_bar();
  void list_profiles();
  void show_checked_view();
  void load_ink_libraries();
  void open_store();
  void load_conventions();
  bool enter_view(int mode);
  void check_day_change();
  void read_again();
  void leave_day_and_label();

  // The grids of the Month and Year views.
  void redraw_selection();
  void take_snapshot();
  ViewDrawing month_drawing(bool same_items);
  ViewDrawing year_drawing(bool same_items);
  bool grid_key(const Message& message);
  void show_date(const MonthDayYear& date);
  void step_days(int days);
  void step_months(int months);
  void grid_action(const GridPointer::Action& action);
  GridTarget grid_target(Point point) const;
  Rect day_place(const MonthDayYear& date) const;
  void show_day(const MonthDayYear& date);
  void hover(const Message& message);
  void hide_hover_label();
  Text date_text(const MonthDayYear& date, int showdaylabel) const;  // as popups are headed
  std::vector<CompactRow> compact_rows(const MonthDayYear& date);
  std::shared_ptr<MonthSnapshot> read_month();
  std::shared_ptr<const YearSnapshot> read_year();
  const DayCount& day_count();
  std::optional<MonthDayYear> cell_date(int cell) const;
  bool passes_profile(TextView categories) const;
  bool low_resolution() const;

  // ViewCommands.
  void appointments_changed(bool reconnect) override;
  void note_read(ReadOutcome outcome) override;
  bool is_free() const override { return modality_.free(); }
  bool can_edit() const override { return options_.edit_appointment != nullptr; }
  Canvas& measuring_canvas() override { return measuring_->canvas(); }
  Language language() const override;

  Modality modality_;
  Host host_;  // with the counted ports
  StartOptions options_;
  ApplicationState state_;
  OnceBoxes volume_boxes_;
  SettingsVolume volume_;
  SettingsRecord settings_;
  StoreSession session_;
  ReadTrouble trouble_{modality_, session_};
  DrawingWorker worker_;
  GridPointer grid_pointer_;
  MonthLayout month_layout_;
  YearLayout year_layout_;
  std::shared_ptr<const MonthSnapshot> month_snapshot_;  // what was drawn last
  std::shared_ptr<const YearSnapshot> year_snapshot_;
  bool month_read_ = false, year_read_ = false;  // those hold what was read once
  PasteSource paste_source_;
  DayView day_view_;
  std::unique_ptr<Surface> measuring_;
  MonthDayYear hovered_;  // the day that the hover label names, year 0 without one
  DayCount day_count_;    // of the page that counted_for_ lies on
  ViewMode counted_mode_ = ViewMode::none_yet;
  MonthDayYear counted_for_;
  bool focus_visible_ = false;  // the keyboard was used last
  bool redraw_pending_ = false;
  bool items_wanted_ = false;  // by the pending redraw: not only the selection moved
  std::vector<MenuItem> profile_menu_;
  Image today_button_;
  Rect place_;  // the window's, in the work area
  bool started_ = false;
  int redraw_requests_ = 0;
  bool ink_loaded_[2] = {false, false};
};

}  // namespace orvello
