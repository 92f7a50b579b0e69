#include "views/month_page.h"

#include "views/accessible_buttons.h"
#include "views/month_lines.h"
#include "views/month_paint.h"

namespace orvello {

const GridHabits& MonthPage::habits() const {
  static constexpr GridHabits kHabits{.months = 1, .hold_opens_day = true, .names_days = true};
  return kHabits;
}

bool MonthPage::same_page(const MonthDayYear& a, const MonthDayYear& b) const {
  return a.year == b.year && a.month == b.month;
}

bool MonthPage::shows(const MonthDayYear& date) const {
  return snapshot_ && snapshot_->layout.month == date.month && snapshot_->layout.year == date.year;
}

bool MonthPage::read(const GridInput& in, MonthSnapshot& snapshot) {
  const MonthDayYear& shown = in.selected;
  auto taken =
      take_month_snapshot(session_, settings_, in.screen, shown.month, shown.year, in.today);
  snapshot =
      taken ? std::move(*taken)
            : month_snapshot_without_items(settings_, in.screen, shown.month, shown.year, in.today);
  if (snapshot.all_hidden) snapshot.note = profile_note(in.language);
  return taken.has_value();
}

void MonthPage::keep_read(MonthSnapshot& snapshot, const MonthSnapshot& earlier) const {
  snapshot.period = earlier.period;
  snapshot.all_hidden = earlier.all_hidden;
  snapshot.note = earlier.note;
  // Other cells have room for other lines.
  if (snapshot.screen == earlier.screen && snapshot.layout == earlier.layout)
    snapshot.lines = earlier.lines;
}

ViewDrawing MonthPage::drawing() const { return drawing_by(DrawMonthView); }

GridTarget MonthPage::hit(Point point) const {
  GridTarget target = hit_month(layout_, point);
  if (target.kind != GridTarget::Kind::day || !snapshot_) return target;
  if (const MonthLine* line = month_line_at(*snapshot_, layout_, point)) target.item = line->key;
  return target;
}

Rect MonthPage::place_of(const MonthDayYear& date) const {
  for (const MonthCell& cell : layout_.cells)
    if (cell.drawn && cell.date == date) return cell.box;
  return {};
}

AccessibleGrid MonthPage::accessible(const DayCount& count, const AccessibleWords& words) const {
  AccessibleGrid grid = accessible_month(layout_, count, words);
  if (snapshot_ && !snapshot_->note.empty()) grid.name += u", " + snapshot_->note;
  add_month_buttons(grid, layout_, words);
  return grid;
}

std::optional<MonthDayYear> MonthPage::date_of_cell(int cell) const {
  return accessible_month_date(layout_, cell);
}

// Neighbouring days may be shown too, at most six rows of them.
DayCount MonthPage::count_days_with(const MonthDayYear& shown) const {
  const Day first = day_of(shown.year, shown.month, 1) - 7;
  return counted(first, first + 7 + 42);
}

}  // namespace orvello
