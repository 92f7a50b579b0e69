// What a person can take back of a notes page: text and strokes in one row of steps.
#pragma once

#include <vector>

#include "hosts/shared/notes_ink.h"

namespace orvello {

struct NotesState {
  Text text;
  std::vector<NotesRun> runs;
  NotesInk ink;
  float width = 0;  // at 96 dpi
  int caret = 0;
};

class NotesHistory {
 public:
  void clear();
  bool can_undo() const { return !undo_.empty(); }
  bool can_redo() const { return !redo_.empty(); }
  // Before a change, with the page as it is. Letters typed in a row are one step: `typing` tells
  // the place after the last one, -1 when it is none.
  void note(NotesState before, int typing = -1);
  // Puts the page as it was into `state`, given as it is; false: there is no such step.
  bool undo(NotesState& state) { return move(undo_, redo_, state); }
  bool redo(NotesState& state) { return move(redo_, undo_, state); }
  // The next letter starts a step of its own.
  void end_typing() { typing_ = -1; }

 private:
  bool move(std::vector<NotesState>& from, std::vector<NotesState>& to, NotesState& state);

  std::vector<NotesState> undo_, redo_;
  int typing_ = -1;  // where a letter would go on with the last step
};

}  // namespace orvello
