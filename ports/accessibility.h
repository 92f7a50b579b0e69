// What a screen reader is told of something that the program draws by itself. User-interface
// thread. The host asks only while someone listens, so an answer may cost a query.
#pragma once

#include <vector>

#include "base/geometry.h"
#include "base/text.h"

namespace orvello {

struct AccessibleCell {
  Text name;  // "21 November, 3 appointments"
  Rect place;
  bool selected = false;  // the cell that the keyboard stands on
  friend bool operator==(const AccessibleCell&, const AccessibleCell&) = default;
};

struct AccessibleGrid {
  Text name;
  int columns = 1;  // cells run row by row
  std::vector<AccessibleCell> cells;
  int buttons = 0;  // how many of the last cells are none of the grid's, but stand beside it
};

// The view that the main window shows.
class AccessibleView {
 public:
  virtual ~AccessibleView() = default;
  virtual AccessibleGrid accessible_grid() = 0;  // without cells: nothing to tell
  // What lies in a cell, a text each: its appointments.
  virtual std::vector<Text> accessible_items(int cell) = 0;
  virtual void choose_accessible(int cell) = 0;  // as a tap on it
};

}  // namespace orvello
