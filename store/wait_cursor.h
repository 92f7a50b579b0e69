// The window shows that it is busy, for as long as this lives.
#pragma once

#include "ports/main_window.h"

namespace orvello {

class WaitCursor {
 public:
  explicit WaitCursor(MainWindow& window) : window_(window) { window_.show_wait_cursor(); }
  ~WaitCursor() { window_.hide_wait_cursor(); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;

 private:
  MainWindow& window_;
};

}  // namespace orvello
