#include "hosts/win32/modal_covers.h"

#include <algorithm>
#include <utility>

namespace orvello {
namespace {

bool is_in(HWND window, HWND around) { return window == around || IsChild(around, window); }

bool is_press(UINT id) {
  return id == WM_LBUTTONDOWN || id == WM_LBUTTONDBLCLK || id == WM_RBUTTONDOWN ||
         id == WM_RBUTTONDBLCLK || id == WM_MBUTTONDOWN || id == WM_NCLBUTTONDOWN ||
         id == WM_MOUSEWHEEL || id == WM_MOUSEHWHEEL;
}

// By the message itself: the queue's own idea of the pointer is that of another moment.
POINT screen_point(const MSG& message) {
  POINT at{static_cast<short>(LOWORD(message.lParam)), static_cast<short>(HIWORD(message.lParam))};
  const UINT id = message.message;
  const bool on_screen = id == WM_NCLBUTTONDOWN || id == WM_MOUSEWHEEL || id == WM_MOUSEHWHEEL;
  if (!on_screen) ClientToScreen(message.hwnd, &at);
  return at;
}

}  // namespace

void ModalCovers::set_frame(HWND frame) {
  if (!frame) {
    // What stood in it has gone with it; boxes of their own stay.
    std::erase_if(covers_, [this](const ModalCover& one) { return is_in(one.window, frame_); });
    release_for_ = nullptr;
  }
  frame_ = frame;
  keep_order();
}

void ModalCovers::push(ModalCover cover) {
  const HWND focus = GetFocus();
  if (!cover.focus_below && focus && frame_ && is_in(focus, frame_)) cover.focus_below = focus;
  // What is pressed would be disabled under the pointer: its release is the cover's.
  const HWND holder = GetCapture();
  if (holder && frame_ && is_in(holder, frame_) && cover.released) {
    release_for_ = cover.window;
    SetCapture(frame_);
  } else if (holder) {
    ReleaseCapture();
  }
  covers_.push_back(std::move(cover));
  keep_order();
}

void ModalCovers::drop(HWND window) {
  const auto found = std::find_if(covers_.begin(), covers_.end(),
                                  [window](const ModalCover& one) { return one.window == window; });
  if (found == covers_.end()) return;
  if (release_for_ == window) {
    release_for_ = nullptr;
    if (frame_ && GetCapture() == frame_) ReleaseCapture();
  }
  const HWND focus_below = found->focus_below;
  const auto above = covers_.erase(found);
  const bool was_top = above == covers_.end();
  keep_order();
  if (was_top)
    give_back(focus_below);
  else
    above->focus_below = focus_below;
}

void ModalCovers::keep_order() {
  std::erase_if(covers_, [](const ModalCover& one) { return !IsWindow(one.window); });
  for (const ModalCover& one : covers_)
    if (!frame_ || !IsChild(frame_, one.window))
      EnableWindow(one.window, pointer_over(one.window) == nullptr);
  if (!frame_) return;
  for (const ModalCover& one : covers_)
    if (IsChild(frame_, one.window))
      SetWindowPos(one.window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  for (HWND child = GetWindow(frame_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    const bool open = pointer_over(child) == nullptr;
    if ((IsWindowEnabled(child) != FALSE) != open) EnableWindow(child, open);
  }
  const bool own_window = !covers_.empty() && !IsChild(frame_, covers_.back().window);
  if ((IsWindowEnabled(frame_) != FALSE) == own_window) EnableWindow(frame_, !own_window);
}

HWND ModalCovers::over(HWND window) const {
  if (covers_.empty() || is_in(window, covers_.back().window)) return nullptr;
  return covers_.back().window;
}

// What drops down from a control is a window beside the frame and stands above all.
bool ModalCovers::is_below(HWND window) const {
  if (is_in(window, covers_.back().window)) return false;
  return (frame_ && is_in(window, frame_)) ||
         std::any_of(covers_.begin(), covers_.end(),
                     [window](const ModalCover& one) { return is_in(window, one.window); });
}

HWND ModalCovers::pointer_over(HWND window) const {
  for (auto cover = covers_.rbegin(); cover != covers_.rend(); ++cover) {
    if (is_in(window, cover->window)) return nullptr;
    if (!cover->lets_presses_through) return cover->window;
  }
  return nullptr;
}

void ModalCovers::give_focus(HWND window) {
  std::size_t above = 0;  // of what covers the window
  for (std::size_t i = 0; i < covers_.size(); ++i)
    if (is_in(window, covers_[i].window)) above = i + 1;
  if (above < covers_.size())
    covers_[above].focus_below = window;
  else
    SetFocus(window);
}

// What had the focus may be gone, or have been made anew.
void ModalCovers::give_back(HWND wanted) {
  if (wanted && IsWindowEnabled(wanted) && IsWindowVisible(wanted)) {
    SetFocus(wanted);
  } else if (!covers_.empty()) {
    SetFocus(covers_.back().window);
  } else if (frame_) {
    SetFocus(frame_);  // which passes it on to what is seen
  }
}

void ModalCovers::resized() {
  const std::vector<ModalCover> standing = covers_;  // one may go meanwhile
  for (const ModalCover& one : standing)
    if (one.resized && IsWindow(one.window)) one.resized();
}

bool ModalCovers::take_pointer(const MSG& message) {
  if (release_for_ && message.message == WM_LBUTTONUP) {
    const HWND due = std::exchange(release_for_, nullptr);
    if (frame_ && GetCapture() == frame_) ReleaseCapture();
    for (const ModalCover& one : covers_)
      if (one.window == due && one.released) {
        const auto released = one.released;  // it may drop itself
        released(screen_point(message));
        break;
      }
    return true;
  }
  if (covers_.empty() || !is_press(message.message)) return false;
  if (!is_below(message.hwnd)) return false;
  const ModalCover& cover = covers_.back();
  // The window's frame lies below nothing: by it a person moves, sizes and closes what stands too.
  const bool goes_on = cover.lets_presses_through || message.message == WM_NCLBUTTONDOWN;
  if (const auto pressed = cover.pressed_beside) pressed(screen_point(message));
  return !goes_on;
}

}  // namespace orvello
