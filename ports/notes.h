// A page of notes: text in runs of style, and what was drawn over it with the pen. Lengths of
// strokes are pixels at 96 dpi from the page's upper left corner, whatever the screen's density.
#pragma once

#include <vector>

#include "base/color.h"
#include "base/text.h"

namespace orvello {

struct NotesStyle {
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool bullet = false;  // of whole paragraphs
  friend bool operator==(const NotesStyle&, const NotesStyle&) = default;
};

// `length` UTF-16 units from `start` on; text that no run covers is plain. Runs are in order and do
// not overlap.
struct NotesRun {
  int start = 0;
  int length = 0;
  NotesStyle style;
  friend bool operator==(const NotesRun&, const NotesRun&) = default;
};

struct StrokePoint {
  float x = 0, y = 0;
  float pressure = 1;  // 0 to 1; 1 where a device does not know
  friend bool operator==(const StrokePoint&, const StrokePoint&) = default;
};

struct NotesStroke {
  Color color = kBlack;
  float width = 2;  // at full pressure
  std::vector<StrokePoint> points;
  friend bool operator==(const NotesStroke&, const NotesStroke&) = default;
};

struct NotesContent {
  Text text;  // paragraphs end with '\n'
  std::vector<NotesRun> runs;
  std::vector<NotesStroke> strokes;
  // Where text wraps, so that strokes stay on their words on every screen; 0: at the pane's edge,
  // as it does without strokes. The width that the pane has when the first stroke is drawn.
  float width = 0;
  friend bool operator==(const NotesContent&, const NotesContent&) = default;
};

enum class NotesTool { text, pen, eraser };  // the eraser takes strokes that it touches, whole

// Its events: `changed`, and `taken` when the caret came to stand in another style.
class NotesControl {
 public:
  virtual ~NotesControl() = default;
  virtual NotesContent content() const = 0;
  // Whatever its limit. Nothing to undo from then on.
  virtual void set_content(const NotesContent& content) = 0;
  virtual NotesTool tool() const = 0;
  virtual void set_tool(NotesTool tool) = 0;
  // Of the selected text, or of what is typed next. Setting it is a person's wish, and can be
  // undone where it changed something.
  virtual NotesStyle style() const = 0;
  virtual void set_style(const NotesStyle& style) = 0;
  // A person's last change, of text, styles or strokes; false: there is none.
  virtual bool can_undo() const = 0;
  virtual bool can_redo() const = 0;
  virtual bool undo() = 0;
  virtual bool redo() = 0;
};

}  // namespace orvello
