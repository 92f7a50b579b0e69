// Snapshots of the Month and Year views for the drawing worker.

#include "app/application.h"
#include "app/own_messages.h"
#include "settings/profiles.h"
#include "views/month_paint.h"
#include "views/year_paint.h"

namespace orvello {

void Application::request_redraw() {
  items_wanted_ = true;
  day_count_ = nullptr;
  redraw_selection();
}

// A newer request makes the drawing under way stale at once; the snapshot is taken when the
// messages that wait have been handled, so that many requests cost one.
void Application::redraw_selection() {
  if (!started_) return;
  if (state_.view_mode != ViewMode::month && state_.view_mode != ViewMode::year) return;
  ++redraw_requests_;
  worker_.cancel();
  if (redraw_pending_) return;
  redraw_pending_ = true;
  host_.window.post({kMessageSnapshot, 0, {}, 0});
}

bool Application::on_snapshot(const Message&) {
  draw_requested();
  return true;
}

void Application::draw_requested() {
  if (!redraw_pending_) return;
  redraw_pending_ = false;
  take_snapshot();
}

void Application::take_snapshot() {
  const bool same_items = !std::exchange(items_wanted_, false);
  host_.window.show_wait_cursor();
  if (state_.view_mode == ViewMode::month) worker_.request(month_drawing(same_items));
  if (state_.view_mode == ViewMode::year) worker_.request(year_drawing(same_items));
  host_.window.hide_wait_cursor();
  grid_pointer_.set_view(state_.layout.work.width, state_.dpi_x);
  host_.window.accessible_changed();
}

bool Application::passes_profile(TextView categories) const {
  return profileAllowsCategory(settings_, categories);
}

// What cannot be read is drawn as it was read last, on a page that was not read yet as empty; the
// trouble's line says so.
std::shared_ptr<MonthSnapshot> Application::read_month() {
  const MonthDayYear& shown = state_.current;
  auto taken = take_month_snapshot(session_, settings_, state_.layout, shown.month, shown.year,
                                   state_.today, state_.platform_generation);
  if (taken) {
    month_read_ = true;
    note_read(ReadOutcome::whole);
    return std::make_shared<MonthSnapshot>(std::move(*taken));
  }
  auto snapshot = std::make_shared<MonthSnapshot>(month_snapshot_without_items(
      settings_, state_.layout, shown.month, shown.year, state_.today, state_.platform_generation));
  month_read_ = month_read_ && month_snapshot_ && month_snapshot_->layout.month == shown.month &&
                month_snapshot_->layout.year == shown.year;
  if (month_read_) snapshot->period = month_snapshot_->period;
  note_read(month_read_ ? ReadOutcome::kept : ReadOutcome::nothing);
  return snapshot;
}

ViewDrawing Application::month_drawing(bool same_items) {
  const MonthDayYear& shown = state_.current;
  const bool reusable =
      same_items && month_snapshot_ && month_snapshot_->layout.month == shown.month &&
      month_snapshot_->layout.year == shown.year && month_snapshot_->screen == state_.layout;
  const auto snapshot = reusable ? std::make_shared<MonthSnapshot>(*month_snapshot_) : read_month();
  snapshot->selected = shown;
  snapshot->focus_visible = focus_visible_;
  month_layout_ = MonthLayout(*snapshot);
  month_snapshot_ = snapshot;
  return [snapshot = std::shared_ptr<const MonthSnapshot>(snapshot)](
             Canvas& canvas, const std::atomic<int>& draw_state,
             const std::function<void()>& progress) {
    return DrawMonthView(*snapshot, canvas, draw_state, progress);
  };
}

std::shared_ptr<const YearSnapshot> Application::read_year() {
  const MonthDayYear& shown = state_.current;
  auto taken = take_year_snapshot(session_, settings_, state_.layout, shown.year, state_.today,
                                  shown, focus_visible_, state_.platform_generation);
  if (taken) {
    year_read_ = true;
    note_read(ReadOutcome::whole);
    return std::make_shared<const YearSnapshot>(std::move(*taken));
  }
  YearSnapshot snapshot = year_snapshot_without_marks(settings_, state_.layout, shown.year,
                                                      state_.today, shown, focus_visible_);
  year_read_ = year_read_ && year_snapshot_ && year_snapshot_->year == shown.year;
  if (year_read_) snapshot.marks = year_snapshot_->marks;
  note_read(year_read_ ? ReadOutcome::kept : ReadOutcome::nothing);
  return std::make_shared<const YearSnapshot>(std::move(snapshot));
}

ViewDrawing Application::year_drawing(bool same_items) {
  const MonthDayYear& shown = state_.current;
  const bool reusable = same_items && year_snapshot_ && year_snapshot_->year == shown.year &&
                        year_snapshot_->screen == state_.layout;
  year_snapshot_ = reusable ? std::make_shared<const YearSnapshot>(
                                  select_in_year(*year_snapshot_, shown, focus_visible_))
                            : read_year();
  year_layout_ = YearLayout(*year_snapshot_);
  return [snapshot = year_snapshot_](Canvas& canvas, const std::atomic<int>& draw_state,
                                     const std::function<void()>& progress) {
    return DrawYearView(*snapshot, canvas, draw_state, progress);
  };
}

}  // namespace orvello
