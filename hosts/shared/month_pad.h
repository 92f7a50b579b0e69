// A month to choose a day from, without its drawing: arrows for the month and the year, the names
// of days, six weeks. Places are pixels, counted from the edge where lines begin. Parts are
// numbered: the arrows back and on for months, then for years, then the days from the first week's
// first.
#pragma once

#include "base/geometry.h"
#include "base/text.h"
#include "calendar/dates.h"
#include "calendar/locale_data.h"

namespace orvello {

class MonthPad {
 public:
  static constexpr int kArrows = 4, kColumns = 7, kRows = 6;
  static constexpr int kParts = kArrows + kColumns * kRows;

  void set_size(Size size, double unit);  // `unit` of its pixels are a design unit
  void set_date(const MonthDayYear& date) { date_ = date; }
  void set_monday_first(bool monday_first) { monday_first_ = monday_first; }
  const MonthDayYear& date() const { return date_; }
  Size size() const { return size_; }

  Rect place(int part) const;
  int part_at(Point point) const;  // -1: none
  Rect month_room() const { return between(0, 1); }
  Rect year_room() const { return between(2, 3); }
  Rect names_room(int column) const;
  int weekday(int column) const;  // 0 Monday
  MonthDayYear day(int part) const;
  // Where a tap leads: an arrow to another month, a day to itself.
  MonthDayYear target(int part) const;
  Text name(int part, const LocaleData& locale) const;  // what a screen reader says

 private:
  int scaled(int design) const;
  Rect between(int back, int on) const;

  Size size_;
  double unit_ = 1;
  MonthDayYear date_{1, 1, 2000};
  bool monday_first_ = false;
};

}  // namespace orvello
