// What the pen does on the grids of the Month and Year views. A press and release at one place is a
// tap; a release a good way to the side is a drag that turns the page; a press that stays on a day
// for the hold time asks for that day's popup. Pure: points and what lies under them in, an action
// out.
#pragma once

#include "app/pen_reach.h"
#include "base/geometry.h"
#include "views/grid_target.h"

namespace orvello {

class GridPointer {
 public:
  struct Action {
    enum class Kind {
      none,
      start_hold,
      stop_hold,
      show_month,
      step_year,
      show_today,
      open_day,
      turn,
      popup
    };
    Kind kind = Kind::none;
    int value = 0;      // the month 1-12; the years or months to step
    MonthDayYear date;  // open_day and popup
  };

  // Distances that count are in proportion to the view's width and the screen's density.
  void set_view(int width, int dpi) { reach_ = PenReach::of(width, dpi); }

  Action press(Point point, const GridTarget& target);
  Action move(Point point);
  Action release(Point point, const GridTarget& target);
  Action hold(bool pen_is_down);  // the hold time has passed

 private:
  bool pressed_ = false;
  bool wandered_ = false;  // too far for a tap or a hold
  Point press_;
  GridTarget target_;
  PenReach reach_;
};

}  // namespace orvello
