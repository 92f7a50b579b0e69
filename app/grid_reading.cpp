// What the grids of the Month and Year views say: the hover label, and the cells for a screen
// reader.

#include "app/application.h"
#include "calendar/date_pictures.h"
#include "calendar/month_grid_range.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "views/accessible_counts.h"
#include "views/year_label.h"

namespace orvello {
namespace {

constexpr Color kLabelText = rgb(153, 0, 0);

}  // namespace

Text Application::date_text(const MonthDayYear& date, int showdaylabel) const {
  const std::int32_t day = WholeDayNumber(date.month, date.day, date.year);
  return FormatDatePicture(OneDateHeaderPicture(showdaylabel, settings_.locale),
                           civil_from_day_number(day), settings_.locale);
}

// While the pointer rests or moves over a day of the year; a query a day, not a movement.
void Application::hover(const Message& message) {
  if (state_.view_mode != ViewMode::year) return;
  const YearHit hit = hit_year(year_layout_, message.point);
  if (hit.kind != YearHit::Kind::day) return hide_hover_label();
  if (hit.date == hovered_) return;
  hovered_ = hit.date;
  const YearLabel label =
      year_label(date_text(hit.date, 0), compact_rows(hit.date), cell_place(year_layout_, hit.date),
                 state_.layout, measuring_canvas());
  host_.window.show_label({label.place, label.text, label.font, kLabelText, kWhite});
}

void Application::hide_hover_label() {
  if (hovered_.year == 0) return;
  hovered_ = {};
  host_.window.hide_label();
}

// Counted when a screen reader asks, and kept until the appointments change.
const DayCount& Application::day_count() {
  const bool year = state_.view_mode == ViewMode::year;
  const MonthDayYear shown = state_.current;
  if (day_count_ && counted_mode_ == state_.view_mode && counted_for_.year == shown.year &&
      (year || counted_for_.month == shown.month))
    return day_count_;
  std::int32_t from = WholeDayNumber(1, 1, shown.year), to = WholeDayNumber(12, 31, shown.year);
  if (!year) {
    // Neighbouring days may be shown too, at most six rows of them.
    from = WholeDayNumber(shown.month, 1, shown.year) - 7;
    to = from + 7 + 42;
  }
  auto counts = count_days([this] { return session_.CalendarItems(); }, from, to,
                           [this](TextView categories) { return passes_profile(categories); },
                           state_.platform_generation);
  if (counts)
    day_count_ = day_count_of(std::move(*counts), from);
  else
    day_count_ = [](const MonthDayYear&) { return kUnreadableCount; };
  counted_mode_ = state_.view_mode;
  counted_for_ = shown;
  return day_count_;
}

AccessibleGrid Application::accessible_grid() {
  const AccessibleWords words{settings_.locale, language(), state_.today, state_.current};
  if (state_.view_mode == ViewMode::month)
    return accessible_month(month_layout_, day_count(), words);
  if (state_.view_mode == ViewMode::year) return accessible_year(year_layout_, day_count(), words);
  return {};
}

std::optional<MonthDayYear> Application::cell_date(int cell) const {
  if (state_.view_mode == ViewMode::month) return accessible_month_date(month_layout_, cell);
  if (state_.view_mode == ViewMode::year) return accessible_year_date(year_layout_, cell);
  return std::nullopt;
}

std::vector<Text> Application::accessible_items(int cell) {
  std::vector<Text> texts;
  const auto date = cell_date(cell);
  if (!date) return texts;
  for (const CompactRow& row : compact_rows(*date))
    if (row.row_data >= 0)
      texts.push_back(row.time + u" " + row.subject);
    else if (row.row_data == kUnreadableRow)
      texts.push_back(row.time);
  return texts;
}

void Application::choose_accessible(int cell) {
  if (const auto date = cell_date(cell)) show_day(*date);
}

}  // namespace orvello
