// The Year view as a page.
#pragma once

#include "views/snapshot_page.h"
#include "views/year_layout.h"
#include "views/year_snapshot.h"

namespace orvello {

class YearPage : public SnapshotPage<YearSnapshot, YearLayout> {
 public:
  using SnapshotPage::SnapshotPage;

  const GridHabits& habits() const override;
  bool same_page(const MonthDayYear& a, const MonthDayYear& b) const override;
  ViewDrawing drawing() const override;
  GridTarget hit(Point point) const override;
  Rect place_of(const MonthDayYear& date) const override;
  AccessibleGrid accessible(const DayCount& count, const AccessibleWords& words) const override;
  std::optional<MonthDayYear> date_of_cell(int cell) const override;
  DayCount count_days_with(const MonthDayYear& shown) const override;

 private:
  bool shows(const MonthDayYear& date) const override;
  bool read(const GridInput& input, YearSnapshot& snapshot) override;
  void keep_read(YearSnapshot& snapshot, const YearSnapshot& earlier) const override;
};

}  // namespace orvello
