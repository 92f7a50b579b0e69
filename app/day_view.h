// The Day view: the modeless dialog with the header strip and the day's list, its pen and keys, and
// the commands on its rows.
#pragma once

#include <memory>
#include <optional>

#include "app/application_state.h"
#include "app/appointment_operations.h"
#include "app/list_pointer.h"
#include "app/time_drag.h"
#include "app/view_commands.h"
#include "ports/host.h"
#include "resources/strings.h"
#include "settings/settings_record.h"
#include "store/day_agenda.h"
#include "store/notes_text.h"
#include "store/row_key.h"
#include "store/store_session.h"
#include "views/day_header.h"
#include "views/day_list.h"
#include "views/notes_bubble.h"

namespace orvello {

class DayView : public DialogProcedure {
 public:
  // The row marker when no row is selected.
  static constexpr int kPasteTarget = -1, kNoRow = -2;

  struct Context {
    Host& host;
    ApplicationState& state;
    SettingsRecord& settings;
    StoreSession& session;
    AppointmentOperations& operations;
    ViewCommands& commands;
    const Image& today_picture;
  };
  explicit DayView(const Context& context) : c_(context) {}

  // As a modeless dialog over the main window, standing at the row of `key`, if the day has it.
  void open(const RowKey& key = {});
  void close();
  bool is_open() const { return dialog_ != nullptr; }
  void rebuild();     // after a change of date, appointments or settings
  void read_again();  // what could not be read; nothing changes if it still cannot
  void repaint_header();
  void focus_list();

  void handle(Dialog& dialog, const DialogEvent& event) override;

  const DayAgenda& agenda() const { return agenda_; }
  int selected_row() const { return row_; }
  const DayHeaderLayout& header() const { return header_; }

 private:
  // Building.
  ReadOutcome read();
  void build_list();
  void show_list();
  void renew_list();
  DayHeaderInput header_input() const;
  Day shown_day() const;

  // Header.
  void paint_header(const DialogEvent& event);
  void header_event(const DialogEvent& event);
  void move_header_focus(int step);
  void use_zone(DayHeaderZone zone);
  void tell_parts();
  void choose_date();
  Point below_date() const;  // in the window, where a month opens
  void go_to_today();
  void next_color_style();

  // List.
  void list_event(const DialogEvent& event);
  void list_key(const DialogEvent& event);
  bool command_key(const DialogEvent& event);
  void press_list(ReportList& list, const DialogEvent& event);
  void act(const ListPointer::Action& action);
  void tap();
  void select_row(int row);
  void stand_at(const RowKey& key);
  void show_whole(int row);  // of an appointment's rows as much as the list holds
  void step_selection(int direction);
  void turn(int days);
  void show_date(const MonthDayYear& date);
  void open_menu(Point at, const RowKey& key);
  void open_notes(const RowKey& key);
  NotesBubbleText bubble_text(const RowKey& key, const AppointmentNotes& notes) const;
  std::optional<TimeDrag> drag_of(int row, Point at) const;
  void carry(const ListPointer::Action& action);
  void drop(const ListPointer::Action& action);
  void stop_carrying();
  void edit(const RowKey& key);

  // Row commands.
  void run_command(std::uint32_t command, const RowKey& key);
  RowKey key_of(int row) const;
  RowKey selected() const { return key_of(row_); }
  // The row that it has now; another occurrence's of it when that is all there is of a moved one.
  int row_of(const RowKey& key) const;

  Context c_;
  std::unique_ptr<Dialog> owned_;
  Dialog* dialog_ = nullptr;     // there from its init event on; a command may close it
  DayAgenda read_;               // as the store gave it last
  std::optional<Day> read_day_;  // its day; none: nothing could be read
  DayAgenda agenda_;  // the same with its subjects wrapped: row by row what the list shows
  DayHeaderLayout header_;
  ListPointer pointer_;
  Day built_day_;  // that the list shows
  int times_width_ = 0;
  int icons_x_ = 0;  // the middle of the icon column
  int row_ = kNoRow;
  RowKey pressed_;  // under the pen, also when the list is made anew meanwhile
  RowKey opened_at_;
  RowKey tapped_;                 // its notes open unless a second tap comes
  RowKey closed_;                 // whose bubble was closed by a press, which may come next
  RowKey press_closed_;           // and which this press has closed
  bool alone_ = false;            // no second tap can follow this press
  std::optional<TimeDrag> drag_;  // what the pen carries to another time
  DayHeaderZone pressed_zone_ = DayHeaderZone::none;
  DayHeaderZone focused_zone_ = DayHeaderZone::none;  // none without the focus
  bool pen_down_ = false;
};

}  // namespace orvello
