// An appointment that is drawn to another time of its day: so many pixels are a quarter of an hour.
// Pure.
#pragma once

#include <optional>

#include "base/text.h"
#include "calendar/calendar_date.h"
#include "store/day_agenda.h"

namespace orvello {

class TimeDrag {
 public:
  // Nothing for what has no time of its own there: whole days, what began before the day or ends
  // after it, and what stands for several.
  static std::optional<TimeDrag> of(const DayRow& row, CalendarDate end, Day day, int dpi);

  // So far down from where it was taken; on a quarter, unless it has not moved, and never out of
  // the day.
  CalendarDate start_at(int pixels) const;
  Text label_at(int pixels, bool clock24) const;
  bool moves(int pixels) const { return start_at(pixels) != start_at(0); }

 private:
  TimeDrag(LocalSeconds start, LocalSeconds end, Day day, int quarter)
      : start_(start), end_(end), day_(day), quarter_(quarter) {}

  LocalSeconds start_, end_;
  Day day_;
  int quarter_;  // pixels
};

}  // namespace orvello
