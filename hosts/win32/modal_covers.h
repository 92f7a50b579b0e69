// What is modal in the main window, one above the other: the one place that decides what takes
// input. Only the last takes pointer and keyboard; all that lies below is disabled until it is
// dropped, whatever is made or shown there meanwhile. User-interface thread.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

namespace orvello {

struct ModalCover {
  // A child of the frame, which is raised above the others, or a window of its own. Shown by its
  // owner, before or after.
  HWND window = nullptr;
  // A popup's that leaves what lies below to the pointer.
  bool lets_presses_through = false;
  std::function<void()> close_wanted;  // the window's close button, or its system menu
  // A press beside it, at a point of the screen; what is pressed hears of it next when presses go
  // through, else nobody does.
  std::function<void(POINT)> pressed_beside;
  // The release of what was pressed before this was pushed.
  std::function<void(POINT)> released;
  std::function<void()> resized;  // the frame has another size, or the desktop another look
  HWND focus_below = nullptr;     // gets the keyboard back; null: what had it when this was pushed
};

class ModalCovers {
 public:
  void set_frame(HWND frame);  // null: it is gone, and with it its children

  void push(ModalCover cover);
  void drop(HWND window);
  bool empty() const { return covers_.empty(); }
  const ModalCover* top() const { return covers_.empty() ? nullptr : &covers_.back(); }

  // What keeps a window of the frame from the keyboard, and `pointer_over` from the pointer; null:
  // nothing does.
  HWND over(HWND window) const;
  HWND pointer_over(HWND window) const;
  // The focus now, or as soon as what covers the window is dropped.
  void give_focus(HWND window);
  // Anew, after a window was made or shown in the frame.
  void keep_order();
  void resized();

  // Of the message loop, before a window gets it: presses beside a popup, and the release of what
  // was pressed below. True: nobody gets it.
  bool take_pointer(const MSG& message);

 private:
  bool is_below(HWND window) const;  // of the last one
  void give_back(HWND wanted);

  HWND frame_ = nullptr;
  std::vector<ModalCover> covers_;
  HWND release_for_ = nullptr;  // the cover that was pushed while something was pressed
};

}  // namespace orvello
