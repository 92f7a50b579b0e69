// What the pen does on a list of appointments. A press selects the row under it; lifted where it
// went down it is a tap; drawn aside it turns the day, and up or down it moves the list, which goes
// on gliding after a quick stroke. What the pen may lift is drawn up or down in place of the list.
// A press that stays is a hold. Pure: points, times and rows in, an action out.
#pragma once

#include "app/pen_reach.h"
#include "base/geometry.h"
#include "base/stroke_speed.h"

namespace orvello {

class ListPointer {
 public:
  struct Action {
    enum class Kind { none, select, tap, menu, turn, scroll, glide, lift, drop };
    Kind kind = Kind::none;
    int row = -1;   // select, tap, lift and drop; -1: below the rows
    int value = 0;  // turn: the days; scroll, lift and drop: the pixels downwards; glide: a second
    Point point;    // menu
  };
  enum class Grip {
    row,   // as above
    list,  // it was gliding: the press stops it, and means nothing else
    item   // drawn up or down it is the row's item that goes
  };

  void set_view(int width, int dpi) { reach_ = PenReach::of(width, dpi); }

  // Times are milliseconds; without them nothing glides.
  Action press(Point point, int row, std::uint64_t time = 0, Grip grip = Grip::row);
  Action move(Point point, std::uint64_t time = 0);
  Action release(Point point, std::uint64_t time = 0);
  Action hold();  // the hold time has passed
  bool is_down() const { return pressed_; }
  bool lifts() const { return pressed_ && way_ == Way::lifted; }
  bool goes_aside() const { return pressed_ && way_ == Way::aside; }
  void let_go() { pressed_ = false; }

 private:
  enum class Way { undecided, aside, along, lifted };
  bool pressed_ = false;
  Way way_ = Way::undecided;
  Grip grip_ = Grip::row;
  Point press_, last_;
  int row_ = -1;
  PenReach reach_;
  StrokeSpeed speed_;
};

}  // namespace orvello
