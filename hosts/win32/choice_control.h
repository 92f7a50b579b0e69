// A drop list, or a combo: a drop list with a text of its own.
#pragma once

#include "hosts/win32/form_control.h"
#include "hosts/win32/list_scroll.h"

namespace orvello {

class ChoiceBoxControl;

// The edit inside of a combo: its keys and focus are the combo's.
class ComboEdit : public NativeWindow {
 public:
  explicit ComboEdit(ChoiceBoxControl& combo) : combo_(combo) {}
  using NativeWindow::adopt;

 protected:
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  ChoiceBoxControl& combo_;
};

// The list that drops down, a window of the platform's own.
class DroppedRows : public NativeWindow {
 public:
  explicit DroppedRows(const FormLook& look)
      : look_(look),
        scroll_(look, [this](UINT id, WPARAM w, LPARAM l) { return by_default(id, w, l); }) {}
  using NativeWindow::adopt;
  ListScroll& scroll() { return scroll_; }

 protected:
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  const FormLook& look_;
  ListScroll scroll_;
};

class ChoiceBoxControl : public FormControl, private ChoiceControl {
 public:
  ChoiceBoxControl(const ControlTemplate& made, const FormLook& look, const ControlSink& sink)
      : FormControl(made, look, sink), edit_(*this), rows_below_(look) {}
  bool create(HWND parent) override;
  void put(const Rect& place) override;
  void put_caret(Caret caret) override;
  void look_changed() override;
  HWND focus_target() const override { return editable() ? edit_.window() : window(); }
  Text text() const override;
  void set_text(TextView text) override;
  bool is_typed() const override { return typed_; }
  bool is_dropped_down() const override;
  void close_drop() override;
  ChoiceControl* choice() override { return this; }
  void press() override;
  bool uses_key(UINT key) const override;
  std::optional<LRESULT> reflected(UINT message, WPARAM wparam, LPARAM lparam) override;

 protected:
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  friend class ComboEdit;
  void set_rows(const std::vector<Text>& rows) override;
  std::vector<Text> rows() const override { return rows_; }
  int selected() const override;
  void select(int row) override;
  void open() override;

  bool editable() const { return kind() == ControlTemplate::Kind::combo; }
  int row_of(TextView text) const;
  int arrow_width() const;
  RECT field_room() const;  // of the text, in the client area
  void write(int row);      // to the platform's control
  void drop(bool down);
  void dropped();
  void closed();
  void take(int row);
  bool step(UINT key);
  bool take_key(WPARAM key);
  bool take_letter(WPARAM letter);
  void fit();  // to its place and its look
  void stand(int list_height);
  void place_edit();
  int dropped_height(int width) const;
  void measure_rows();
  void paint(HDC given);

  ComboEdit edit_;
  DroppedRows rows_below_;
  std::vector<Text> rows_;
  int selected_ = -1;  // of a drop list
  Text last_;          // of a combo, as it was told
  Rect place_;
  bool rows_measured_ = false;  // for the list that drops down
  bool typed_ = false;
  bool setting_ = false;
  int wanted_ = -1;  // the row that the open list is closed with
};

}  // namespace orvello
