// What lies under a point of the Month or the Year view.
#pragma once

#include "calendar/dates.h"
#include "store/row_key.h"

namespace orvello {

struct GridTarget {
  enum class Kind { none, month, previous_year, next_year, title, day };
  Kind kind = Kind::none;
  int month = 0;      // 1-12, of a month
  MonthDayYear date;  // of a day
  RowKey item{};      // the appointment whose line in that day it is; none beside the lines
  friend bool operator==(const GridTarget&, const GridTarget&) = default;
};

}  // namespace orvello
