// A text on a form, which takes neither pointer nor keys.
#pragma once

#include "hosts/win32/form_control.h"

namespace orvello {

class LabelControl : public FormControl {
 public:
  using FormControl::FormControl;
  bool create(HWND parent) override;
  bool takes_focus() const override { return false; }
  Text text() const override { return text_; }
  void set_text(TextView text) override;

 protected:
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void paint(HDC given);

  Text text_;
};

}  // namespace orvello
