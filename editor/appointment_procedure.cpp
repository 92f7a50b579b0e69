#include "editor/appointment_procedure.h"

#include <utility>

namespace orvello {
namespace {

using Event = DialogEvent::Kind;
using Kind = EditorLine::Kind;

constexpr TextView kFormTitle = u"Appointment", kNotesTitle = u"Appointment - Notes";
constexpr int kDraftTimer = 3, kDraftPause = 3000;  // milliseconds

}  // namespace

AppointmentProcedure::AppointmentProcedure(const EditorContext& context,
                                           const EditorPretexts& pretexts, EditorDraft& draft,
                                           bool readable)
    : context_(context),
      draft_(draft),
      sheet_(context, pretexts, draft.form),
      lines_(context.host.input),
      kept_(draft.form),
      readable_(readable) {}

void AppointmentProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  lines_.heard(dialog, event);
  if (sheet_.notes().handle(dialog, event)) {
    if (notes_shown_ && !sheet_.notes().shown()) show_form(dialog);
    return;
  }
  switch (event.kind) {
    case Event::init:
      return open(dialog);
    case Event::command:
      return pressed(dialog, event.control);
    case Event::changed:
      dates_moved_ = dates_moved_ || event.control == kStartDate || event.control == kEndDate;
      return;
    case Event::taken:
      return chosen(dialog, event.control);
    case Event::focus_gained:
      if (refused_ && event.control == refused_->edit) refused_ = nullptr;
      return;
    case Event::focus_lost:
      return left(dialog, event.control);
    case Event::timer:
      if (event.control == kDraftTimer) keep_typed(dialog);
      return;
    default:
      return;
  }
}

void AppointmentProcedure::open(Dialog& dialog) {
  sheet_.fill(dialog);
  show_form(dialog);
  dialog.focus(kLineSubject);
  dialog.enable(kEditorOk, readable_);
  if (readable_) dialog.set_timer(kDraftTimer, kDraftPause);
}

void AppointmentProcedure::pressed(Dialog& dialog, int control) {
  if (refused_ && control != kEditorCancel) return;
  switch (control) {
    case kEditorOk:
      return notes_shown_ ? show_form(dialog) : save(dialog);
    case kEditorCancel:
      return notes_shown_ ? show_form(dialog) : dialog.close(kCancelled);
    case kEditorNotes:
      return show_notes(dialog);
    case kEditorAllDay:
      return sheet_.take_all_day(dialog);
    case kEditorRemind:
      return sheet_.take_remind(dialog);
    default:
      break;
  }
  const EditorLine* line = line_of(control);
  if (!line) return;
  if (line->kind == Kind::chooser)
    sheet_.choose(dialog, line->line);
  else
    lines_.open(dialog, *line);
}

void AppointmentProcedure::chosen(Dialog& dialog, int control) {
  if (control == kStartDate) return sheet_.take_start_date(dialog);
  if (control == kEndDate) return sheet_.take_end_date(dialog);
  if (const EditorLine* line = line_of(control)) row_taken(dialog, *line);
}

// A text may go on behind the row; everything else is answered by it.
void AppointmentProcedure::row_taken(Dialog& dialog, const EditorLine& line) {
  if (line.kind == Kind::text) {
    take(dialog, line);
    return lines_.caret_later(dialog);
  }
  if (line.kind != Kind::list) take(dialog, line);
  if (lines_.open() == &line) lines_.close(dialog);
  if (line.kind == Kind::list) sheet_.take_row(dialog, line.line);
}

// Who typed what is no time comes back to it, and what was tapped instead is not meant yet.
void AppointmentProcedure::left(Dialog& dialog, int control) {
  const EditorLine* line = lines_.open();
  if (!line || line->edit != control) return;
  const bool taken = take(dialog, *line);
  lines_.close(dialog);
  if (taken) return keep_typed(dialog);
  refused_ = line;
  lines_.open(dialog, *line);
}

bool AppointmentProcedure::take(Dialog& dialog, const EditorLine& line) {
  if (line.kind == Kind::text) sheet_.take_text(dialog, line.line, line.edit);
  if (line.kind == Kind::amount) sheet_.take_amount(dialog);
  return line.kind != Kind::time || sheet_.take_time(dialog, line.line == kLineStartTime);
}

// For Return, which does not move the focus. False: it stays open, as what is in it is no time.
bool AppointmentProcedure::take_open_line(Dialog& dialog) {
  // Only by a person: a picker need not be able to show the date that there is.
  if (dates_moved_) {
    sheet_.take_start_date(dialog);
    sheet_.take_end_date(dialog);
  }
  const EditorLine* line = lines_.open();
  if (!line) return true;
  if (!take(dialog, *line)) {
    dialog.focus(line->edit, Caret::all);
    return false;
  }
  if (line->kind == Kind::list) sheet_.take_row(dialog, line->line);
  lines_.close(dialog);
  return true;
}

void AppointmentProcedure::show_notes(Dialog& dialog) {
  notes_shown_ = true;
  dialog.set_text(0, kNotesTitle);
  dialog.set_step(kEditorNotesStep);
  sheet_.notes().show(dialog);
}

void AppointmentProcedure::show_form(Dialog& dialog) {
  const bool back = std::exchange(notes_shown_, false);
  if (sheet_.notes().shown()) sheet_.notes().hide(dialog);
  dialog.set_text(0, kFormTitle);
  dialog.set_step(kEditorFormStep);
  if (!back) return;
  dialog.focus(kEditorNotes);
  keep_typed(dialog);
}

// Escape leaves what is open first, as it was: the notes, then a line's edit.
bool AppointmentProcedure::may_close(Dialog& dialog) {
  if (notes_shown_) {
    show_form(dialog);
    return false;
  }
  const EditorLine* line = lines_.open();
  if (!line) return true;
  dialog.set_text(line->edit, dialog.text(line->line));
  lines_.leave(dialog);
  return false;
}

void AppointmentProcedure::keep_typed(Dialog& dialog) {
  if (!readable_) return;
  AppointmentForm now = sheet_.gathered(dialog);
  if (now == kept_) return;
  if (!keep_draft(context_.volume, {draft_.opened, now})) return;
  kept_ = std::move(now);
  has_kept_ = true;
}

}  // namespace orvello
