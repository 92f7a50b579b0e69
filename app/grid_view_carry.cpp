// An appointment that is carried over a grid to another day.

#include <utility>

#include "app/grid_view.h"
#include "app/own_messages.h"
#include "views/year_label.h"

namespace orvello {
namespace {

constexpr Color kCarriedText = kBlack;
constexpr int kHand = 14;  // at 96 dpi: what pen and hand cover around their point

}  // namespace

void GridView::take(const RowKey& key, const MonthDayYear& from, Point at) {
  hide_label();
  Text subject;
  for (const CompactRow& row : compact_rows(from))
    if (row.key == key) subject = row.subject;
  carried_ = Carried{key, std::move(subject), from, c_.state.current, {}, at};
  carry_on(at);
}

void GridView::carry_on(Point at) {
  if (!carried_) return;
  carried_->at = at;
  const GridTarget under = hit(at);
  carried_->over = under.kind == GridTarget::Kind::day ? under.date : MonthDayYear();
  mark(carried_->over);
  show_carried();
  watch_edges(at);
}

// Beside the hand, so that the day under it is seen.
void GridView::show_carried() {
  const ScreenLayout& screen = c_.state.layout;
  const Carried& carried = *carried_;
  Text text = carried.subject;
  if (carried.over.year != 0)
    text = format(load_string(StringId::carried_to, c_.commands.language()), carried.subject,
                  date_text(carried.over, 1));
  const int hand = kHand * screen.dpi_x / 96;
  const Rect around{carried.at.x - hand, carried.at.y - hand, 2 * hand, 2 * hand};
  const YearLabel label =
      year_label(text, {}, around, screen, c_.settings.locale, c_.commands.measuring_canvas());
  c_.host.window.show_label({label.place, label.text, label.font, kCarriedText, kWhite});
}

// The page before or after comes to what stays at its edge.
void GridView::watch_edges(Point at) {
  const Size work = c_.state.layout.work;
  const int near = 2 * pointer_.slack();
  const bool inside = at.y >= 0 && at.y < work.height;
  const int edge = !inside ? 0 : at.x < near ? -1 : at.x >= work.width - near ? 1 : 0;
  if (edge == std::exchange(carried_->edge, edge)) return;
  if (edge != 0)
    c_.host.window.start_timer(kTimerEdge, kEdgeMilliseconds);
  else
    c_.host.window.stop_timer(kTimerEdge);
}

void GridView::on_edge() {
  if (!page_ || !carried_ || carried_->edge == 0) return c_.host.window.stop_timer(kTimerEdge);
  step_months(carried_->edge * page_->habits().months);
}

bool GridView::let_go(Point at) {
  carry_on(at);
  const bool elsewhere = carried_ && carried_->over.year != 0 && carried_->over != carried_->from;
  if (elsewhere)
    end_carrying();
  else
    put_back();
  return elsewhere;
}

void GridView::end_carrying() {
  c_.host.window.stop_timer(kTimerEdge);
  c_.host.window.hide_label();
  mark({});
}

// On a page that was turned meanwhile nothing has happened.
void GridView::put_back() {
  if (!carried_) return;
  const MonthDayYear before = std::exchange(carried_, std::nullopt)->shown_before;
  end_carrying();
  if (page_ && c_.state.current != before) show_date(before);
}

// The day that it was lifted from need not be the one on which it starts.
void GridView::finish_carrying() {
  if (!carried_) return;
  const Carried done = *std::exchange(carried_, std::nullopt);
  show_date(done.over);
  c_.operations.move_by(done.key, day_of(done.over) - day_of(done.from));
}

void GridView::mark(const MonthDayYear& date) {
  if (marked_ == date) return;
  marked_ = date;
  redraw_selection();
}

}  // namespace orvello
