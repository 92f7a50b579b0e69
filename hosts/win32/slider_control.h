// A slider: the platform's trackbar, whose knob follows the pointer from wherever it is pressed.
#pragma once

#include "hosts/win32/form_control.h"

namespace orvello {

class SliderControl : public FormControl, private RangeControl {
 public:
  using FormControl::FormControl;
  bool create(HWND parent) override;
  void set_name(const Text& name) override;
  RangeControl* range() override { return this; }
  bool uses_key(UINT key) const override { return key >= VK_PRIOR && key <= VK_DOWN; }

 protected:
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void set_range(int least, int most) override;
  int position() const override;
  void set_position(int position) override;

  int end(bool last) const;
  void write(int position);
  void move_to(int x);
  void person_moves(int wanted);
  bool press_key(UINT key);
  int edge() const;  // beside the groove
  void paint();

  int told_ = 0;  // the position that the form knows
  bool held_ = false;
};

}  // namespace orvello
