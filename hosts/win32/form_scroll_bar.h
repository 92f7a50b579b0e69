// A flat scroll bar in a window of its own, beside what it scrolls.
#pragma once

#include <functional>

#include "base/geometry.h"
#include "hosts/win32/native_window.h"
#include "hosts/win32/scroll_track.h"

namespace orvello {

class FormScrollBar : public NativeWindow {
 public:
  explicit FormScrollBar(const FormLook& look, bool vertical = true) : track_(look, vertical) {}
  bool create(HWND parent);  // hidden

  std::function<void(int position)> moved;  // by the person
  // `place` in the parent; without one, or where all of it is seen, it is hidden.
  void put(const Rect& place, int whole, int page, int position);

 protected:
  LRESULT message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  RECT room() const;
  void go_on(std::optional<int> position);

  ScrollTrack track_;
  Rect place_;
  bool seen_ = false;
};

}  // namespace orvello
