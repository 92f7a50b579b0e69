// A button that belongs to a form's frame: its close button, a sheet's OK and Cancel, the arrows
// beside tabs.
#pragma once

#include <functional>

#include "base/geometry.h"
#include "base/text.h"
#include "hosts/win32/form_look.h"
#include "hosts/win32/native_window.h"

namespace orvello {

class FrameButton : public NativeWindow {
 public:
  enum class Face { cross, back, forward, plain, strong };
  FrameButton(const FormLook& look, Face face, Text text)
      : look_(look), face_(face), text_(std::move(text)) {}
  bool create(HWND parent);
  void put(const Rect& place, bool shown);

  std::function<void()> pressed;
  std::function<bool(UINT key)> key_left;  // true: done with

 protected:
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  bool takes_focus() const { return face_ == Face::plain || face_ == Face::strong; }
  void set_down(bool down);
  void release(LPARAM at);
  bool take_key(UINT key);
  void paint(HDC given);
  void paint_glyph(HDC dc, const RECT& room);

  const FormLook& look_;
  Face face_;
  Text text_;
  bool down_ = false, held_ = false;
};

}  // namespace orvello
