#include "app/grid_view.h"

#include <utility>

#include "app/own_messages.h"
#include "store/wait_cursor.h"

namespace orvello {

GridView::GridView(const Context& context)
    : c_(context),
      worker_(context.host.window),
      month_(context.session, context.settings),
      year_(context.session, context.settings) {}

void GridView::start() {
  worker_.start();
  c_.host.window.set_accessible_view(this);
}

void GridView::stop() {
  worker_.stop();
  leave();
  c_.host.window.set_accessible_view(nullptr);
  worker_.set_surface(nullptr, {});
}

void GridView::fit() {
  const Size work = c_.state.layout.work;
  stands_ = false;
  worker_.set_surface(c_.host.surfaces.create(work), work);
  pointer_.forget();
  pointer_.set_view(work.width, c_.state.dpi_x);
}

void GridView::enter(ViewMode mode) {
  leave();
  page_ = mode == ViewMode::year ? static_cast<GridPage*>(&year_) : &month_;
  pointer_.set_slides(!page_->habits().hold_opens_day);
  request_redraw();
  c_.host.window.invalidate();
}

void GridView::leave() {
  worker_.cancel();
  hide_label();
  if (std::exchange(carried_, std::nullopt)) end_carrying();
  pointer_.forget();
  marked_ = {};
  redraw_pending_ = false;
  stands_ = false;
  page_ = nullptr;
}

void GridView::request_redraw() {
  items_wanted_ = true;
  day_count_ = nullptr;
  redraw_selection();
}

// A newer request makes the drawing under way stale at once; the snapshot is taken when the
// messages that wait have been handled, so that many requests cost one.
void GridView::redraw_selection() {
  if (!page_) return;
  ++redraw_requests_;
  worker_.cancel();
  if (!std::exchange(redraw_pending_, true)) c_.host.window.post({kMessageSnapshot, 0, {}, 0});
}

void GridView::draw_requested() {
  if (!page_ || !std::exchange(redraw_pending_, false)) return;
  const bool same_items = !std::exchange(items_wanted_, false);
  {
    const WaitCursor waiting(c_.host.window);
    const auto outcome = page_->take({c_.state.layout, c_.state.current, c_.state.today,
                                      focus_visible_, marked_, c_.commands.language()},
                                     same_items);
    if (outcome) c_.commands.note_read(*outcome);
    stands_ = true;
    worker_.request(page_->drawing());
  }
  if (carried_) carry_on(carried_->at);  // another day may have come under it
  c_.host.window.accessible_changed();
}

}  // namespace orvello
