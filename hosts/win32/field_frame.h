// The flat edge around what is filled in or chosen from, drawn where the platform has its own
// border and scroll bars.
#pragma once

#include <windows.h>

#include <optional>

#include "hosts/win32/form_look.h"

namespace orvello {

// Of a control with a flat edge: WM_NCCALCSIZE, WM_NCPAINT and what changes the edge. `inset` is
// what the platform's part leaves free inside of the edge, in device pixels; `by_default` is asked
// for the scroll bars.
class FieldFrame {
 public:
  FieldFrame(const FormLook& look) : look_(look) {}

  SIZE inset{};

  template <typename ByDefault>
  std::optional<LRESULT> take(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                              ByDefault by_default) const;
  // Anew: its size, focus or colours are others.
  static void refresh(HWND window) {
    SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  static void repaint(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_NOCHILDREN);
  }

 private:
  int edge() const;
  void shrink(RECT& room) const;
  void paint(HWND window) const;

  const FormLook& look_;
};

template <typename ByDefault>
std::optional<LRESULT> FieldFrame::take(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                        ByDefault by_default) const {
  switch (message) {
    case WM_NCCALCSIZE: {
      // Both shapes of the parameter begin with the rectangle.
      shrink(*reinterpret_cast<RECT*>(lparam));
      return by_default(message, wparam, lparam);
    }
    case WM_NCPAINT: {
      by_default(message, wparam, lparam);
      paint(window);
      return 0;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
      repaint(window);
      return {};
    default:
      return {};
  }
}

}  // namespace orvello
