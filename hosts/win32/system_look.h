// What the desktop around the window looks like: its colours and the size of its texts.
#pragma once

#include "draw/look_colors.h"

namespace orvello {

struct SystemLook {
  LookColors colors = kLightColors;
  bool dark = false;      // light text on dark
  double text_scale = 1;  // as the desktop asks for it
};

SystemLook read_system_look();

}  // namespace orvello
