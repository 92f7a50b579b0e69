// Category icons in the cells of the Month view.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "views/draw_control.h"
#include "views/month_snapshot.h"

namespace orvello {

// Puts icons into cells, each icon slot at most once in a cell. One lives as long as one pass; the
// snapshot outlives it.
class MonthIcons {
 public:
  MonthIcons(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas);

  // Offers the item's days to every slot, if the item passes the profile.
  void place(const PeriodItem& item, const CellSpan& span);
  int count(int cell) const { return counts_[static_cast<std::size_t>(cell)]; }  // placed so far

 private:
  void offer(int cell, std::uint64_t slots);
  void draw(const Image& picture, const MonthCell& cell, int n);

  const MonthSnapshot& snapshot_;
  const MonthLayout& layout_;
  Canvas& canvas_;
  std::array<int, 42> counts_{};
  std::array<std::uint64_t, 42> placed_{};          // a flag for each slot
  std::vector<std::uint64_t> slots_by_categories_;  // bit i: the snapshot's i-th icon
};

// The icons alone. False: given up, a newer drawing is wanted.
bool MonthIconPass(const MonthSnapshot& snapshot, const MonthLayout& layout, MonthIcons& icons,
                   const DrawControl& control);

}  // namespace orvello
