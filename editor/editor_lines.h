// The lines of the appointment form and the controls that edit them in their places: a tap on a
// line brings its control, and whoever leaves that gets the line back.
#pragma once

#include <array>

#include "ports/dialog.h"
#include "ports/input_methods.h"
#include "resources/editor_ids.h"

namespace orvello {

struct EditorLine {
  enum class Kind { text, time, amount, list, chooser };
  int line = 0;
  int edit = 0;  // 0: a tap opens the chooser
  Kind kind = Kind::text;
};

inline constexpr std::array<EditorLine, 10> kEditorLines = {{
    {kLineSubject, kEditSubject, EditorLine::Kind::text},
    {kLineLocation, kEditLocation, EditorLine::Kind::text},
    {kLineStartTime, kEditStartTime, EditorLine::Kind::time},
    {kLineEndTime, kEditEndTime, EditorLine::Kind::time},
    {kLineOccurs, kEditOccurs, EditorLine::Kind::list},
    {kLineAmount, kEditAmount, EditorLine::Kind::amount},
    {kLineUnit, kEditUnit, EditorLine::Kind::list},
    {kLineCategories, 0, EditorLine::Kind::chooser},
    {kLineAttendees, 0, EditorLine::Kind::chooser},
    {kLineStatus, kEditStatus, EditorLine::Kind::list},
}};

// Null: the control is none.
const EditorLine* line_of(int control);  // by the line or by its edit

class EditorLines {
 public:
  explicit EditorLines(InputMethods& input) : input_(input) {}

  const EditorLine* open() const { return open_; }
  void open(Dialog& dialog, const EditorLine& line);
  // The line in place of its edit. The focus comes back to it, unless it goes elsewhere meanwhile.
  void close(Dialog& dialog);
  // Puts the focus on the line, so that its edit is left.
  void leave(Dialog& dialog);
  // Puts the caret behind a row that was chosen, a moment later.
  void caret_later(Dialog& dialog);

  void heard(Dialog& dialog, const DialogEvent& event);  // of the focus and of timers

 private:
  InputMethods& input_;
  const EditorLine* open_ = nullptr;
  int focused_ = 0;
  int closed_ = 0;  // the line that was closed last
};

}  // namespace orvello
