// The lines in which a day's cell names its first appointments, where it has room for names: whole
// days first, then by their start, and how many more there are behind the last.
#pragma once

#include <array>
#include <vector>

#include "store/row_key.h"
#include "views/draw_control.h"
#include "views/month_icons.h"
#include "views/month_snapshot.h"

namespace orvello {

// Collects what fits while the appointments are read, so that of any number few subjects are kept.
// User-interface thread.
class MonthLineCollector {
 public:
  // Both outlive it. Its cells take no lines where its band has none.
  MonthLineCollector(const MonthLayout& layout, const SettingsRecord& settings);

  void add(const StoreItem& item, const PeriodItem& kept);
  MonthLines lines() &&;  // one entry a cell

 private:
  void add_to(std::size_t cell, const StoreItem& item, const PeriodItem& kept, bool starts_here);

  const MonthLayout& layout_;
  bool clock24_;
  bool show_free_;
  const LocaleData& locale_;
  MonthLines cells_;
};

// The line of a cell that a point lies on; null: none.
const MonthLine* month_line_at(const MonthSnapshot& snapshot, const MonthLayout& layout,
                               Point point);

// Beside the icons that have been placed. False: given up, a newer drawing is wanted.
bool draw_month_lines(const MonthSnapshot& snapshot, const MonthLayout& layout,
                      const MonthIcons& icons, Canvas& canvas, const DrawControl& control);

}  // namespace orvello
