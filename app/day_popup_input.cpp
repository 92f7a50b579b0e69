// What pen and keys do in the popup of a day.

#include <algorithm>

#include "app/day_popups.h"
#include "app/own_messages.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "resources/menus.h"

namespace orvello {
namespace {

using PopupEvent = DialogEvent::Kind;

bool comes_from_list(const DialogEvent& event) { return event.control == kControlDayList; }

}  // namespace

void DayPopupProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case PopupEvent::init:
      return show(dialog);
    case PopupEvent::paint:
      return paint_header(*event.canvas, event.size);
    case PopupEvent::timer:
      dialog.set_timer(event.control, 0);
      return act(dialog, pointer_.hold());
    case PopupEvent::focus_lost:
      if (event.control == 0) dialog.close(kPopupClosed);
      return;
    case PopupEvent::close:
      return dialog.close(kPopupClosed);
    case PopupEvent::key:
      return take_key(dialog, event);
    default:
      if (comes_from_list(event)) list_event(dialog, event);
  }
}

void DayPopupProcedure::show(Dialog& dialog) {
  ReportList* list = dialog.report(kControlDayList);
  const int width = list ? list->place().size.width : 0;
  if (list) list->set_content(content(width));
  pointer_.set_view(input_.screen.work.width, input_.screen.dpi_x);
  dialog.drawn(kControlDayHeader)
      ->set_parts({{input_.date, {0, 0, width, header_height()}, false}});
  dialog.focus(kControlDayList);
  if (input_.by_keys) select(dialog, 0);
}

RowKey DayPopupProcedure::key_of(int row) const {
  const bool there = row >= 0 && row < static_cast<int>(input_.rows.size());
  return there ? input_.rows[static_cast<std::size_t>(row)].key : RowKey();
}

void DayPopupProcedure::select(Dialog& dialog, int row) {
  ReportList* list = dialog.report(kControlDayList);
  row_ = std::clamp(row, 0, static_cast<int>(input_.rows.size()) - 1);
  list->select({row_});
  list->show_row(row_);
}

void DayPopupProcedure::list_event(Dialog& dialog, const DialogEvent& event) {
  ReportList* list = dialog.report(kControlDayList);
  if (!list) return;
  switch (event.kind) {
    case PopupEvent::pointer_down:
    case PopupEvent::double_tap:
      pressed_ = list->row_at(event.point);
      dialog.set_timer(kTimerMenu, kMenuMilliseconds);
      return act(dialog, pointer_.press(
                             event.point, pressed_, event.time,
                             list->gliding() ? ListPointer::Grip::list : ListPointer::Grip::row));
    case PopupEvent::pointer_move:
      if (carrying_) return input_.carrier->carry_on(in_window(dialog, event.point));
      act(dialog, pointer_.move(event.point, event.time));
      if (goes_out(dialog, event)) carry(dialog, event.point);
      return;
    case PopupEvent::pointer_up:
      dialog.set_timer(kTimerMenu, 0);
      if (carrying_) return let_go(dialog, event.point);
      return act(dialog, pointer_.release(event.point, event.time));
    case PopupEvent::context_menu: {
      const int row = list->row_at(event.point);
      if (row >= 0) list->select({row_ = row});
      return open_menu(dialog, row, event.point);
    }
    default:
      return;
  }
}

void DayPopupProcedure::act(Dialog& dialog, const ListPointer::Action& action) {
  using Kind = ListPointer::Action::Kind;
  ReportList* list = dialog.report(kControlDayList);
  if (action.kind == Kind::select && action.row >= 0) list->select({row_ = action.row});
  if (action.kind == Kind::scroll) list->scroll_by(action.value);
  if (action.kind == Kind::glide) list->glide(action.value);
  if (action.kind == Kind::tap && action.row >= 0) open_day(dialog, action.row);
  if (action.kind == Kind::menu) open_menu(dialog, action.row, action.point);
}

