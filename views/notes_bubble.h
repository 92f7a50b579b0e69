// The bubble that shows an appointment's notes beside its row, headed by what it is, when and
// where: its texts, its shape and its place.
#pragma once

#include <vector>

#include "draw/screen_layout.h"
#include "settings/settings_record.h"

namespace orvello {

struct NotesBubble {
  // 2 has no pointer: the bubble was pushed up to the screen's lower edge.
  enum class Pointer : int { below = 0, above = 1, none = 2 };
  Pointer pointer = Pointer::above;  // where the bubble lies as seen from the row
  int pointer_x = 0;                 // within the bubble
  Rect place;                        // in the main window
  std::vector<Point> outline;        // from the place's corner
  Rect text;                         // likewise
  struct Line {
    Text text;
    bool bold = false;
    int top = 0;  // within the text
  };
  FontSpec font, bold_font;
  std::vector<Line> lines;
  int line_height = 0;
};

struct NotesBubbleText {
  Text subject;
  Text when_and_where;
  Text notes;
  Text spoken() const;  // all of it
};

struct NotesBubbleInput {
  const ScreenLayout& screen;
  int font_points = 12;  // made smaller for notes that would not fit on the screen
  Rect row;              // in the main window
  int aim_x = 0;         // what the pointer points at, in the main window
};

NotesBubble lay_out_notes_bubble(const NotesBubbleInput& input, const NotesBubbleText& text,
                                 Canvas& measure);

// Over what is seen around it.
void draw_notes_bubble_at(Point corner, Canvas& canvas, const NotesBubble& bubble,
                          const ScreenLayout& screen, const ItemColors& colors);

}  // namespace orvello
