// Time indicator bars: each appointment as a bar in its day cells whose place and length show its
// time of day. A cell runs from midnight to midnight, left to right, in half-hour slots.
//
// Appointments that overlap stand in lanes above each other; what finds no free lane
// fills the gaps of the top one. All-day appointments share one line at the bottom: solid when the
// time is taken, dashed when it is free - and those only with showfree.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "views/draw_control.h"
#include "views/month_icons.h"
#include "views/month_snapshot.h"

namespace orvello {

struct MonthBar {
  Rect box;
  Color color = 0;
  friend bool operator==(const MonthBar&, const MonthBar&) = default;
};

// Collects bars cell by cell, so that any number of appointments ends as a few rectangles.
class MonthBars {
 public:
  MonthBars(const MonthSnapshot& snapshot, const MonthLayout& layout);

  void add(const PeriodItem& item, const CellSpan& span);
  std::vector<MonthBar> bars_of(int cell) const;

 private:
  static constexpr int kSlots = 48;
  struct Lane {
    std::uint64_t taken = 0;   // a bit for each slot
    std::uint64_t begins = 0;  // where an appointment begins
    std::array<std::uint8_t, kSlots> colors{};
  };
  struct Cell {
    std::array<Lane, kMaxBarLanes> lanes;
    bool all_day = false;
    bool all_day_free = false;
    std::uint8_t all_day_color = 0;
  };

  void add_all_day(Cell& cell, bool free, std::uint8_t color);
  void add_slots(Cell& cell, int first, int last, std::uint8_t color);
  void append_lane(const MonthCell& place, const Cell& cell, int lane,
                   std::vector<MonthBar>& bars) const;
  Color on_ground(const MonthCell& place, std::uint8_t color) const;
  void append_all_day(const MonthCell& place, const Cell& cell, std::vector<MonthBar>& bars) const;
  std::uint8_t color_of(const PeriodItem& item) const;
  std::uint8_t color_index(Color color);

  const MonthSnapshot& snapshot_;
  const MonthLayout& layout_;
  std::array<Cell, 42> cells_{};
  std::vector<Color> palette_;
  static constexpr std::size_t kStatuses = 4;
  std::vector<std::array<std::uint8_t, kStatuses>> colors_;  // by categories and status
};

// Bars and, with showholiday, icons. False: given up, a newer drawing is wanted.
bool MonthIndicatorPass(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas,
                        MonthIcons& icons, const DrawControl& control);

}  // namespace orvello