void DayPopupProcedure::take_key(Dialog& dialog, const DialogEvent& event) {
  const int rows = static_cast<int>(input_.rows.size());
  switch (event.key) {
    case kKeyReturn:
      return open_day(dialog, row_);
    case kKeyDown:
      return select(dialog, row_ + 1);
    case kKeyUp:
      return select(dialog, row_ - 1);
    case kKeyHome:
      return select(dialog, 0);
    case kKeyEnd:
      return select(dialog, rows - 1);
    case kKeyDelete:
      return key_of(row_) ? choose(dialog, kCommandDelete, key_of(row_)) : void();
    case kKeyInsert:
      return choose(dialog, kCommandCreate, {});
    case kKeyMenu:
      return open_menu(dialog, row_, beside(dialog, row_));
    case kKeyF10:
      return event.shift_held ? open_menu(dialog, row_, beside(dialog, row_)) : void();
    case u'N':
      return choose(dialog, kCommandCreate, {});
    case u'X':
      return event.control_held && key_of(row_) ? choose(dialog, kCommandCut, key_of(row_))
                                                : void();
    case u'C':
      return event.control_held && key_of(row_) ? choose(dialog, kCommandCopy, key_of(row_))
                                                : void();
    case u'V':
      return event.control_held && input_.can_paste ? choose(dialog, kCommandPaste, {}) : void();
    default:
      return;
  }
}

void DayPopupProcedure::open_day(Dialog& dialog, int row) {
  key_ = key_of(row);
  dialog.close(kPopupOpenDay);
}

// What was chosen is done when the popup has closed: it may open other dialogs.
void DayPopupProcedure::choose(Dialog& dialog, std::uint32_t command, const RowKey& key) {
  command_ = command;
  key_ = key;
  dialog.close(kPopupCommand);
}

void DayPopupProcedure::open_menu(Dialog& dialog, int row, Point at) {
  pointer_.let_go();
  dialog.set_timer(kTimerMenu, 0);
  const RowKey key = key_of(row);
  const auto items = key ? day_menu(input_.language, {true, input_.can_paste})
                         : grid_menu(input_.language, {input_.can_paste, false, false});
  const std::uint32_t command = dialog.drawn(kControlDayList)->track_menu(items, at);
  if (command != 0) choose(dialog, command, key);
}

// Of the list's control.
Point DayPopupProcedure::beside(Dialog& dialog, int row) const {
  const Rect list = dialog.place(kControlDayList);
  const Rect place = dialog.report(kControlDayList)->row_place(std::max(row, 0));
  return {place.width / 3, place.y - list.y + place.height / 2};
}

Point DayPopupProcedure::in_window(Dialog& dialog, Point point) const {
  const Rect list = dialog.place(kControlDayList);
  return {list.x + point.x, list.y + point.y};
}

// Drawn aside, or over an edge that the list cannot be scrolled towards.
bool DayPopupProcedure::goes_out(Dialog& dialog, const DialogEvent& event) const {
  if (!input_.carrier || !pointer_.is_down() || !key_of(pressed_)) return false;
  if (key_of(pressed_).start == kNoDate) return false;
  if (pointer_.goes_aside()) return true;
  const bool beside = event.point.x < 0 || event.point.x >= event.size.width;
  const bool above_or_below = event.point.y < 0 || event.point.y >= event.size.height;
  return beside || (above_or_below && !scrolls(dialog));
}

bool DayPopupProcedure::scrolls(Dialog& dialog) const {
  const Rect list = dialog.place(kControlDayList);
  ReportList* rows = dialog.report(kControlDayList);
  const Rect first = rows->row_place(0);
  const Rect last = rows->row_place(static_cast<int>(input_.rows.size()) - 1);
  return first.y < list.y || last.bottom() > list.bottom();
}

void DayPopupProcedure::carry(Dialog& dialog, Point at) {
  carrying_ = true;
  pointer_.let_go();
  dialog.set_timer(kTimerMenu, 0);
  dialog.set_seen(false);
  input_.carrier->take(key_of(pressed_), input_.day, in_window(dialog, at));
}

void DayPopupProcedure::let_go(Dialog& dialog, Point at) {
  carrying_ = false;
  if (input_.carrier->let_go(in_window(dialog, at))) return dialog.close(kPopupMoved);
  dialog.set_seen(true);
}

}  // namespace orvello
