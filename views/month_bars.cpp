#include "views/month_bars.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "draw/readable.h"
#include "views/bar_colors.h"
#include "views/month_cells.h"
#include "views/month_icons.h"

namespace orvello {

namespace {

std::uint64_t slot_bits(int first, int last) {
  return (~std::uint64_t{0} >> (64 - (last - first))) << first;
}

constexpr double kHairlineContrast = 1.5;

// Half a minute in slots: dates are fractions of a day and never exact.
constexpr double kSlack = 1.0 / 60;

int slot_before(CalendarDate date) { return static_cast<int>(time_of_day(date) * 48 + kSlack); }
int slot_after(CalendarDate date) {
  return static_cast<int>(std::ceil(time_of_day(date) * 48 - kSlack));
}

}  // namespace

MonthBars::MonthBars(const MonthSnapshot& snapshot, const MonthLayout& layout)
    : snapshot_(snapshot), layout_(layout) {
  const BarColors chosen(snapshot);
  for (std::size_t text = 0; text < snapshot.period.categories.size(); ++text) {
    colors_.emplace_back();
    for (std::size_t status = 0; status < kStatuses; ++status)
      colors_.back()[status] =
          color_index(chosen.of(static_cast<std::int32_t>(text), static_cast<BusyStatus>(status)));
  }
}

void MonthBars::add(const PeriodItem& item, const CellSpan& span) {
  if (!item.passes_profile || span.first > span.last) return;
  const bool free = item.busy_status == BusyStatus::free;
  if (item.all_day && free && snapshot_.showfree != 1) return;
  const std::uint8_t color = color_of(item);
  for (int index = span.first; index <= span.last; ++index) {
    if (!layout_.cells[index].drawn) continue;
    Cell& cell = cells_[index];
    if (item.all_day) {
      add_all_day(cell, free, color);
      continue;
    }
    const Day day = whole_day(layout_.grid.grid_start) + index;
    const bool began_before = whole_day(item.start) < day;
    const int first = began_before ? 0 : std::min(slot_before(item.start), kSlots - 1);
    int last = whole_day(item.end) <= day ? std::min(slot_after(item.end), kSlots) : kSlots;
    // What ends at midnight takes no time of the day that begins then.
    if (last <= 0 && began_before) continue;
    last = std::max(last, first + 1);
    add_slots(cell, first, last, color);
  }
}

// Taken time is shown before free time, else the first appointment counts.
void MonthBars::add_all_day(Cell& cell, bool free, std::uint8_t color) {
  if (cell.all_day && (free || !cell.all_day_free)) return;
  cell.all_day = true;
  cell.all_day_free = free;
  cell.all_day_color = color;
}

void MonthBars::add_slots(Cell& cell, int first, int last, std::uint8_t color) {
  std::uint64_t bits = slot_bits(first, last);
  const auto lanes_end = cell.lanes.begin() + layout_.bars.lanes;
  const auto free_lane = std::find_if(cell.lanes.begin(), lanes_end,
                                      [&](const Lane& lane) { return (lane.taken & bits) == 0; });
  Lane& lane = free_lane == lanes_end ? *(lanes_end - 1) : *free_lane;
  bits &= ~lane.taken;
  if (bits == 0) return;
  lane.taken |= bits;
  lane.begins |= bits & -bits;
  for (; bits != 0; bits &= bits - 1) lane.colors[std::countr_zero(bits)] = color;
}

std::uint8_t MonthBars::color_of(const PeriodItem& item) const {
  return colors_[static_cast<std::size_t>(item.categories)]
                [static_cast<std::size_t>(item.busy_status) % kStatuses];
}

std::uint8_t MonthBars::color_index(Color color) {
  const auto found = std::find(palette_.begin(), palette_.end(), color);
  if (found == palette_.end() && palette_.size() < 255) {
    palette_.push_back(color);
    return static_cast<std::uint8_t>(palette_.size() - 1);
  }
  return static_cast<std::uint8_t>(std::min<std::ptrdiff_t>(found - palette_.begin(), 254));
}

// Category colours are chosen as backgrounds: as a thin bar a pale one would vanish on paper, a
// deep one on a dark day.
Color MonthBars::on_ground(const MonthCell& place, std::uint8_t color) const {
  return visible_on(cell_background(snapshot_, place), palette_[color]);
}

std::vector<MonthBar> MonthBars::bars_of(int index) const {
  std::vector<MonthBar> bars;
  const Cell& cell = cells_[index];
  const MonthCell& place = layout_.cells[index];
  const BarBand& band = layout_.bars;
  if (cell.all_day) append_all_day(place, cell, bars);
  // Where the day lies, so that a short bar alone still says when.
  if (cell.lanes[0].taken != 0 && band.axis_height > 0) {
    bars.push_back(
        {{place.box.x + band.left, place.box.y + band.axis_top, band.width, band.axis_height},
         visible_on(cell_background(snapshot_, place), snapshot_.color(ColorSlot::month_line),
                    kHairlineContrast)});
  }
  for (int lane = 0; lane < band.lanes; ++lane) append_lane(place, cell, lane, bars);
  return bars;
}

void MonthBars::append_all_day(const MonthCell& place, const Cell& cell,
                               std::vector<MonthBar>& bars) const {
  const BarBand& band = layout_.bars;
  const int scale = layout_.screen.scale;
  const int dash = cell.all_day_free ? 3 * scale : band.width;
  for (int x = 0; x < band.width; x += dash + 2 * scale) {
    bars.push_back({{place.box.x + band.left + x, place.box.y + band.all_day_top,
                     std::min(dash, band.width - x), band.all_day_height},
                    on_ground(place, cell.all_day_color)});
  }
}

void MonthBars::append_lane(const MonthCell& place, const Cell& cell, int number,
                            std::vector<MonthBar>& bars) const {
  const Lane& lane = cell.lanes[number];
  const BarBand& band = layout_.bars;
  const int scale = layout_.screen.scale;
  const int left = place.box.x + band.left;
  const int top = place.box.y + band.lanes_bottom - number * band.lane_pitch - band.lane_height;
  const auto at = [&](int slot) { return left + slot * band.width / kSlots; };
  for (int slot = 0; slot < kSlots;) {
    if (!(lane.taken >> slot & 1)) {
      ++slot;
      continue;
    }
    int end = slot + 1;
    while (end < kSlots && (lane.taken >> end & 1) && !(lane.begins >> end & 1) &&
           lane.colors[end] == lane.colors[slot])
      ++end;
    // Back to back appointments stay apart by a pixel where they are long enough to spare one.
    const bool touches = end < kSlots && (lane.taken >> end & 1);
    int x = at(slot);
    int width = at(end) - x - (touches && at(end) - x > 2 * scale ? scale : 0);
    width = std::max(width, 2 * scale);
    x = std::min(x, left + band.width - width);
    bars.push_back({{x, top, width, band.lane_height}, on_ground(place, lane.colors[slot])});
    slot = end;
  }
}

bool MonthIndicatorPass(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas,
                        MonthIcons& icons, const DrawControl& control) {
  MonthBars bars(snapshot, layout);
  for (const PeriodItem& item : snapshot.period.items) {
    if (control.stopped()) return false;
    const CellSpan span = cells_of(item, layout.grid);
    bars.add(item, span);
    if (snapshot.showholiday == 1) icons.place(item, span);
  }
  for (int cell = 0; cell < static_cast<int>(layout.cells.size()); ++cell) {
    if (control.stopped()) return false;
    for (const MonthBar& bar : bars.bars_of(cell)) canvas.fill_rect(bar.box, bar.color);
    control.progress();
  }
  return true;
}

}  // namespace orvello
