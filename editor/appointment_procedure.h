// The appointment editor's dialog: lines and their edits, the notes, OK and Cancel.
#pragma once

#include <string>

#include "editor/appointment_sheet.h"
#include "editor/drafts.h"
#include "editor/editor_lines.h"

namespace orvello {

class AppointmentProcedure : public DialogProcedure {
 public:
  static constexpr int kCancelled = 0, kSaved = 1;
  static constexpr int kGone = 2;  // and the person wants what was typed as a new one

  // `draft` is what is edited, and holds what was typed whenever the dialog is closed. One that
  // could not be read can only be cancelled.
  AppointmentProcedure(const EditorContext& context, const EditorPretexts& pretexts,
                       EditorDraft& draft, bool readable);
  void handle(Dialog& dialog, const DialogEvent& event) override;
  bool may_close(Dialog& dialog) override;
  bool kept_draft() const { return has_kept_; }

 private:
  void open(Dialog& dialog);
  void pressed(Dialog& dialog, int control);
  void chosen(Dialog& dialog, int control);
  void row_taken(Dialog& dialog, const EditorLine& line);
  void left(Dialog& dialog, int control);
  bool take(Dialog& dialog, const EditorLine& line);
  bool take_open_line(Dialog& dialog);
  void show_notes(Dialog& dialog);
  void show_form(Dialog& dialog);
  void keep_typed(Dialog& dialog);

  void save(Dialog& dialog);
  bool confirm_subject(Dialog& dialog);
  bool confirm_notes(Dialog& dialog);
  void store(Dialog& dialog);
  void remember_location();

  const EditorContext& context_;
  EditorDraft& draft_;
  AppointmentSheet sheet_;
  EditorLines lines_;
  AppointmentForm kept_;  // of the draft, else as it was opened
  bool has_kept_ = false;
  bool readable_;
  bool notes_shown_ = false;
  bool dates_moved_ = false;             // by keys, maybe not taken yet
  const EditorLine* refused_ = nullptr;  // left with what is no time, until it has the focus again
};

}  // namespace orvello
