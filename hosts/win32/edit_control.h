// A text that is typed: one line, or several.
#pragma once

#include "hosts/win32/field_frame.h"
#include "hosts/win32/form_control.h"

namespace orvello {

// Of an edit of the platform's, whose lines end with two characters.
Text edit_text(HWND edit);
void set_edit_text(HWND edit, TextView text, int limit);
// False for a letter that must not come in: half of a pair where there is no room for the other.
bool has_room_for(HWND edit, WPARAM letter, int limit);

class EditControl : public FormControl {
 public:
  EditControl(const ControlTemplate& made, const FormLook& look, const ControlSink& sink)
      : FormControl(made, look, sink), frame_(look) {}
  bool create(HWND parent) override;
  void put(const Rect& place) override;
  void put_caret(Caret caret) override;
  void look_changed() override;
  Text text() const override { return edit_text(window()); }
  void set_text(TextView text) override;
  bool uses_key(UINT key) const override;
  std::optional<LRESULT> reflected(UINT message, WPARAM wparam, LPARAM lparam) override;

 protected:
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  bool several() const { return kind() == ControlTemplate::Kind::multi_line_edit; }
  void keep_limit();  // lines of a text of several cost the platform one more

  FieldFrame frame_;
  Text last_;  // as it was told: the platform also calls what did not fit a change
  bool setting_ = false;
};

}  // namespace orvello
