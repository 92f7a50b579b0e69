// Ink capture and the on-screen keyboard. A desktop has neither: there loading succeeds, hiding
// does nothing, and the keyboard on the desk is an input panel that never needs room.
// User-interface thread.
#pragma once

#include "base/geometry.h"
#include "base/text.h"

namespace orvello {

// no_room: it would cover what it must not, and stays down.
enum class PanelAnswer { raised, no_room };

class InputMethods {
 public:
  virtual ~InputMethods() = default;
  virtual bool load_library(TextView name) = 0;
  virtual void free_library(TextView name) = 0;
  // `beside` is in the main window, in device pixels. A panel that is up already may go down.
  virtual PanelAnswer raise_input_panel(const Rect& beside) = 0;
  virtual void hide_input_panel() = 0;
};

}  // namespace orvello
