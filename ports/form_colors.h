// The colours of the host's own forms, which follow the desktop's scheme, for what a procedure
// draws on them.
#pragma once

#include "base/color.h"

namespace orvello {

struct FormColors {
  Color ground = rgb(246, 246, 249);       // behind the controls
  Color field = kWhite;                    // of edits and lists
  Color text = rgb(27, 28, 38);            // on either
  Color dim_text = rgb(106, 108, 122);     // of what matters less
  Color line = rgb(201, 204, 214);         // between things
  Color accent = rgb(9, 9, 165);           // what is chosen or has the focus
  Color accent_tint = rgb(228, 230, 247);  // the ground of a chosen row, under `text`
  Color accent_text = kWhite;              // on the accent
  friend bool operator==(const FormColors&, const FormColors&) = default;
};

}  // namespace orvello
