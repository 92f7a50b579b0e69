// What the Month and Year views say of a day: the hover label, the popup, and the cells for a
// screen reader.

#include "app/grid_view.h"
#include "calendar/date_pictures.h"
#include "ports/messages.h"
#include "settings/profiles.h"
#include "views/year_label.h"

namespace orvello {
namespace {

constexpr Color kLabelText = rgb(153, 0, 0);

}  // namespace

Text GridView::date_text(const MonthDayYear& date, int showdaylabel) const {
  return FormatDatePicture(OneDateHeaderPicture(showdaylabel, c_.settings.locale),
                           civil_of(day_of(date)), c_.settings.locale);
}

// A day that cannot be read has one row that says so.
std::vector<CompactRow> GridView::compact_rows(const MonthDayYear& date) {
  const auto items = c_.session.CalendarItems();
  auto rows = compact_agenda(
      items.get(), day_of(date), c_.settings.timeformat != 0,
      [this](TextView categories) { return profileAllowsCategory(c_.settings, categories); });
  if (rows) return std::move(*rows);
  c_.commands.note_read(ReadOutcome::kept);
  return {
      {load_string(StringId::unreadable, c_.commands.language()), {}, DayRow::Kind::unreadable}};
}

// While the pointer rests or moves over a day of the year; a query a day, not a movement.
void GridView::hover(const Message& message) {
  const GridHabits& habits = page_->habits();
  if (!habits.names_days || carried_) return;
  if (!habits.names_pressed && (message.id == kMessageButtonDown || c_.host.window.pen_is_down()))
    return hide_label();
  const GridTarget under = hit(message.point);
  if (under.kind != GridTarget::Kind::day) return hide_label();
  if (under.date == hovered_) return;
  hovered_ = under.date;
  const YearLabel label =
      year_label(date_text(under.date, 0), compact_rows(under.date), page_->place_of(under.date),
                 c_.state.layout, c_.settings.locale, c_.commands.measuring_canvas());
  c_.host.window.show_label({label.place, label.text, label.font, kLabelText, kWhite});
}

void GridView::hide_label() {
  if (hovered_.year == 0) return;
  hovered_ = {};
  c_.host.window.hide_label();
}

// Counted when a screen reader asks, and kept until the appointments change.
const DayCount& GridView::day_count() {
  const MonthDayYear& shown = c_.state.current;
  if (!day_count_ || !page_->same_page(counted_for_, shown)) {
    day_count_ = page_->count_days_with(shown);
    counted_for_ = shown;
  }
  return day_count_;
}

AccessibleGrid GridView::accessible_grid() {
  const GridPage* page = standing();
  if (!page) return {};
  return page->accessible(
      day_count(), {c_.settings.locale, c_.commands.language(), c_.state.today, c_.state.current});
}

std::vector<Text> GridView::accessible_items(int cell) {
  std::vector<Text> texts;
  const GridPage* page = standing();
  const auto date = page ? page->date_of_cell(cell) : std::nullopt;
  if (!date) return texts;
  for (const CompactRow& row : compact_rows(*date))
    if (row.is_appointment())
      texts.push_back(row.time + u" " + row.subject);
    else if (row.kind == DayRow::Kind::unreadable)
      texts.push_back(row.time);
  return texts;
}

void GridView::choose_accessible(int cell) {
  const GridPage* page = standing();
  if (!page) return;
  if (const auto date = page->date_of_cell(cell)) return c_.commands.show_day(*date);
  const auto cells = accessible_grid().cells;
  const auto at = static_cast<std::size_t>(cell);
  if (cell < 0 || at >= cells.size() || cells[at].place.empty()) return;
  const Point middle = cells[at].place.center();
  pointer_.press(middle, hit(middle));
  act(pointer_.release(middle, hit(middle)));
}

}  // namespace orvello
