#include "editor/notes_pane.h"

#include <algorithm>

#include "editor/notes_block.h"
#include "resources/notes_template.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kAlways[] = {kNotesPage, kNotesPen, kNotesUndo, kNotesRedo, kNotesBack};
constexpr int kWhileDrawing[] = {kNotesEraser, kNotesText};

struct StyleTool {
  int control;
  bool NotesStyle::*part;
};
constexpr StyleTool kStyleTools[] = {{kNotesBold, &NotesStyle::bold},
                                     {kNotesItalic, &NotesStyle::italic},
                                     {kNotesUnderline, &NotesStyle::underline},
                                     {kNotesList, &NotesStyle::bullet}};

// A page ends its lines with line feeds alone.
Text page_text(TextView body) {
  Text text;
  for (std::size_t i = 0; i < body.size(); ++i) {
    const bool pair = body[i] == u'\r' && i + 1 < body.size() && body[i + 1] == u'\n';
    if (!pair) text += body[i] == u'\r' ? u'\n' : body[i];
  }
  return text;
}

// Of a page whose plain text is another by now (a file came in, say): that is what everything else
// shows, so the page does too. Styles stay as far as the text is the same, and so do the strokes.
void take_text(NotesContent& page, Text text) {
  if (page.text == text) return;
  const auto same = std::mismatch(page.text.begin(), page.text.end(), text.begin(), text.end());
  const int end = static_cast<int>(same.first - page.text.begin());
  for (NotesRun& run : page.runs) run.length = std::clamp(end - run.start, 0, run.length);
  std::erase_if(page.runs, [](const NotesRun& run) { return run.length == 0; });
  page.text = std::move(text);
}

}  // namespace

void EditorNotes::set(Dialog& dialog, std::string_view ink, TextView body) {
  set_ = {std::string(ink), Text(body)};
  auto page = read_notes_block(ink);
  keeps_unknown_ = !ink.empty() && !page;
  as_set_ = page ? std::move(*page) : NotesContent();
  take_text(as_set_, page_text(body));
  dialog.notes(kNotesPage)->set_content(as_set_);
  dialog.notes(kNotesPage)->set_tool(NotesTool::text);
  if (shown_) look_at_tools(dialog);
}

void EditorNotes::show(Dialog& dialog) {
  shown_ = true;
  for (const int control : kAlways) dialog.show(control, true);
  look_at_tools(dialog);
  dialog.focus(kNotesPage);
  raise_panel(dialog);
}

void EditorNotes::hide(Dialog& dialog) {
  shown_ = false;
  for (const int control : kAlways) dialog.show(control, false);
  for (const int control : kWhileDrawing) dialog.show(control, false);
  for (const StyleTool& tool : kStyleTools) dialog.show(tool.control, false);
  host_.input.hide_input_panel();
}

// Who draws needs the room more than the letters.
void EditorNotes::raise_panel(Dialog& dialog) {
  if (dialog.notes(kNotesPage)->tool() == NotesTool::text)
    host_.input.raise_input_panel(dialog.place(kNotesPage));
  else
    host_.input.hide_input_panel();
}

void EditorNotes::look_at_tools(Dialog& dialog) {
  const NotesControl& notes = *dialog.notes(kNotesPage);
  const NotesTool tool = notes.tool();
  const NotesStyle style = notes.style();
  for (const int control : kWhileDrawing) dialog.show(control, tool != NotesTool::text);
  for (const StyleTool& one : kStyleTools) {
    dialog.show(one.control, tool == NotesTool::text);
    dialog.set_checked(one.control, style.*one.part);
  }
  dialog.set_checked(kNotesPen, tool == NotesTool::pen);
  dialog.set_checked(kNotesEraser, tool == NotesTool::eraser);
  dialog.enable(kNotesUndo, notes.can_undo());
  dialog.enable(kNotesRedo, notes.can_redo());
}

// Asked once, before something is lost that nobody here has seen.
bool EditorNotes::may_change(Dialog& dialog) {
  if (!keeps_unknown_) return true;
  const bool agreed =
      host_.boxes.show(load_string(StringId::box_unknown_notes, host_.boxes),
                       load_string(StringId::box_warning, host_.boxes), BoxIcon::warning,
                       BoxButtons::yes_no_losing, true) == BoxAnswer::yes;
  if (agreed)
    keeps_unknown_ = false;
  else
    dialog.notes(kNotesPage)->set_content(as_set_);
  return agreed;
}

bool EditorNotes::handle(Dialog& dialog, const DialogEvent& event) {
  if (event.control == kNotesPage) {
    if (event.kind == Event::changed) may_change(dialog);
    if (event.kind == Event::changed || event.kind == Event::taken) look_at_tools(dialog);
    return true;
  }
  return event.kind == Event::command && press(dialog, event.control);
}

bool EditorNotes::press(Dialog& dialog, int control) {
  NotesControl& notes = *dialog.notes(kNotesPage);
  switch (control) {
    case kNotesBack:
      hide(dialog);
      return true;
    case kNotesPen:
      choose_tool(dialog, dialog.checked(kNotesPen) ? NotesTool::pen : NotesTool::text);
      return true;
    case kNotesEraser:
      choose_tool(dialog, dialog.checked(kNotesEraser) ? NotesTool::eraser : NotesTool::pen);
      return true;
    case kNotesText:
      choose_tool(dialog, NotesTool::text);
      return true;
    case kNotesUndo:
      notes.undo();
      break;
    case kNotesRedo:
      notes.redo();
      break;
    default:
      if (!choose_style(dialog, control)) return false;
  }
  look_at_tools(dialog);
  dialog.focus(kNotesPage);
  return true;
}

void EditorNotes::choose_tool(Dialog& dialog, NotesTool tool) {
  dialog.notes(kNotesPage)->set_tool(tool);
  look_at_tools(dialog);
  dialog.focus(kNotesPage);
  raise_panel(dialog);
}

// False for another control.
bool EditorNotes::choose_style(Dialog& dialog, int control) {
  for (const StyleTool& tool : kStyleTools) {
    if (tool.control != control) continue;
    NotesControl& notes = *dialog.notes(kNotesPage);
    NotesStyle style = notes.style();
    style.*tool.part = dialog.checked(control);
    notes.set_style(style);
    if (changed(dialog)) may_change(dialog);
    return true;
  }
  return false;
}

bool EditorNotes::changed(Dialog& dialog) const {
  return dialog.notes(kNotesPage)->content() != as_set_;
}

EditorNotes::Parts EditorNotes::parts(Dialog& dialog) const {
  const NotesContent content = dialog.notes(kNotesPage)->content();
  if (keeps_unknown_ || content == as_set_) return set_;
  return {notes_block(content), content.text};
}

}  // namespace orvello
