// What a person does to a control that the program draws - pointer, wheel and keys - as events of
// its form. Pen, finger and mouse are one pointer: the platform makes them alike.
#pragma once

#include <memory>
#include <optional>

#include "hosts/win32/accessible_object.h"
#include "hosts/win32/form_control.h"
#include "hosts/win32/wheel_turns.h"

namespace orvello {

// Where a part of a window stands in the main window, counted from where lines begin.
Rect place_in_main_window(HWND window, const Rect& part, bool right_to_left);
Rect place_on_screen(HWND window, const Rect& part);

class PointedControl : public FormControl, public DrawnControl {
 public:
  using FormControl::FormControl;

  bool uses_key(UINT key) const override { return key != VK_TAB && key != VK_ESCAPE; }
  DrawnControl* drawn() override { return this; }
  void release_at(POINT screen) override;

  void invalidate() override { InvalidateRect(window(), nullptr, FALSE); }
  void set_image(const Image&) override {}
  void set_parts(const std::vector<AccessibleCell>&) override {}
  std::uint32_t track_menu(const std::vector<MenuItem>& items, Point at) override;

 protected:
  // Pointer, wheel and keys; nothing: the message is none of them. What it tells may end the
  // control: the caller touches nothing of it afterwards.
  std::optional<LRESULT> take_input(UINT message, WPARAM wparam, LPARAM lparam);
  // As if the pointer had come and gone at once; counted from where lines begin.
  void tap(Point at);

  virtual bool takes_press(Point) const { return true; }
  virtual void before_press() {}
  virtual void after_press() {}  // not when the press ended the control
  virtual void before_key() {}
  // True: the control has scrolled with it, or stands at an end. Not turned: up, or to the right as
  // the platform counts, is above 0.
  virtual bool scrolls_with(int /*delta*/, bool /*sideways*/) { return false; }
  Size client_size() const;
  bool is_pressed() const { return pressed_; }
  std::weak_ptr<void> alive() const { return alive_; }

 private:
  LRESULT press(LPARAM client);
  LRESULT release(LPARAM client);
  LRESULT press_other_button(LPARAM client);
  LRESULT turn_wheel(WPARAM wparam, LPARAM screen, bool sideways);
  bool press_key(UINT key);
  bool is_second_tap(POINT at);
  DialogEvent pointer_event(DialogEvent::Kind kind, LPARAM client) const;

  bool pressed_ = false;
  bool tapped_ = false;  // once, at this moment and place
  DWORD tap_time_ = 0;
  POINT tap_place_{};
  WheelTurns wheel_;
  std::shared_ptr<char> alive_ = std::make_shared<char>();
};

}  // namespace orvello
