// Category icons in the cells of the Month view.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>

#include "views/draw_control.h"
#include "views/month_snapshot.h"

namespace orvello {

// Puts icons into cells, each icon slot at most once in a cell. One lives as long as one pass; the
// snapshot outlives it.
class MonthIcons {
 public:
  MonthIcons(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas)
      : snapshot_(snapshot), layout_(layout), canvas_(canvas) {}

  // Offers the item's days to every slot, if the item passes the profile.
  void place(const PeriodItem& item, const CellSpan& span);

 private:
  std::uint64_t slots_of(TextView categories);  // bit i: the snapshot's i-th icon
  void offer(int cell, std::uint64_t slots);

  const MonthSnapshot& snapshot_;
  const MonthLayout& layout_;
  Canvas& canvas_;
  std::array<int, 42> counts_{};
  std::array<std::uint64_t, 42> placed_{};  // a flag for each slot
  std::unordered_map<TextView, std::uint64_t> slots_by_text_;
};

// The icons alone. False: given up, a newer drawing is wanted.
bool MonthIconPass(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas,
                   const DrawControl& control);

}  // namespace orvello
