// What a dialog consists of, as data. Places are pixels at 96 dpi on a screen 240 pixels wide; the
// rules beside them say what becomes of a control where there is more room (draw/form_layout.h).
#pragma once

#include <optional>
#include <vector>

#include "base/color.h"
#include "base/geometry.h"
#include "base/image.h"
#include "base/text.h"

namespace orvello {

struct ControlTemplate {
  enum class Kind {
    label,
    line,  // a text that is tapped, and takes the focus, to edit what it shows
    button,
    default_button,  // also Return's
    picture_button,  // its text is its accessible name
    check_box,
    radio_button,
    toggle,  // a button that stays down
    edit,
    multi_line_edit,
    drop_list,
    combo,        // a drop list with a text of its own
    date_picker,  // a date that drops down a calendar
    list,
    multi_list,  // a list with several selected rows
    slider,
    report,          // a ReportList
    month_calendar,  // a month to choose a day from
    notes,           // text, styles and strokes on one page
    custom           // drawn by the procedure; takes the pointer and keys, disabled only looks
  };
  // What a control does with width, and with height, that the form has beyond its design.
  enum class Across {
    keep,        // stays at its distance from the left
    stretch,     // takes all of it
    right,       // keeps its distance from the right edge
    center,      // stays in the middle
    left_half,   // the left one of two side by side: takes half of it
    right_half,  // the right one: moves by half of it and takes the other half
    after_half   // moves by half of it: what stands beside a right half
  };
  enum class Down { keep, stretch, bottom };  // bottom: keeps its distance from the lower edge

  Kind kind = Kind::label;
  int id = 0;
  Text text;  // one without is named to a screen reader by the label before it, else by the title
  Rect place;
  Across across = Across::keep;
  Down down = Down::keep;
  // The controls of a section keep together, and follow each other in the template, which is the
  // tab order. In a form that is wide enough the later sections flow into a second column; what is
  // in section 0 stands above and below them.
  int section = 0;
  int step = 0;   // 0: on every step; else seen on this step only, in places that steps share
  int group = 0;  // radio buttons of one number belong together
  int limit = 0;  // of an edit's, combo's or page of notes' text, in UTF-16 units; 0: none
  std::optional<Color> color{};  // of a label's text; else the form's
  std::optional<Image> image{};  // of a picture button or toggle; without it they show the text
  bool hidden = false;           // until the procedure shows it; may stand where others do
};

struct DialogTemplate {
  int id = 0;
  Text title;
  bool full_screen = true;
  Size size;  // at 96 dpi
  std::vector<ControlTemplate> controls;

  // A popup has no title and no close button. A press beside it is the event focus_lost without a
  // control; Escape closes it, if may_close agrees.
  bool popup = false;
  // The press beside it is also one on what lies there, as if the popup were not: a dialog is told
  // of it when the popup has been closed by its procedure.
  bool press_goes_on = false;
  // Where a popup stands in the main window, in device pixels; empty: in the middle, at its size.
  Rect place;
  // Its outline in device pixels from that place's corner; empty: the whole rectangle.
  std::vector<Point> outline;
};

}  // namespace orvello
