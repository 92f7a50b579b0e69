// What a person does on a control that is drawn, out of all that a dialog is told of.
#pragma once

#include "ports/dialog.h"

namespace orvello {

// The message loop hands it over: it is told at once, behind what waits.
inline bool is_input(DialogEvent::Kind kind) {
  using Kind = DialogEvent::Kind;
  switch (kind) {
    case Kind::pointer_down:
    case Kind::pointer_move:
    case Kind::pointer_up:
    case Kind::double_tap:
    case Kind::context_menu:
    case Kind::wheel:
    case Kind::key:
      return true;
    default:
      return false;
  }
}

}  // namespace orvello
