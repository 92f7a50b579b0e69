// The Month and Year views: two pages over one drawing worker, with their pen and keys, the hover
// label, the day popup and what a screen reader is told. User-interface thread.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "app/application_state.h"
#include "app/appointment_operations.h"
#include "app/drawing_worker.h"
#include "app/grid_pointer.h"
#include "app/row_carrier.h"
#include "app/view_commands.h"
#include "ports/host.h"
#include "settings/settings_record.h"
#include "store/day_agenda.h"
#include "store/store_session.h"
#include "views/month_page.h"
#include "views/year_page.h"

namespace orvello {

class GridView : public AccessibleView, private RowCarrier {
 public:
  struct Context {
    Host& host;
    ApplicationState& state;
    SettingsRecord& settings;
    StoreSession& session;
    AppointmentOperations& operations;
    ViewCommands& commands;
  };
  explicit GridView(const Context& context);

  void start();  // with the window: the worker, and the view for a screen reader
  void stop();   // nothing is drawn any more, the surface is gone
  // A surface of the layout's size: together with the layout, so that they always agree.
  void fit();

  void enter(ViewMode mode);  // Month or Year
  void leave();               // neither: the Day view covers the surface
  bool is_shown() const { return page_ != nullptr; }

  // Requests a drawing; nothing while neither is shown. Several requests before the next messages
  // are handled make one snapshot and one drawing.
  void request_redraw();
  // Hands a requested drawing to the worker at once: for the message that was posted, or for a
  // caller without a message loop.
  void draw_requested();
  void copy_to_window() { worker_.copy_to_window(); }
  void hide_label();

  // Messages; false: not for these views.
  bool on_pointer(const Message& message);
  bool on_key(const Message& message);
  void on_hold();               // the hold time has passed
  void on_edge();               // what is carried has stayed at an edge
  void show_focus(bool shown);  // the keyboard came, or went elsewhere

  AccessibleGrid accessible_grid() override;
  std::vector<Text> accessible_items(int cell) override;
  void choose_accessible(int cell) override;

  DrawingWorker& worker() { return worker_; }
  const MonthPage& month() const { return month_; }
  const YearPage& year() const { return year_; }
  int redraw_requests() const { return redraw_requests_; }
  bool focus_visible() const { return focus_visible_; }

 private:
  void redraw_selection();
  // The page as the window shows it, or will with the drawing under way; null before.
  const GridPage* standing() const { return stands_ ? page_ : nullptr; }

  bool key(const Message& message);
  void act(const GridPointer::Action& action);
  void show_date(const MonthDayYear& date);
  void step_days(int days);
  void step_months(int months);
  GridTarget hit(Point point) const;

  void press(const Message& message);
  void move(const Message& message);
  void release(const Message& message);
  void slide(Point at);
  void mark(const MonthDayYear& date);  // the day that the pointer is about

  // What is carried, by the pen on the grid or out of a popup.
  void take(const RowKey& key, const MonthDayYear& from, Point at) override;
  void carry_on(Point at) override;
  bool let_go(Point at) override;
  void finish_carrying();
  void put_back();
  void end_carrying();
  void show_carried();
  void watch_edges(Point at);

  void open_menu(const GridTarget& target, Point at);
  void open_menu_by_keys();
  void run_command(std::uint32_t command, const RowKey& key,
                   const AppointmentOperations::Spot& spot);
  AppointmentOperations::Spot selected_spot() const;

  void hover(const Message& message);
  void ask_for_day_popup(const MonthDayYear& date);
  Text date_text(const MonthDayYear& date, int showdaylabel) const;  // as popups are headed
  std::vector<CompactRow> compact_rows(const MonthDayYear& date);
  const DayCount& day_count();

  Context c_;
  DrawingWorker worker_;
  MonthPage month_;
  YearPage year_;
  GridPage* page_ = nullptr;  // the one shown
  bool stands_ = false;       // its snapshot is one for the surface
  GridPointer pointer_;
  bool focus_visible_ = false;  // the keyboard was used last
  bool redraw_pending_ = false;
  bool items_wanted_ = false;  // by the pending redraw: not only the selection moved
  int redraw_requests_ = 0;
  struct Carried {
    RowKey key;
    Text subject;
    MonthDayYear from, shown_before;
    MonthDayYear over;  // year 0: no day
    Point at;
    int edge = 0;  // -1 or 1: it stays at the one towards the page before or after
  };
  std::optional<Carried> carried_;
  MonthDayYear marked_;   // year 0: none
  MonthDayYear hovered_;  // the day that the hover label names, year 0 without one
  DayCount day_count_;    // of the page with counted_for_; empty: not counted yet
  MonthDayYear counted_for_;
};

}  // namespace orvello
