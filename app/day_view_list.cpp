// The pen and the keys on the Day view's list.

#include <algorithm>
#include <utility>

#include "app/day_popups.h"
#include "app/day_view.h"
#include "app/own_messages.h"
#include "ports/messages.h"
#include "resources/dialog_templates.h"
#include "resources/ids.h"
#include "resources/menus.h"
#include "store/day_label.h"
#include "store/notes_text.h"
#include "views/notes_bubble.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

// Over the point of the list at which the pen holds what is carried.
HoverLabel carried_label(const Text& text, Point at, const ScreenLayout& screen, Canvas& measure) {
  HoverLabel label;
  label.text = text;
  label.font = screen.fonts.bold9;
  label.text_color = rgb(153, 0, 0);
  const Size size = measure.measure(text, label.font);
  const int margin = 4 * screen.scale;
  const Size whole{size.width + 2 * margin, size.height + margin};
  const int x = std::clamp(at.x - margin, 0, std::max(0, screen.work.width - whole.width));
  const int y = std::max(0, at.y - whole.height - screen.dpi_y / 4);
  label.place = {x, y, whole.width, whole.height};
  return label;
}

}  // namespace

void DayView::list_event(const DialogEvent& event) {
  ReportList* list = dialog_->report(kControlDayList);
  if (!list) return;
  switch (event.kind) {
    case Event::pointer_down:
      press_list(*list, event);
      break;
    case Event::double_tap:
      pen_down_ = true;
      dialog_->set_timer(kTimerNotes, 0);
      tapped_ = closed_ = {};
      select_row(list->row_at(event.point));
      edit(selected());
      break;
    case Event::pointer_move:
      act(pointer_.move(event.point, event.time));
      break;
    case Event::pointer_up:
      pen_down_ = false;
      dialog_->set_timer(kTimerMenu, 0);
      act(pointer_.release(event.point, event.time));
      break;
    case Event::context_menu:
      dialog_->set_timer(kTimerNotes, 0);
      select_row(list->row_at(event.point));
      open_menu(event.point, selected());
      break;
    case Event::wheel:
      turn(-event.notches);
      break;
    case Event::key:
      closed_ = {};
      list_key(event);
      break;
    default:
      break;
  }
}

// What stops a gliding list means nothing else.
void DayView::press_list(ReportList& list, const DialogEvent& event) {
  pen_down_ = true;
  dialog_->set_timer(kTimerNotes, 0);
  press_closed_ = std::exchange(closed_, {});
  alone_ = event.alone;
  const int row = list.row_at(event.point);
  if (list.gliding()) {
    pressed_ = {};
    return act(pointer_.press(event.point, row, event.time, ListPointer::Grip::list));
  }
  dialog_->set_timer(kTimerMenu, kMenuMilliseconds);
  pressed_ = key_of(row);
  drag_ = drag_of(row, event.point);
  act(pointer_.press(event.point, row, event.time,
                     drag_ ? ListPointer::Grip::item : ListPointer::Grip::row));
}

void DayView::act(const ListPointer::Action& action) {
  using Kind = ListPointer::Action::Kind;
  switch (action.kind) {
    case Kind::none:
      break;
    case Kind::lift:
      return carry(action);
    case Kind::drop:
      return drop(action);
    case Kind::select:
      select_row(action.row);
      break;
    case Kind::tap:
      tap();
      break;
    case Kind::menu:
      open_menu(action.point, pressed_);
      break;
    case Kind::turn:
      turn(action.value);
      break;
    case Kind::scroll:
      dialog_->set_timer(kTimerMenu, 0);
      if (ReportList* list = dialog_->report(kControlDayList)) list->scroll_by(action.value);
      break;
    case Kind::glide:
      if (ReportList* list = dialog_->report(kControlDayList)) list->glide(action.value);
      break;
  }
}

// A second tap soon opens the editor instead. It does so too where the bubble stands already: who
// goes from bubble to bubble need not wait.
void DayView::tap() {
  if (!pressed_) return;
  if (press_closed_ == pressed_) return;  // it was tapped away
  if (press_closed_ || alone_) return open_notes(pressed_);
  tapped_ = pressed_;
  dialog_->set_timer(kTimerNotes, kNotesMilliseconds);
}

