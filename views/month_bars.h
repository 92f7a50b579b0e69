// Time indicator bars: each appointment as a bar in its day cells whose place and length show its
// time of day. A cell runs from midnight to midnight, left to right, in half-hour slots.
//
// Appointments that overlap stand in lanes above each other; what finds no free lane of the three
// fills the gaps of the top one. All-day appointments share one line at the bottom: filled when the
// time is taken, an outline when it is free - and those only with showfree.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "views/draw_control.h"
#include "views/month_snapshot.h"

namespace orvello {

struct MonthBar {
  Rect box;
  Color color = 0;
  bool outline = false;
  friend bool operator==(const MonthBar&, const MonthBar&) = default;
};

// Collects bars cell by cell, so that any number of appointments ends as a few rectangles.
class MonthBars {
 public:
  MonthBars(const MonthSnapshot& snapshot, const MonthLayout& layout)
      : snapshot_(snapshot), layout_(layout) {}

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
    std::array<Lane, kBarLanes> lanes;
    bool all_day = false;
    bool all_day_free = false;
    std::uint8_t all_day_color = 0;
  };

  void add_all_day(Cell& cell, bool free, std::uint8_t color);
  void add_slots(Cell& cell, int first, int last, std::uint8_t color);
  void append_lane(const MonthCell& place, const Cell& cell, int lane,
                   std::vector<MonthBar>& bars) const;
  std::uint8_t color_of(const AppointmentSummary& summary);
  std::uint8_t color_index(Color color);
  // Nothing where the categories have no colour of their own.
  std::optional<Color> category_color(TextView categories) const;

  const MonthSnapshot& snapshot_;
  const MonthLayout& layout_;
  std::array<Cell, 42> cells_{};
  std::vector<Color> palette_;
  std::unordered_map<TextView, int> colors_by_text_;  // -1: none
};

// Bars and, with showholiday, icons. False: given up, a newer drawing is wanted.
bool MonthIndicatorPass(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas,
                        const DrawControl& control);

}  // namespace orvello
