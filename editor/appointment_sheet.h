// The appointment form in its dialog: what the controls show of it, and what they hold of it.
#pragma once

#include "editor/appointment_rules.h"
#include "editor/editor_context.h"
#include "editor/notes_pane.h"
#include "editor/time_field.h"
#include "ports/dialog.h"
#include "resources/editor_ids.h"

namespace orvello {

// The ready-made texts.
struct EditorPretexts {
  std::vector<Text> subjects, locations;
};

class AppointmentSheet {
 public:
  // `form` is the working copy: what no control holds is changed there at once.
  AppointmentSheet(const EditorContext& context, const EditorPretexts& pretexts,
                   AppointmentForm& form);

  void fill(Dialog& dialog);  // every list, and what the form says

  // What stands in an edit, copied to its line and taken for the form.
  void take_text(Dialog& dialog, int line, int edit);
  bool take_time(Dialog& dialog, bool start);  // false: it is no time, which has been told
  void take_amount(Dialog& dialog);
  void take_row(Dialog& dialog, int line);  // of the lists
  void take_start_date(Dialog& dialog);
  void take_end_date(Dialog& dialog);
  void take_all_day(Dialog& dialog);
  void take_remind(Dialog& dialog);
  void choose(Dialog& dialog, int line);  // categories, attendees

  // The form as it stands in the controls, with an edit that is open.
  AppointmentForm gathered(Dialog& dialog) const;

  EditorNotes& notes() { return notes_; }

 private:
  bool one() const { return form_.choice.scope == EditScope::occurrence; }
  bool keeps_rules() const { return form_.recurring && !form_.rules.empty(); }
  void take_occurs(Dialog& dialog);
  void fill_texts(Dialog& dialog);
  void fill_reminder(Dialog& dialog);
  void show_times(Dialog& dialog);
  void show_occurs(Dialog& dialog);
  void show_people(Dialog& dialog);
  void look_at_dates(Dialog& dialog);
  void look_at_reminder(Dialog& dialog);
  bool edit_pattern();

  const EditorContext& context_;
  const EditorPretexts& pretexts_;
  AppointmentForm& form_;
  FormTimes times_;
  TimeField start_, end_;
  EditorNotes notes_;
};

}  // namespace orvello
