// Modal message boxes. User-interface thread.
#pragma once

#include "base/text.h"

namespace orvello {

enum class BoxIcon { none, warning, error };
// Return presses the first one, unless that would lose something: then the last one.
enum class BoxButtons { ok, ok_cancel, yes_no, yes_no_cancel, ok_cancel_losing, yes_no_losing };
enum class BoxAnswer { ok, cancel, yes, no };
// refused: something could not be done, and there is nothing to say about it. hand: what was asked
// for is done, and nothing else shows it.
enum class Beep { refused, hand };

class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  // `owned` boxes belong to the main window; the others stand alone (before a window exists too).
  // One that is left without a choice answers cancel, else no, else ok.
  virtual BoxAnswer show(TextView text, TextView caption, BoxIcon icon = BoxIcon::none,
                         BoxButtons buttons = BoxButtons::ok, bool owned = false) = 0;
  virtual void beep(Beep beep = Beep::refused) = 0;
  // The code of the language of its buttons and of what it is given to say.
  virtual Text language() const = 0;
};

}  // namespace orvello
