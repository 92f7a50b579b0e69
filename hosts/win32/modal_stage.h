// Where something modal stands while it runs: in the main window, above all that is there, or in a
// window of its own while that is not seen.
#pragma once

#include <functional>
#include <memory>

#include "hosts/win32/native_window.h"
#include "hosts/win32/win32_window.h"

namespace orvello {

class ModalStage {
 public:
  explicit ModalStage(Win32Window& window);
  ~ModalStage();
  ModalStage(const ModalStage&) = delete;
  ModalStage& operator=(const ModalStage&) = delete;

  // Makes the room, with a window of its own so large; false: it could not be made.
  bool create(const Text& title, Size own);
  HWND parent() const;
  bool is_own_window() const { return lone_ != nullptr; }
  Size room() const;  // of the parent's client area

  // What stands there is a child of the parent; `cover.window` is it. The cover's functions and
  // `shown` are called while this runs. False: the program ends.
  bool run(ModalCover cover, const std::function<void()>& shown);
  void end();  // run() returns when what runs inside of it has
  void leave();

 private:
  class LoneWindow;
  Win32Window& window_;
  std::unique_ptr<LoneWindow> lone_;
  HWND covering_ = nullptr;
  HWND sheet_ = nullptr;
  bool goes_on_ = false;  // presses do
  bool ended_ = false;
};

}  // namespace orvello
