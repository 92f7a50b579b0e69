// Dialogs as data: a template names the controls and their places, a procedure answers events and
// talks to the controls by id. User-interface thread. Setters are silent: only the person makes
// events. Operations on an id that the template lacks do nothing.
#pragma once

#include <memory>
#include <vector>

#include "base/geometry.h"
#include "base/text.h"
#include "ports/canvas.h"

namespace orvello {

struct ControlTemplate {
  enum class Kind { label, button, default_button, check_box, edit, list, custom };
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
};

struct DialogEvent {
  enum class Kind { init, command, changed, timer, focus_lost, paint, close };
  Kind kind = Kind::init;
  int control = 0;           // or the timer's id
  Canvas* canvas = nullptr;  // paint of a custom control
  Size size;                 // and that control's size
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
