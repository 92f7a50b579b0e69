// The child of the main window that shows the program's picture and hears pointer, wheel and keys.
#pragma once

#include <memory>

#include "hosts/win32/native_window.h"
#include "hosts/win32/wheel_turns.h"
#include "ports/main_window.h"

namespace orvello {

class Win32Window;

class ViewWindow : public NativeWindow {
 public:
  explicit ViewWindow(Win32Window& owner) : owner_(owner) {}
  bool make(HWND frame);

  bool pen_is_down() const { return pressed_; }
  bool let_pointer_go();
  void take_tab();  // the Tab key brought the keyboard here
  void copy(const Surface& surface, Size size);

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override;

 private:
  bool pointer(UINT id, WPARAM wparam, LPARAM lparam);
  void press(Point at);
  void hover(Point at, bool held);
  void wheel(WPARAM wparam, LPARAM lparam, bool sideways);
  bool key(UINT id, WPARAM wparam);
  void paint(HDC dc);
  void told_focus(UINT id);
  Point turned(Point point) const;

  Win32Window& owner_;
  WheelTurns wheel_;
  bool pressed_ = false;
  bool leaving_told_ = false;  // the platform will say when the pointer leaves
  bool by_tab_ = false;
  Point last_{-1, -1};
  HDC painting_ = nullptr;
  Rect copied_;
};

}  // namespace orvello
