// Where a dialog's controls stand on a form of a given size: the template's rules, carried out.
// `unit` is device pixels for one of the template's. Controls come in the template's order, and
// that is the tab order, also in two columns.
#pragma once

#include <vector>

#include "ports/dialog.h"

namespace orvello {

struct FormLayout {
  Size body;                 // what the controls need; more than is there when they do not fit
  std::vector<Rect> places;  // by position in the template, whatever their steps
};

// A template's size, and at least what its controls of all steps cover.
Size design_size(const DialogTemplate& dialog);

// Sections flow into two columns where each gets nearly the design's width, and also where the form
// would not fit in height otherwise and they need no more than half of it. A form that has to be
// scrolled leaves a scroll bar its width. A popup that has a place of its own is laid out in just
// that. Each step is laid out for what is seen on it; step 0 for everything.
// Where several sections stretch, one below the other, they share the room.
FormLayout lay_out_form(const DialogTemplate& dialog, double unit, Size available,
                        int scroll_bar_width = 0, int step = 0);

// The form of a modal dialog inside `whole`: all of it on a handheld's screen, a centred sheet on a
// larger one. `frame_height` is what a title, and tabs, take.
Rect sheet_place(const DialogTemplate& dialog, double unit, int frame_height, Size whole);

// The same for a sheet of pages, of which each gets the room.
Rect sheet_place(const std::vector<SheetPage>& pages, double unit, int frame_height, Size whole);

// A popup as near to where it is wanted as `whole` allows.
Rect popup_place(const Rect& wanted, Size whole);

}  // namespace orvello
