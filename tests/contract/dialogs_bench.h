// A person in front of a host's dialogs. Each host gives one of these to the dialog contract.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "ports/dialog.h"

namespace orvello::test {

// Acts go to the dialog that is on top, of a sheet to its shown page, and are over, with all that
// they cause told, when they return. What a person cannot reach takes no act: it is hidden, off, on
// another step or page, or the dialog is closed.
class DialogsBench {
 public:
  virtual ~DialogsBench() = default;
  virtual Dialogs& dialogs() = 0;
  // What the person does as soon as the next modal dialog or sheet is shown. One that is still open
  // afterwards is closed by the close button.
  virtual void in_front(std::function<void()> person) = 0;
  // The command that is chosen in the next menu, if it can be; 0: it is left by Escape.
  virtual void choose_in_menu(std::uint32_t command) = 0;
  virtual void settle() = 0;            // until all that was caused has been told
  virtual void wait(int timer_id) = 0;  // until the timer has fired once, if it runs

  virtual void tap(int control) = 0;                  // in its middle
  virtual void tap_row(int control, int row) = 0;     // of a list or report
  virtual void choose_row(int control, int row) = 0;  // drops a drop list or combo down first
  virtual void type(TextView text) = 0;               // where the focus is, at the caret
  virtual void key(std::uint32_t key, bool control_held = false, bool shift_held = false) = 0;
  virtual void tab(bool back = false) = 0;
  // Drops a date picker down and taps the day; in a month calendar turns to it and taps it.
  virtual void pick_date(int control, const MonthDayYear& date) = 0;
  virtual void slide(int control, int position) = 0;  // takes the slider there and lets go
  virtual void pen_down(int control, Point point) = 0;
  virtual void pen_move(int control, Point point) = 0;
  virtual void pen_up(int control, Point point) = 0;
  virtual void press_other_button(int control, Point point) = 0;
  virtual void turn_wheel(int control, Point point, int notches, bool sideways) = 0;
  virtual void draw(int notes, const std::vector<Point>& stroke) = 0;  // points of the page
  virtual void select_text(int notes, int start, int length) = 0;
  virtual void press_beside() = 0;  // of a popup
  virtual void press_close() = 0;   // the close button; of a popup Escape
  virtual void show_page(int page) = 0;
  virtual void press_ok() = 0;  // of a sheet
  virtual void press_cancel() = 0;

  // What a person sees.
  virtual int focused() = 0;  // 0: none
  virtual bool seen(int control) = 0;
  virtual bool enabled(int control) = 0;
  virtual Text title() = 0;        // of a sheet too
  virtual int dropped_down() = 0;  // the control whose list or calendar is down; 0: none
};

using MakeBench = std::function<std::unique_ptr<DialogsBench>()>;

}  // namespace orvello::test
