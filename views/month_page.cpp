#include "views/month_page.h"

#include "views/month_paint.h"

namespace orvello {

const GridHabits& MonthPage::habits() const {
  static constexpr GridHabits kHabits{.months = 1, .hold_opens_day = true};
  return kHabits;
}

bool MonthPage::same_page(const MonthDayYear& a, const MonthDayYear& b) const {
  return a.year == b.year && a.month == b.month;
}

bool MonthPage::shows(const MonthDayYear& date) const {
  return snapshot_ && snapshot_->layout.month == date.month && snapshot_->layout.year == date.year;
}

ReadOutcome MonthPage::read(const GridInput& in, MonthSnapshot& snapshot) {
  const MonthDayYear& shown = in.selected;
  if (auto taken =
          take_month_snapshot(session_, settings_, in.screen, shown.month, shown.year, in.today)) {
    snapshot = std::move(*taken);
    read_ = true;
    return ReadOutcome::whole;
  }
  snapshot = month_snapshot_without_items(settings_, in.screen, shown.month, shown.year, in.today);
  read_ = read_ && shows(shown);
  if (!read_) return ReadOutcome::nothing;
  snapshot.period = snapshot_->period;
  return ReadOutcome::kept;
}

std::optional<ReadOutcome> MonthPage::take(const GridInput& in, bool same_items) {
  const auto next = std::make_shared<MonthSnapshot>();
  std::optional<ReadOutcome> outcome;
  if (same_items && shows(in.selected) && snapshot_->screen == in.screen)
    *next = *snapshot_;
  else
    outcome = read(in, *next);
  next->selected = in.selected;
  next->focus_visible = in.focus_visible;
  layout_ = MonthLayout(*next);
  snapshot_ = next;
  return outcome;
}

ViewDrawing MonthPage::drawing() const {
  return [snapshot = snapshot_](Canvas& canvas, const std::atomic<int>& draw_state,
                                const std::function<void()>& progress) {
    return DrawMonthView(*snapshot, canvas, draw_state, progress);
  };
}

GridTarget MonthPage::hit(Point point) const { return hit_month(layout_, point); }

Rect MonthPage::place_of(const MonthDayYear& date) const {
  for (const MonthCell& cell : layout_.cells)
    if (cell.drawn && cell.date == date) return cell.box;
  return {};
}

AccessibleGrid MonthPage::accessible(const DayCount& count, const AccessibleWords& words) const {
  return accessible_month(layout_, count, words);
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
