// The chooser's dialog: a list whose rows are marked by taps, its bars, what the pen and keys do.
#pragma once

#include <optional>

#include "base/stroke_speed.h"
#include "editor/label_list.h"

namespace orvello {

class ChooserProcedure : public DialogProcedure {
 public:
  // Closes with 1 when the marked rows are what the person wants. `labels`: of the category mode.
  ChooserProcedure(const EditorContext& context, std::vector<ChooserRow> rows, LabelList* labels)
      : context_(context), labels_(labels), rows_(std::move(rows)) {}
  const std::vector<ChooserRow>& rows() const { return rows_; }

  void handle(Dialog& dialog, const DialogEvent& event) override;

 private:
  void open(Dialog& dialog);
  void show_bars(Dialog& dialog);
  void show_rows(Dialog& dialog);
  void pressed(Dialog& dialog, int control);
  void bar_event(Dialog& dialog, const DialogEvent& event);
  void list_event(Dialog& dialog, const DialogEvent& event);
  void list_key(Dialog& dialog, std::uint32_t key);
  void pick_letter(Dialog& dialog, int cell);
  void toggle(Dialog& dialog, int row);
  void mark_all(Dialog& dialog, bool chosen);
  void go_to(Dialog& dialog, int row);
  void add_label(Dialog& dialog);
  void remove_label(Dialog& dialog);
  void enable_label_buttons(Dialog& dialog, bool add, bool remove);
  void finish(Dialog& dialog);
  void keep_bars();

  const EditorContext& context_;
  LabelList* labels_;
  std::vector<ChooserRow> rows_;
  LetterBar letters_;
  bool letter_bar_ = false, label_bar_ = false;
  int row_ = -1;              // the keyboard's
  int key_cell_ = 0;          // of the letter bar, for the keyboard
  std::optional<Point> pen_;  // where it went down, or was last, on the list
  StrokeSpeed speed_;
  int pen_row_ = -1;  // under it; -1 once it has moved the list
};

}  // namespace orvello