// By the time of an appointment that is selected.
std::optional<TimeDrag> DayView::drag_of(int row, Point at) const {
  if (row < 0 || at.x >= times_width_ || key_of(row) != selected()) return std::nullopt;
  const int first = rows_of_appointment(agenda_, row).front();
  const auto index = static_cast<std::size_t>(first);
  return TimeDrag::of(agenda_.rows[index], agenda_.row_ends[index], shown_day(), c_.state.dpi_y);
}

void DayView::carry(const ListPointer::Action& action) {
  dialog_->set_timer(kTimerMenu, 0);
  const Rect list = dialog_->place(kControlDayList);
  const Point at{list.x + action.point.x, list.y + action.point.y};
  if (!drag_ || !list.contains(at)) return c_.host.window.hide_label();
  const Text time = drag_->label_at(action.value, c_.settings.timeformat == 1);
  c_.host.window.show_label(
      carried_label(time, at, c_.state.layout, c_.commands.measuring_canvas()));
}

// Beside the list it stays where it was.
void DayView::drop(const ListPointer::Action& action) {
  const auto drag = drag_;
  const RowKey meant = pressed_;
  stop_carrying();
  const Rect list = dialog_->place(kControlDayList);
  const Point at{list.x + action.point.x, list.y + action.point.y};
  if (!drag || !meant || !list.contains(at) || !drag->moves(action.value)) return;
  const CalendarDate start = drag->start_at(action.value);
  if (c_.operations.shift(meant, start) && dialog_) stand_at({meant.oid, start});
}

void DayView::stop_carrying() {
  if (!drag_) return;
  drag_.reset();
  c_.host.window.hide_label();
}

void DayView::select_row(int row) {
  ReportList* list = dialog_->report(kControlDayList);
  if (!list) return;
  if (row < 0) {
    row_ = c_.operations.source().any() ? kPasteTarget : kNoRow;
    list->select({});
    return;
  }
  row_ = row;
  const bool several = c_.settings.wrapsubject == 1 || c_.settings.showlocation == 1;
  list->select(several ? rows_of_appointment(agenda_, row) : std::vector<int>{row});
}

// From one appointment to the next, past the rows that go on with it.
void DayView::step_selection(int direction) {
  const int count = static_cast<int>(agenda_.rows.size());
  int row = row_ >= 0 ? row_ + direction : direction > 0 ? 0 : count - 1;
  while (row >= 0 && row < count && agenda_.rows[static_cast<std::size_t>(row)].continues())
    row += direction;
  if (row < 0 || row >= count) return;
  select_row(row);
  show_whole(row);
}

void DayView::show_whole(int row) {
  ReportList* list = dialog_->report(kControlDayList);
  const std::vector<int> rows = rows_of_appointment(agenda_, row);
  for (auto last = rows.rbegin(); last != rows.rend(); ++last) list->show_row(*last);
}

void DayView::stand_at(const RowKey& key) {
  const int row = row_of(key);
  if (row < 0) return;
  select_row(row);
  show_whole(row);
}

void DayView::list_key(const DialogEvent& event) {
  if (event.key == kKeyEscape && pointer_.lifts()) {
    pointer_.let_go();
    return stop_carrying();
  }
  switch (event.key) {
    case kKeyLeft:
      return turn(-1);
    case kKeyRight:
      return turn(1);
    case kKeyUp:
      return turn(-7);
    case kKeyDown:
      return turn(7);
    case kKeyPageUp:
      return step_selection(-1);
    case kKeyPageDown:
      return step_selection(1);
    case kKeyReturn:
      return edit(selected());
    case kKeySpace:
      return open_notes(selected());
    case kKeyDelete:
      return run_command(kCommandDelete, selected());
    case kKeyInsert:
      return run_command(kCommandCreate, {});
    default:
      command_key(event);
  }
}

