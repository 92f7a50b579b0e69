// What the pen does in the Month view. A press and release at one place is a tap; a release a
// good way to the side is a drag that turns the month; a press that stays on a day for the hold
// time asks for that day's popup. Pure: points and hits in, an action out.
#pragma once

#include "base/geometry.h"
#include "calendar/dates.h"
#include "views/month_layout.h"

namespace orvello {

class MonthPointer {
 public:
  struct Action {
    enum class Kind { none, start_hold, stop_hold, show_month, show_year, open_day, turn, popup };
    Kind kind = Kind::none;
    int value = 0;      // month 1-12, a step of years, or of months
    MonthDayYear date;  // open_day and popup
  };

  Action press(Point point, const MonthLayout& layout);
  Action move(Point point, const MonthLayout& layout);
  Action release(Point point, const MonthLayout& layout);
  Action hold(const MonthLayout& layout, bool pen_is_down);
  void forget() { pressed_ = false; }

 private:
  bool is_drag(Point point, const MonthLayout& layout) const;
  bool moved_off(Point point, const MonthLayout& layout) const;

  bool pressed_ = false;
  bool left_place_ = false;  // moved too far for a tap
  Point press_;
};

}  // namespace orvello
