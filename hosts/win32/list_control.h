// A list of rows, of which one or several can be selected.
#pragma once

#include "hosts/win32/field_frame.h"
#include "hosts/win32/form_control.h"
#include "hosts/win32/list_scroll.h"

namespace orvello {

// A row of a list or of what drops one down, drawn as an owner does; its height by its text.
void draw_list_row(const DRAWITEMSTRUCT& item, TextView text, const FormLook& look, bool focused);
int list_row_height(TextView text, int width, const FormLook& look);

class ListBoxControl : public FormControl, private ListControl {
 public:
  ListBoxControl(const ControlTemplate& made, const FormLook& look, const ControlSink& sink)
      : FormControl(made, look, sink),
        frame_(look),
        scroll_(look, [this](UINT id, WPARAM w, LPARAM l) { return platform_message(id, w, l); }) {}
  bool create(HWND parent) override;
  void put(const Rect& place) override;
  void look_changed() override;
  Text text() const override;
  void set_text(TextView text) override;
  ListControl* list() override { return this; }
  bool uses_key(UINT key) const override;
  std::optional<LRESULT> reflected(UINT message, WPARAM wparam, LPARAM lparam) override;

 protected:
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void set_rows(const std::vector<Text>& rows) override;
  std::vector<Text> rows() const override { return rows_; }
  std::vector<int> selected() const override;
  void select(const std::vector<int>& rows) override;
  void show_row(int row) override;

  bool several() const { return kind() == ControlTemplate::Kind::multi_list; }
  bool is_row(int row) const { return row >= 0 && row < static_cast<int>(rows_.size()); }
  LRESULT platform_message(UINT message, WPARAM wparam, LPARAM lparam);
  int row_at(LPARAM point) const;
  void turn_wheel(int delta);
  void measure_rows();
  void tap(int row);

  FieldFrame frame_;
  ListScroll scroll_;
  std::vector<Text> rows_;
};

}  // namespace orvello
