// Ink capture and the on-screen keyboard. A desktop has neither: there loading succeeds and hiding
// does nothing. User-interface thread.
#pragma once

#include "base/text.h"

namespace orvello {

class InputMethods {
 public:
  virtual ~InputMethods() = default;
  virtual bool load_library(TextView name) = 0;
  virtual void free_library(TextView name) = 0;
  virtual void hide_input_panel() = 0;
};

}  // namespace orvello
