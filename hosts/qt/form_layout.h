// Where a dialog's controls stand on a form of a given size.
#pragma once

#include <vector>

#include "ports/dialog.h"

namespace orvello {

struct FormLayout {
  Size body;                 // what the controls need; more than is there when they do not fit
  std::vector<Rect> places;  // by position in the template
};

Size design_size(const DialogTemplate& dialog);

// Scales the template by `unit` and gives what room is left over to the lists and edits: the
// tallest list grows downwards, wide controls grow to the right, buttons keep to their side.
FormLayout lay_out_form(const DialogTemplate& dialog, double unit, Size available);

// The form of a modal dialog inside `whole`: all of it on a handheld's screen, a centred sheet on a
// larger one.
Rect sheet_place(const DialogTemplate& dialog, double unit, int title_height, Size whole);

// A popup as near to where it is wanted as `whole` allows.
Rect popup_place(const Rect& wanted, Size whole);

}  // namespace orvello
