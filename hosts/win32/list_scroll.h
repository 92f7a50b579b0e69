// The scroll bar of a list of the platform's, in the form's own look: it stands beside the rows
// outside of the client area, where the platform would have its own. The list itself scrolls by
// whole rows, whose heights may differ.
#pragma once

#include <functional>
#include <optional>

#include "hosts/win32/scroll_track.h"

namespace orvello {

class ListScroll {
 public:
  // How the list takes a message in which the bar has no part, its frame included.
  using Rest = std::function<LRESULT(UINT message, WPARAM wparam, LPARAM lparam)>;
  ListScroll(const FormLook& look, Rest rest)
      : look_(look), rest_(std::move(rest)), track_(look, true) {}

  bool is_shown() const { return shown_; }
  int width() const { return look_.scaled(kScrollBarWidth); }
  // Whether it stands there: told anew with each change of the rows, their heights or the list's.
  void show(HWND list, bool shown);
  // The answer to any message of the list.
  LRESULT take(HWND list, UINT message, WPARAM wparam, LPARAM lparam);
  void turn_wheel(HWND list, int delta);

 private:
  int count() const { return static_cast<int>(rest_(LB_GETCOUNT, 0, 0)); }
  int height_of(int row) const {
    return static_cast<int>(rest_(LB_GETITEMHEIGHT, static_cast<WPARAM>(row), 0));
  }
  RECT room(HWND list) const;  // in the list's client coordinates
  bool take_pointer(HWND list, UINT message, POINT client, bool outside);
  void scroll_to(int position);
  void follow(HWND list);
  void paint(HWND list);

  const FormLook& look_;
  Rest rest_;
  ScrollTrack track_;
  bool shown_ = false;
  bool captures_ = false;         // the pointer, for itself
  int first_ = -1, height_ = -1;  // of the rows, as they were drawn last
};

}  // namespace orvello
