// Dialogs as data: a template names the controls and their places, a procedure answers events and
// talks to the controls by id. User-interface thread.
//
// Setters are silent: only the person makes events, except that the focus tells of every move.
// Events are delivered one after the other, never inside a call of this port: each waits until the
// procedure has returned from the one before, also while that one runs a box, a menu or another
// dialog. Paints alone do not wait, and ticks of one timer that wait are one. Of a person's one
// action what is left comes first: taken, focus_lost, then focus_gained, then pointer_down,
// changed, taken or command of what was touched. An event of a dialog that has been closed
// meanwhile is not delivered. Operations on an id that the template lacks do nothing, nor do those
// that the kind of the control has no use for; a handle for one that it lacks, or that is of
// another kind, is null.
//
// The focus is a dialog's own: what stands above it takes none away. A control that is hidden,
// disabled or leaves with its step loses it, and then none has it. A modal dialog or page that is
// shown without one gives it to the first control that takes it, rather to none that is drawn.
//
// What is typed on a line presses it, and goes on to the edit that its command gives the focus to.
//
// Return presses the default button, unless the control has a use for it: a button or line itself,
// a list or calendar takes, text of several lines and what is drawn. Escape is a person's closing,
// and in a modeless dialog a key of what is drawn.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "ports/canvas.h"
#include "ports/controls.h"
#include "ports/dialog_template.h"
#include "ports/form_colors.h"
#include "ports/notes.h"
#include "ports/report_list.h"

namespace orvello {

struct DialogEvent {
  enum class Kind {
    init,     // before it is seen; of a sheet, each page's before the first is shown
    command,  // a button, box, radio button, toggle or line was tapped, or pressed by a key
    changed,  // a text, a selected row, a date, a slider: it may change again before it is taken
    taken,    // a row, date or position was chosen: tapped, let go, taken with Return, its list or
              // calendar closed with it, also the same one again; or left changed, when the focus
              // goes. Typed text is never taken
    focus_gained,
    focus_lost,  // also when the program moves the focus or hides the control; of a popup without a
                 // control: a press beside it
    timer,
    paint,
    close,         // a person closed it: may_close has agreed
    page_shown,    // of a sheet
    page_left,     // of a sheet; may_leave has agreed
    page_applied,  // of a sheet
    pointer_down,  // the pointer on a custom or report control
    pointer_move,  // while it is down
    pointer_up,    // also when it has left the control meanwhile
    double_tap,    // the second pointer_down at one place, instead of that
    context_menu,  // the pointer's other button went down on a custom or report control
    wheel,         // turned on one; on a report list only where it has nothing to scroll that way
    key  // pressed on a custom or report control, a number of messages.h; on an edit Up and Down
  };
  Kind kind = Kind::init;
  int control = 0;           // or the timer's id
  Canvas* canvas = nullptr;  // paint of a custom control
  Size size;                 // of that control, also for its pointer events
  Point point{};             // of the pointer, in the control's device pixels
  std::uint64_t time = 0;    // of the pointer's events: milliseconds since some moment; 0: unknown
  bool alone = false;        // a pointer_down that no double_tap follows: a screen reader's
  std::uint32_t key = 0;
  bool control_held = false;  // the Control and Shift keys, with a key
  bool shift_held = false;
  int notches = 0;        // of the wheel: up, or to the left, is above 0
  bool sideways = false;  // which wheel
};

// What `focus` does to the text of the control: as it was, all of it selected, the caret behind it.
enum class Caret { unchanged, all, end };

class Dialog {
 public:
  virtual ~Dialog() = default;
  // What stands in a control: of a list or drop list its selected row, of control 0 the dialog's
  // title, or the page's; nothing of what shows no text of its own. Setting the text of a drop list
  // or list selects the first row that is equal to it, or none; an edit or combo takes as much as
  // its limit allows.
  virtual Text text(int control) const = 0;
  virtual void set_text(int control, TextView text) = 0;
  // Check boxes, radio buttons (setting one clears the others of its group) and toggles.
  virtual bool checked(int control) const = 0;
  virtual void set_checked(int control, bool checked) = 0;
  virtual void enable(int control, bool enabled) = 0;
  virtual void show(int control, bool shown) = 0;  // on the steps on which it is seen at all
  // Control 0: none has it, so that an open field gives its text back by losing it. One that is not
  // seen or enabled does not get it; on a page that is not shown it gets it when that is.
  virtual void focus(int control, Caret caret = Caret::unchanged) = 0;
  virtual void set_step(int step) = 0;  // shows the controls of this step and of every step
  // Where it stands in the main window, in device pixels; empty while it is not seen.
  virtual Rect place(int control) const = 0;
  virtual void set_place(int control, const Rect& place) = 0;  // as in the template
  // Handles live as long as the dialog.
  virtual ChoiceControl* choice(int control) = 0;  // drop list, combo
  virtual ListControl* list(int control) = 0;      // list, multi_list
  virtual DateControl* date(int control) = 0;      // date picker, month calendar
  virtual RangeControl* range(int control) = 0;    // slider
  virtual NotesControl* notes(int control) = 0;
  virtual ReportList* report(int control) = 0;
  virtual DrawnControl* drawn(int control) = 0;          // custom, report, picture button
  virtual void set_timer(int id, int milliseconds) = 0;  // repeats; 0 stops it
  // A popup that is not seen lets one look at what lies below, and keeps the pointer that was
  // pressed on it, focus and keys: its moves and release come as before, also from beside it. Its
  // controls keep their places. A press anywhere is one beside it.
  virtual void set_seen(bool seen) = 0;
  // Ends a modal dialog, or the sheet, with this result; a modeless one stays.
  virtual void close(int result) = 0;
};

class DialogProcedure {
 public:
  virtual ~DialogProcedure() = default;
  virtual void handle(Dialog& dialog, const DialogEvent& event) = 0;
  // Asked before a person's closing and before a page of a sheet is left, also for OK. False: it
  // stays as it is; why is the procedure's to tell.
  virtual bool may_close(Dialog&) { return true; }
  virtual bool may_leave(Dialog&) { return true; }
};

struct SheetPage {
  DialogTemplate dialog;  // its title is the tab's
  DialogProcedure* procedure = nullptr;
};

inline constexpr int kSheetFailed = -1, kSheetCancelled = 0, kSheetOk = 1;

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // Runs until the procedure closes it. A person's closing is the event `close`, after which it
  // ends with 0 unless the procedure closed it otherwise.
  virtual int run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) = 0;
  // A child that fills the main window above the menu bar; destroying the object closes it.
  virtual std::unique_ptr<Dialog> open_modeless(const DialogTemplate& dialog,
                                                DialogProcedure& procedure) = 0;
  // Pages behind tabs, with OK and Cancel. All pages exist from the start, and get `init` in order;
  // then the first is shown. OK asks the shown page whether it may be left, tells it that it is,
  // applies every page in order and ends with kSheetOk. Cancel, Escape and the close button ask the
  // shown page's may_close and tell every page `close`. kSheetFailed: it could not be made, no page
  // was told.
  virtual int run_sheet(TextView title, const std::vector<SheetPage>& pages) = 0;
  // What the forms look like now.
  virtual FormColors colors() const { return {}; }
};

}  // namespace orvello
