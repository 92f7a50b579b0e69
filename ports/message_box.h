// Modal message boxes. User-interface thread.
#pragma once

#include "base/text.h"

namespace orvello {

enum class BoxIcon { none, warning, error };
enum class BoxButtons { ok, ok_cancel, yes_no };
enum class BoxAnswer { ok, cancel, yes, no };

class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  // `owned` boxes belong to the main window; the others stand alone (before a window exists too).
  virtual BoxAnswer show(TextView text, TextView caption, BoxIcon icon = BoxIcon::none,
                         BoxButtons buttons = BoxButtons::ok, bool owned = false) = 0;
  virtual void beep() = 0;  // something could not be done, and there is nothing to say about it
};

}  // namespace orvello
