// Takes a row that is drawn out of a popup over the view below it.
#pragma once

#include "base/geometry.h"
#include "calendar/dates.h"
#include "store/row_key.h"

namespace orvello {

// Points are the window's.
class RowCarrier {
 public:
  virtual ~RowCarrier() = default;
  virtual void take(const RowKey& key, const MonthDayYear& from, Point at) = 0;
  virtual void carry_on(Point at) = 0;
  // True: on another day, to which it goes when the popup has closed. False: it was put back.
  virtual bool let_go(Point at) = 0;
};

}  // namespace orvello
