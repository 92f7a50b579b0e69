// A scroll bar of a width of our own beside what it scrolls: the platform's control.
#pragma once

#include <functional>

#include "base/geometry.h"
#include "hosts/win32/native_window.h"

namespace orvello {

class ScrollBar : public NativeWindow {
 public:
  // A hidden child; false: it could not be made.
  bool create(HWND parent, bool vertical);
  // Told only where a person moves it.
  std::function<void(int position)> moved;

  // All lengths are pixels; without `place` it is hidden. `page` of `whole` is seen.
  void put(const Rect& place, int whole, int page, int position, int line);
  // Of WM_VSCROLL and WM_HSCROLL at the parent; false: it is another one's.
  bool take(WPARAM wparam, LPARAM lparam);
  bool is_seen() const { return seen_; }

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override;

 private:
  int line_ = 1, page_ = 1;
  bool seen_ = false;
};

}  // namespace orvello
