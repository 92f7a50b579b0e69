// What the pen does on the grids of the Month and Year views. A press and release at one place is a
// tap; a release a good way to the side is a drag that turns the page. A press that stays on a day
// for the hold time asks for that day's popup, or slides from day to day from then on and opens the
// one that it is lifted from. One on an appointment's line carries that when it is drawn away, and
// is not lifted within the hold time: that would be a swipe.
// Pure: points and what lies under them in, an action out.
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
      popup,
      slide,      // at `point`, each time that it moves
      end_slide,  // beside all days
      carry,      // `item` of `date`, which has come to `point`
      carry_on,   // to `point`
      let_go,     // there
      drop        // it was no carrying, but a swipe; `value` pages are turned
    };
    Kind kind = Kind::none;
    int value = 0;        // the month 1-12; the years or months to step
    MonthDayYear date{};  // open_day, popup and carry
    RowKey item{};        // open_day and carry; none: of the day alone
    Point point{};
  };

  // Distances that count are in proportion to the view's width and the screen's density.
  void set_view(int width, int dpi) { reach_ = PenReach::of(width, dpi); }
  // What a press that stays does: false: it asks for the popup.
  void set_slides(bool slides) { slides_ = slides; }

  Action press(Point point, const GridTarget& target);
  Action move(Point point);
  Action release(Point point, const GridTarget& target);
  Action hold(bool pen_is_down);  // the hold time has passed
  void forget() { way_ = Way::up; }
  bool is_down() const { return way_ != Way::up; }
  int slack() const { return reach_.slack; }

 private:
  enum class Way { up, pressed, wandered, sliding, carrying };  // wandered: too far for a tap
  Action tap(const GridTarget& target) const;
  Way way_ = Way::up;
  bool slides_ = false;
  bool ripe_ = false;  // pressed for the hold time: what is carried was meant to be
  Point press_, last_;
  GridTarget target_;
  PenReach reach_;
};

}  // namespace orvello