// Keys that mean the same wherever the focus is.
bool DayView::command_key(const DialogEvent& event) {
  const bool held = event.control_held;
  if (event.key == kKeyHome) return go_to_today(), true;
  if (event.key == kKeyMenu || (event.key == kKeyF10 && event.shift_held)) {
    ReportList* list = dialog_->report(kControlDayList);
    const Rect row = list ? list->row_place(std::max(row_, 0)) : Rect();
    const Point at{row.width / 3, row.y - header_.strip.height + row.height / 2};
    return open_menu(at, selected()), true;
  }
  if (held && event.key == u'X') return run_command(kCommandCut, selected()), true;
  if (held && event.key == u'C') return run_command(kCommandCopy, selected()), true;
  if (held && event.key == u'V') return run_command(kCommandPaste, {}), true;
  if (held && event.key == u'Z')
    return c_.commands.send_command(event.shift_held ? kCommandRedo : kCommandUndo), true;
  if (event.key == u'N') return run_command(kCommandCreate, {}), true;
  if (held && event.key == u'G') return choose_date(), true;
  if (held && event.key == u'F') return c_.commands.send_command(kCommandSearch), true;
  if (event.key == kKeyEscape) {
    const bool to_year = c_.state.previous_view_mode == ViewMode::year;
    c_.commands.send_command(to_year ? kCommandYearView : kCommandMonthView);
    return true;
  }
  if (held && event.key >= u'1' && event.key <= u'3')
    return c_.commands.send_command(kViewCommands[event.key - u'1']), true;
  return false;
}

void DayView::turn(int days) {
  MonthDayYear date = c_.state.current;
  AddDays(date.month, date.day, date.year, days);
  show_date(date);
}

void DayView::show_date(const MonthDayYear& date) {
  if (date.year < kFirstYear || date.year > kLastYear) return;
  c_.commands.set_current_date(date);
  row_ = kNoRow;
  rebuild();
}

// What the menu is about was under the pen when it opened, whatever the list shows by then.
void DayView::open_menu(Point at, const RowKey& key) {
  pointer_.let_go();
  pen_down_ = false;  // the menu gets the release
  dialog_->set_timer(kTimerMenu, 0);
  const RowKey meant = key;
  const DayMenuState state{static_cast<bool>(meant), c_.operations.source().any()};
  const std::uint32_t command =
      dialog_->drawn(kControlDayList)->track_menu(day_menu(c_.commands.language(), state), at);
  if (command != 0 && dialog_) run_command(command, meant);
}

// What stands beside it in the list: the row's whole subject, also where the list has wrapped it.
NotesBubbleText DayView::bubble_text(const RowKey& key, const AppointmentNotes& notes) const {
  NotesBubbleText text{{}, notes.place, notes.text};
  for (const DayRow& row : read_.rows) {
    if (row.continues() || row.oid != key.oid || row.start != key.start) continue;
    text.subject = shown_subject(row.subject);
    text.when_and_where = notes.place.empty() ? row.time : row.time + u", " + notes.place;
    break;
  }
  return text;
}

// The bubble points at the row's icons.
void DayView::open_notes(const RowKey& key) {
  const RowKey meant = key;
  if (!dialog_ || !meant) return;
  const auto notes = notes_of(c_.session, c_.host.boxes, meant.oid, meant.start);
  // A failure was shown; the list may be another one since.
  const int row = row_of(meant);
  ReportList* list = dialog_ ? dialog_->report(kControlDayList) : nullptr;
  if (!notes || row < 0 || !list) return;
  const ScreenLayout& screen = c_.state.layout;
  Rect place = list->row_place(row);  // grows over all the appointment's rows
  for (const int one : rows_of_appointment(agenda_, row)) {
    const Rect part = list->row_place(one);
    const int bottom = std::max(place.bottom(), part.bottom());
    place.y = std::min(place.y, part.y);
    place.height = bottom - place.y;
  }
  const NotesBubbleText text = bubble_text(key_of(row), *notes);
  const NotesBubble bubble = lay_out_notes_bubble({screen, c_.settings.dvfontsize, place, icons_x_},
                                                  text, c_.commands.measuring_canvas());
  DialogTemplate dialog = notes_dialog(c_.commands.language());
  dialog.place = bubble.place;
  dialog.outline = bubble.outline;
  dialog.size = {(bubble.place.width * 96 + screen.dpi_x - 1) / screen.dpi_x,
                 (bubble.place.height * 96 + screen.dpi_y - 1) / screen.dpi_y};
  dialog.controls[0].place = {0, 0, dialog.size.width, dialog.size.height};
  NotesProcedure procedure(bubble, text.spoken(), screen, c_.settings.item_colors, pen_down_);
  const int result = c_.host.dialogs.run_modal(dialog, procedure);
  focus_list();
  closed_ = result == kPopupLeft ? meant : RowKey();
}

void DayView::edit(const RowKey& key) {
  if (key) run_command(kCommandEditAppointment, key);
}

}  // namespace orvello
