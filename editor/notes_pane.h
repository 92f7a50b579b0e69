// The notes pane over the editor's form: a page to type and to draw on, and its tools.
#pragma once

#include <string>
#include <string_view>

#include "ports/dialog.h"
#include "ports/host.h"

namespace orvello {

// Shows and hides the controls of notes_controls() alone; the form's are the caller's. All calls
// but the first are for the dialog in which they stand.
class EditorNotes {
 public:
  explicit EditorNotes(Host& host) : host_(host) {}

  // As an appointment keeps them: an item without ink opens its text. Ink of an unknown kind shows
  // the text, and stays as it is until the person agrees to replace it.
  void set(Dialog& dialog, std::string_view ink, TextView body);
  void clear(Dialog& dialog) { set(dialog, {}, {}); }

  void show(Dialog& dialog);
  void hide(Dialog& dialog);
  bool shown() const { return shown_; }

  // False: not one of the pane's. Its last button hides it.
  bool handle(Dialog& dialog, const DialogEvent& event);

  // What to save: exactly what was set while nothing was changed, else ink of our own, or none for
  // plain text, and its text.
  struct Parts {
    std::string ink;
    Text body;
  };
  Parts parts(Dialog& dialog) const;
  bool changed(Dialog& dialog) const;

 private:
  bool press(Dialog& dialog, int control);
  void choose_tool(Dialog& dialog, NotesTool tool);
  bool choose_style(Dialog& dialog, int control);
  void look_at_tools(Dialog& dialog);
  void raise_panel(Dialog& dialog);
  bool may_change(Dialog& dialog);

  Host& host_;
  Parts set_;
  NotesContent as_set_;
  bool keeps_unknown_ = false;  // ink that nobody here can read, and nobody has agreed to replace
  bool shown_ = false;
};

}  // namespace orvello
