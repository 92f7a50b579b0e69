// A flat scroll bar without arrows, wide enough for a pen.
#pragma once

#include <functional>

#include "hosts/win32/form_look.h"
#include "hosts/win32/native_window.h"

namespace orvello {

class FormScrollBar : public NativeWindow {
 public:
  explicit FormScrollBar(const FormLook& look) : look_(look) {}
  bool create(HWND parent);

  std::function<void(int position)> moved;  // by the person
  // Of `whole` pixels `page` are seen from `position` on.
  void set(int whole, int page, int position);

 protected:
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  RECT thumb() const;
  void press(int y);
  void drag(int y);
  void paint(HDC given);

  const FormLook& look_;
  int whole_ = 1, page_ = 1, position_ = 0;
  int grip_ = -1;  // where in the thumb it is held; -1: it is not
};

}  // namespace orvello
