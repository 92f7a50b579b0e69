// The Month view as a page.
#pragma once

#include <memory>

#include "views/grid_page.h"
#include "views/month_layout.h"
#include "views/month_snapshot.h"

namespace orvello {

class MonthPage : public GridPage {
 public:
  using GridPage::GridPage;

  const GridHabits& habits() const override;
  bool same_page(const MonthDayYear& a, const MonthDayYear& b) const override;
  std::optional<ReadOutcome> take(const GridInput& input, bool same_items) override;
  ViewDrawing drawing() const override;
  GridTarget hit(Point point) const override;
  Rect place_of(const MonthDayYear& date) const override;
  AccessibleGrid accessible(const DayCount& count, const AccessibleWords& words) const override;
  std::optional<MonthDayYear> date_of_cell(int cell) const override;
  DayCount count_days_with(const MonthDayYear& shown) const override;

  const MonthLayout& layout() const { return layout_; }
  const MonthSnapshot* snapshot() const { return snapshot_.get(); }  // what was drawn last

 private:
  bool shows(const MonthDayYear& date) const;
  ReadOutcome read(const GridInput& input, MonthSnapshot& snapshot);

  std::shared_ptr<const MonthSnapshot> snapshot_;
  bool read_ = false;  // it holds what was read once
  MonthLayout layout_;
};

}  // namespace orvello
