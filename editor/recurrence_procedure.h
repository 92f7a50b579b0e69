// The recurrence editor's dialog: its steps, and what fields do to each other.
#pragma once

#include "editor/editor_context.h"
#include "editor/recurrence_controls.h"
#include "editor/time_field.h"

namespace orvello {

class RecurrenceProcedure : public DialogProcedure {
 public:
  // Closes with 1 when `form` is what the person wants.
  RecurrenceProcedure(const EditorContext& context, RecurrenceForm& form);
  void handle(Dialog& dialog, const DialogEvent& event) override;

 private:
  void open(Dialog& dialog);
  void pressed(Dialog& dialog, int control);
  void chosen(Dialog& dialog, int control);
  void turn(Dialog& dialog, int by);
  void show_step(Dialog& dialog, int step);
  Text summary() const;
  void toggle_day(Dialog& dialog, int day);
  bool take_times(Dialog& dialog);
  void take_start_date(Dialog& dialog);
  void finish(Dialog& dialog);

  const EditorContext& context_;
  RecurrenceForm& form_;
  TimeField start_time_, end_time_;
  int step_ = 1;               // 1-3
  bool time_refused_ = false;  // by leaving it for a button, which then does nothing more
};

}  // namespace orvello
