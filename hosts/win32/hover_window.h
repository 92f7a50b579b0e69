// The small text over the main window that takes no input.
#pragma once

#include <memory>

#include "hosts/win32/native_window.h"
#include "hosts/win32/win32_fonts.h"
#include "ports/main_window.h"

namespace orvello {

class HoverWindow : public NativeWindow {
 public:
  HoverWindow(HWND frame, std::shared_ptr<Win32Fonts> fonts);
  void show(const HoverLabel& label, const Rect& place);  // in the frame
  void hide();
  const Text& text() const { return label_.text; }  // of the one shown last

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override;

 private:
  void paint(HDC dc) const;

  std::shared_ptr<Win32Fonts> fonts_;
  HoverLabel label_;
};

}  // namespace orvello
