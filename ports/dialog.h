// Dialogs as data: a template names the controls and their places, a procedure answers events and
// talks to the controls by id. User-interface thread. Setters are silent: only the person makes
// events. Operations on an id that the template lacks do nothing.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/geometry.h"
#include "base/text.h"
#include "calendar/dates.h"
#include "ports/accessibility.h"
#include "ports/canvas.h"
#include "ports/menu_bar.h"
#include "ports/report_list.h"

namespace orvello {

struct ControlTemplate {
  enum class Kind {
    label,
    button,
    default_button,
    check_box,
    radio_button,  // one of those that follow each other in the template
    edit,
    list,
    report,          // a ReportList
    month_calendar,  // a month to choose a day from
    custom           // drawn by the procedure; takes the pointer and keys
  };
  Kind kind = Kind::label;
  int id = 0;
  Text text;
  Rect place;  // pixels at 96 dpi on a 240-pixel wide screen; the host scales and lets it breathe
};

struct DialogTemplate {
  int id = 0;
  Text title;
  bool full_screen = true;
  Size size;  // at 96 dpi
  std::vector<ControlTemplate> controls;

  // A popup has no title and no close button. A press beside it is the event focus_lost without a
  // control; Escape is the event close.
  bool popup = false;
  // Where a popup stands in the main window, in device pixels; empty: in the middle, at its size.
  Rect place;
  // Its outline in device pixels from that place's corner; empty: the whole rectangle.
  std::vector<Point> outline;
};

struct DialogEvent {
  enum class Kind {
    init,
    command,
    changed,  // by a person; of a custom control: it got the focus
    timer,
    focus_lost,
    paint,
    close,
    pointer_down,  // the pointer on a custom or report control
    pointer_move,  // while it is down
    pointer_up,    // also when it has left the control meanwhile
    double_tap,    // the second pointer_down at one place, instead of that
    key            // pressed on a custom or report control, a number of ports/messages.h
  };
  Kind kind = Kind::init;
  int control = 0;           // or the timer's id
  Canvas* canvas = nullptr;  // paint of a custom control
  Size size;                 // of that control, also for its pointer events
  Point point{};             // of the pointer, in the control's device pixels
  std::uint32_t key = 0;
  bool control_held = false;  // the Control and Shift keys, with a key
  bool shift_held = false;
};

class Dialog {
 public:
  virtual ~Dialog() = default;
  virtual Text text(int control) const = 0;
  virtual void set_text(int control, TextView text) = 0;
  virtual bool checked(int control) const = 0;
  virtual void set_checked(int control, bool checked) = 0;
  virtual void enable(int control, bool enabled) = 0;
  virtual void show(int control, bool shown) = 0;
  virtual void focus(int control) = 0;
  virtual void set_rows(int control, const std::vector<Text>& rows) = 0;
  virtual int selected_row(int control) const = 0;  // -1: none
  virtual void select_row(int control, int row) = 0;
  virtual void invalidate(int control) = 0;
  virtual ReportList* report(int control) = 0;  // null when it is no report; as old as the dialog
  // A month_calendar: the day chosen in it (event changed when a person moves on, command when one
  // is tapped or taken with Return), the day marked as today, and where its weeks start.
  virtual void set_calendar(int control, const MonthDayYear& date, const MonthDayYear& today,
                            bool monday_first) = 0;
  virtual MonthDayYear calendar_date(int control) const = 0;
  // The parts of a custom control, for a screen reader; a part that is chosen there is a pointer
  // down and up in its middle. Places are the control's device pixels.
  virtual void set_parts(int control, const std::vector<AccessibleCell>& parts) = 0;
  // Opens a menu at a point of a control and waits for the choice; 0: none.
  virtual std::uint32_t track_menu(const std::vector<MenuItem>& items, int control, Point at) = 0;
  virtual void start_timer(int id, int milliseconds) = 0;
  virtual void stop_timer(int id) = 0;
  virtual void close(int result) = 0;  // ends a modal dialog with this result
};

class DialogProcedure {
 public:
  virtual ~DialogProcedure() = default;
  virtual void handle(Dialog& dialog, const DialogEvent& event) = 0;
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // Runs until the procedure closes it; a person's closing of the window is the event `close`,
  // after which the dialog ends with 0 unless the procedure closed it otherwise.
  virtual int run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) = 0;
  // A child that fills the main window above the menu bar; destroying the object closes it.
  virtual std::unique_ptr<Dialog> open_modeless(const DialogTemplate& dialog,
                                                DialogProcedure& procedure) = 0;
};

}  // namespace orvello
