// The top-level window itself. What happens to it goes to the main window's port.
#pragma once

#include "hosts/win32/native_window.h"

#include "base/geometry.h"
#include "base/text.h"

namespace orvello {

class Win32Window;

class FrameWindow : public NativeWindow {
 public:
  explicit FrameWindow(Win32Window& owner) : owner_(owner) {}
  // fixed: the client area keeps its size. whole_screen: what a handheld's shell gives it.
  enum class Kind { sizable, fixed, whole_screen };
  // `inside` is the client area's place on the screen.
  bool make(const Text& window_class, const Text& title, const Rect& inside, Kind kind);
  Rect outside(const Rect& inside) const;  // the window's place around a client area
  void set_dark_title(bool dark);

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override;

 private:
  void limit(MINMAXINFO& limits) const;
  bool take_change(UINT id, WPARAM wparam, LPARAM lparam);

  Win32Window& owner_;
  Kind kind_ = Kind::sizable;
};

// The pixels in an inch of the screen that a window stands on, or of the first one.
int monitor_dpi(HWND window);
// A place inside the room of the screen that it covers most, shrunk where that is too small.
Rect fitted_to_screen(const Rect& place);

}  // namespace orvello
