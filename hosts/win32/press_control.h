// What is pressed: buttons with a text or a picture, toggles, check boxes, radio buttons, and
// lines, which show what an edit in their place lets one change. A button of the platform's for all
// that asks what it is; how it looks and when it is pressed is decided here.
#pragma once

#include "base/image.h"
#include "hosts/win32/form_control.h"

namespace orvello {

class PressControl : public FormControl, private DrawnControl {
 public:
  using FormControl::FormControl;
  bool create(HWND parent) override;
  Text text() const override { return text_; }
  void set_text(TextView text) override;
  bool checked() const override { return checked_; }
  void set_checked(bool checked) override;
  void press() override;
  bool uses_key(UINT key) const override;
  void set_name(const Text& name) override;
  DrawnControl* drawn() override;

 protected:
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  using Kind = ControlTemplate::Kind;
  void invalidate() override { InvalidateRect(window(), nullptr, FALSE); }
  void set_image(const Image& image) override;
  void set_parts(const std::vector<AccessibleCell>&) override {}
  std::uint32_t track_menu(const std::vector<MenuItem>& items, Point at) override;

  bool is_choice() const { return kind() == Kind::check_box || kind() == Kind::radio_button; }
  bool is_marked() const;  // a default button, a toggle that is down
  void write_title();
  void set_down(bool down);
  void paint(HDC given);
  void paint_button(HDC dc, const RECT& room);
  void paint_choice(HDC dc, const RECT& room);
  void paint_line(HDC dc, const RECT& room);
  void press_pointer();
  void move_pointer(LPARAM at);
  void release_pointer(LPARAM at);
  bool take_letter(WPARAM letter);

  Text text_;
  Image image_;
  bool checked_ = false;
  bool down_ = false;
  bool held_ = false;   // by the pointer
  bool space_ = false;  // by the key
};

}  // namespace orvello
