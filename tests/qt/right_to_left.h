// The toolkit's direction is the whole program's: a test turns it round for as long as this lives.
#pragma once

#include "hosts/qt/direction.h"
#include "tests/qt/test_window.h"

namespace orvello {

struct RightToLeft {
  RightToLeft() {
    need_application();
    set_right_to_left(true);
  }
  ~RightToLeft() { set_right_to_left(false); }
};

}  // namespace orvello
