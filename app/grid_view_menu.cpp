// The popup and the menus of a day on the grids.

#include "app/day_popups.h"
#include "app/grid_view.h"
#include "resources/dialog_templates.h"
#include "resources/ids.h"
#include "resources/menus.h"

namespace orvello {

void GridView::ask_for_day_popup(const MonthDayYear& date) {
  hide_label();
  const GridPage* page = standing();
  const Rect cell = page ? page->place_of(date) : Rect();
  DayPopupProcedure procedure({date_text(date, c_.settings.showdaylabel), compact_rows(date),
                               c_.settings, c_.state.layout, c_.commands.measuring_canvas(), date,
                               c_.commands.language(), c_.operations.source().any(), focus_visible_,
                               this});
  DialogTemplate dialog = day_popup_dialog(c_.commands.language());
  dialog.place = procedure.place(cell);
  switch (c_.host.dialogs.run_modal(dialog, procedure)) {
    case kPopupOpenDay:
      return c_.commands.show_day(date, procedure.key());
    case kPopupCommand:
      return run_command(procedure.command(), procedure.key(), {date, {cell.x, cell.bottom()}});
    case kPopupMoved:
      return finish_carrying();
    default:
      return put_back();  // it may have been closed with a row in the hand
  }
}

void GridView::open_menu(const GridTarget& target, Point at) {
  if (target.kind != GridTarget::Kind::day) return;
  hide_label();
  pointer_.forget();
  const Language language = c_.commands.language();
  const bool paste = c_.operations.source().any();
  const bool other = !page_->same_page(c_.state.current, c_.state.today);
  const auto items =
      target.item ? day_menu(language, {true, paste}) : grid_menu(language, {paste, true, other});
  run_command(c_.host.window.track_menu(items, at), target.item, {target.date, at});
}

// The view may be another one by now: a menu does not keep anything away.
void GridView::run_command(std::uint32_t command, const RowKey& key,
                           const AppointmentOperations::Spot& spot) {
  if (command == 0 || !page_) return;
  if (command == kCommandOpenDay) return c_.commands.show_day(spot.day, key);
  if (command == kCommandToday) return show_date(c_.state.today);
  c_.operations.run(command, key, spot);
}

}  // namespace orvello
