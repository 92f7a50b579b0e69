#include "editor/editor_lines.h"

namespace orvello {
namespace {

using Kind = EditorLine::Kind;
using Event = DialogEvent::Kind;

constexpr int kCaretTimer = 1, kFocusTimer = 2;
constexpr int kCaretPause = 100, kFocusPause = 1;  // milliseconds

}  // namespace

const EditorLine* line_of(int control) {
  for (const EditorLine& line : kEditorLines)
    if (control != 0 && (line.line == control || line.edit == control)) return &line;
  return nullptr;
}

// A list drops down at once. An edit gets the focus with all its text, and the input panel beside
// it; where that has no room, its list drops down instead.
void EditorLines::open(Dialog& dialog, const EditorLine& line) {
  if (open_ == &line || line.edit == 0) return;
  if (open_) close(dialog);
  open_ = &line;
  dialog.show(line.edit, true);
  ChoiceControl* choice = dialog.choice(line.edit);
  if (line.kind == Kind::list) {
    choice->open();
  } else {
    dialog.focus(line.edit, Caret::all);
    if (input_.raise_input_panel(dialog.place(line.edit)) == PanelAnswer::no_room) choice->open();
  }
  dialog.show(line.line, false);
}

void EditorLines::close(Dialog& dialog) {
  if (!open_) return;
  closed_ = open_->line;
  const int edit = open_->edit;
  open_ = nullptr;
  dialog.set_timer(kCaretTimer, 0);
  dialog.show(closed_, true);
  dialog.show(edit, false);
  dialog.set_timer(kFocusTimer, kFocusPause);
}

void EditorLines::leave(Dialog& dialog) {
  if (!open_) return;
  dialog.show(open_->line, true);
  dialog.focus(open_->line);
}

void EditorLines::caret_later(Dialog& dialog) { dialog.set_timer(kCaretTimer, kCaretPause); }

void EditorLines::heard(Dialog& dialog, const DialogEvent& event) {
  if (event.kind == Event::focus_gained) focused_ = event.control;
  if (event.kind == Event::focus_lost && event.control == focused_) focused_ = 0;
  if (event.kind != Event::timer) return;
  if (event.control == kCaretTimer) {
    dialog.set_timer(kCaretTimer, 0);
    if (open_) dialog.focus(open_->edit, Caret::end);
  }
  if (event.control == kFocusTimer) {
    dialog.set_timer(kFocusTimer, 0);
    if (focused_ == 0 && !open_) dialog.focus(closed_);
  }
}

}  // namespace orvello
