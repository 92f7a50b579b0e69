// What the pen does on a list of appointments. A press selects the row under it; lifted where it
// went down it is a tap; drawn aside it turns the day, and up or down it moves the list. A press
// that stays is a hold. Pure: points and rows in, an action out.
#pragma once

#include "app/pen_reach.h"
#include "base/geometry.h"

namespace orvello {

class ListPointer {
 public:
  struct Action {
    enum class Kind { none, select, tap, menu, turn, scroll };
    Kind kind = Kind::none;
    int row = -1;   // select and tap; -1: below the rows
    int value = 0;  // turn: the days; scroll: the pixels downwards
    Point point;    // menu
  };

  void set_view(int width, int dpi) { reach_ = PenReach::of(width, dpi); }

  Action press(Point point, int row);
  Action move(Point point);
  Action release(Point point);
  Action hold();  // the hold time has passed
  bool is_down() const { return pressed_; }
  void let_go() { pressed_ = false; }

 private:
  enum class Way { undecided, aside, along };
  bool pressed_ = false;
  Way way_ = Way::undecided;
  Point press_, last_;
  int row_ = -1;
  PenReach reach_;
};

}  // namespace orvello
