#include "views/year_page.h"

#include "resources/ids.h"
#include "views/accessible_buttons.h"
#include "views/year_paint.h"

namespace orvello {

const GridHabits& YearPage::habits() const {
  static constexpr GridHabits kHabits{
      .months = 12, .names_days = true, .names_pressed = true, .escape = kCommandMonthView};
  return kHabits;
}

bool YearPage::same_page(const MonthDayYear& a, const MonthDayYear& b) const {
  return a.year == b.year;
}

bool YearPage::shows(const MonthDayYear& date) const {
  return snapshot_ && snapshot_->year == date.year;
}

bool YearPage::read(const GridInput& in, YearSnapshot& snapshot) {
  auto taken = take_year_snapshot(session_, settings_, in.screen, in.selected.year, in.today,
                                  in.selected, in.focus_visible);
  snapshot = taken ? std::move(*taken)
                   : year_snapshot_without_marks(settings_, in.screen, in.selected.year, in.today,
                                                 in.selected, in.focus_visible);
  if (snapshot.marks.all_hidden()) snapshot.note = profile_note(in.language);
  return taken.has_value();
}

void YearPage::keep_read(YearSnapshot& snapshot, const YearSnapshot& earlier) const {
  snapshot.marks = earlier.marks;
  snapshot.note = earlier.note;
}

ViewDrawing YearPage::drawing() const { return drawing_by(DrawYearView); }

GridTarget YearPage::hit(Point point) const { return hit_year(layout_, point); }

Rect YearPage::place_of(const MonthDayYear& date) const { return cell_place(layout_, date); }

AccessibleGrid YearPage::accessible(const DayCount& count, const AccessibleWords& words) const {
  AccessibleGrid grid = accessible_year(layout_, count, words);
  if (snapshot_ && !snapshot_->note.empty()) grid.name += u", " + snapshot_->note;
  add_year_buttons(grid, layout_, words);
  return grid;
}

std::optional<MonthDayYear> YearPage::date_of_cell(int cell) const {
  return accessible_year_date(layout_, cell);
}

DayCount YearPage::count_days_with(const MonthDayYear& shown) const {
  return counted(day_of(shown.year, 1, 1), day_of(shown.year, 12, 31));
}

}  // namespace orvello
