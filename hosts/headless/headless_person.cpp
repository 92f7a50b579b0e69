// What a person does to a dialog without a screen.
#include "draw/mirrored.h"
#include "hosts/headless/headless_dialog.h"
#include "ports/messages.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

bool is_button(Kind kind) {
  return kind == Kind::button || kind == Kind::default_button || kind == Kind::picture_button ||
         kind == Kind::line;
}

bool is_drawn(Kind kind) { return kind == Kind::custom || kind == Kind::report; }

}  // namespace

void HeadlessDialog::changed(HeadlessControl& control) {
  control.left_changed = control.choice || control.list || control.date || control.range;
  tell(Event::changed, control.made.id);
}

void HeadlessDialog::taken(HeadlessControl& control) {
  control.left_changed = false;
  dropped_down = 0;
  tell(Event::taken, control.made.id);
}

void HeadlessDialog::press(int control) {
  HeadlessControl* found = reach(control);
  if (!found) return;
  const Kind kind = found->made.kind;
  if (is_drawn(kind)) {
    const Size size = size_of(control);
    return tap(control, {size.width / 2, size.height / 2});
  }
  if (kind == Kind::check_box || kind == Kind::toggle) check(*found, !found->checked);
  if (kind == Kind::radio_button) check(*found, true);
  if (is_button(kind) || kind == Kind::check_box || kind == Kind::toggle ||
      kind == Kind::radio_button)
    tell(Event::command, control);
  if (found->choice || kind == Kind::date_picker) dropped_down = control;
  deliver();
}

void HeadlessDialog::type(int control, TextView text) {
  HeadlessControl* found = reach(control);
  if (!found) return;
  found->marked = 0;
  found->caret = static_cast<int>(found->text.size());
  if (found->notes) found->notes->select(0, static_cast<int>(found->notes->content().text.size()));
  type(text);
}

void HeadlessDialog::type(TextView text) {
  deliver();
  HeadlessControl* found = reachable(focused) ? find(focused) : nullptr;
  if (!found) return;
  if (found->notes) {
    if (found->notes->type(text)) changed(*found);
    return deliver();
  }
  const Kind kind = found->made.kind;
  if (kind == Kind::line) {
    const int line = focused;
    press(line);
    if (!closed && focused != line) type(text);
    return;
  }
  if (kind != Kind::edit && kind != Kind::multi_line_edit && kind != Kind::combo) return;
  const std::size_t from = static_cast<std::size_t>(std::min(found->caret, found->marked));
  const std::size_t to = static_cast<std::size_t>(std::max(found->caret, found->marked));
  const int kept = static_cast<int>(found->text.size() - (to - from));
  const int limit = found->made.limit;
  if (limit > 0) text = limit == kept ? TextView() : within_limit(text, limit - kept);
  const Text before = found->text;
  found->text.replace(from, to - from, text);
  found->caret = found->marked = static_cast<int>(from + text.size());
  // Typed text is not taken.
  if (found->text != before) tell(Event::changed, focused);
  deliver();
}

void HeadlessDialog::tap_row(int control, int row) {
  HeadlessControl* found = reach(control);
  if (!found) return;
  if (found->report) return tap(control, found->report->point_of(row));
  HeadlessList* list = found->list.get();
  if (!list || row < 0 || row >= static_cast<int>(list->rows().size())) return deliver();
  const std::vector<int> before = list->selected();
  std::vector<int> after{row};
  if (list->several()) {
    after = before;
    const auto there = std::find(after.begin(), after.end(), row);
    if (there == after.end())
      after.push_back(row);
    else
      after.erase(there);
  }
  list->select(after);
  if (list->selected() != before) changed(*found);
  taken(*found);
  deliver();
}

void HeadlessDialog::choose_row(int control, int row) {
  HeadlessControl* found = reach(control);
  if (!found) return;
  HeadlessChoice* choice = found->choice.get();
  if (!choice || row < 0 || row >= static_cast<int>(choice->rows().size())) return deliver();
  const bool other = choice->selected() != row;
  choice->select(row);
  if (other) changed(*found);
  taken(*found);
  deliver();
}

void HeadlessDialog::choose_date(int control, const MonthDayYear& date) {
  HeadlessControl* found = reach(control);
  if (!found) return;
  if (!found->date) return deliver();
  const MonthDayYear before = found->date->date();
  found->date->set_date(date);
  if (!(found->date->date() == before)) changed(*found);
  taken(*found);
  deliver();
}

void HeadlessDialog::slide(int control, int position) {
  HeadlessControl* found = reach(control);
  if (!found) return;
  if (!found->range) return deliver();
  const int before = found->range->position();
  found->range->set_position(position);
  if (found->range->position() != before) {
    changed(*found);
    taken(*found);
  }
  deliver();
}

void HeadlessDialog::select_text(int notes, int start, int length) {
  HeadlessControl* found = reach(notes);
  if (found && found->notes && found->notes->select(start, length)) taken(*found);
  deliver();
}

void HeadlessDialog::draw(int control, const std::vector<Point>& stroke) {
  HeadlessControl* found = reach(control);
  if (found && found->notes && found->notes->draw(stroke)) changed(*found);
  deliver();
}

DialogEvent HeadlessDialog::pointer_event(Event kind, int control, Point point) const {
  DialogEvent event{kind, control, nullptr, size_of(control)};
  event.point = right_to_left ? mirrored(point, event.size.width) : point;
  return event;
}

void HeadlessDialog::send_pointer(Event kind, int control, Point point, std::uint64_t time) {
  DialogEvent event = pointer_event(kind, control, point);
  event.time = time;
  tell(event);
  deliver();
}

HeadlessControl* HeadlessDialog::reach_drawn(int control) {
  if (press_through) press_through();
  HeadlessControl* found = reach(control);
  return found && is_drawn(found->made.kind) ? found : nullptr;
}

void HeadlessDialog::pen_down(int control, Point point, bool second, std::uint64_t time) {
  HeadlessControl* found = reach_drawn(control);
  pen_on_ = 0;
  if (!found) return;
  if (found->report && point.y < found->report->titles_height()) return deliver();
  pen_on_ = control;
  const bool stops = found->report && found->report->gliding();
  const std::weak_ptr<bool> alive = alive_;
  send_pointer(second ? Event::double_tap : Event::pointer_down, control, point, time);
  if (stops && !alive.expired()) found->report->glide(0);
}

void HeadlessDialog::pen_move(int control, Point point, std::uint64_t time) {
  if (pen_on_ == control) send_pointer(Event::pointer_move, control, point, time);
}

// A popup hears the end of the press that opened it.
void HeadlessDialog::pen_up(int control, Point point, std::uint64_t time) {
  const bool opened_it = dialog.popup && pen_on_ == 0 && reachable(control);
  if (pen_on_ != control && !opened_it) return;
  pen_on_ = 0;
  send_pointer(Event::pointer_up, control, point, time);
}

void HeadlessDialog::press_other_button(int control, Point point) {
  if (reach_drawn(control)) send_pointer(Event::context_menu, control, point);
}

// A list that has more rows than it shows scrolls by itself.
void HeadlessDialog::turn_wheel(int control, Point point, int notches, bool sideways) {
  constexpr int kStep = 60;
  HeadlessControl* found = reachable(control) ? find(control) : nullptr;
  if (!found || !is_drawn(found->made.kind)) return;
  if (!sideways && found->report && found->report->scrolls())
    return found->report->scroll_by(-notches * kStep);
  DialogEvent event = pointer_event(Event::wheel, control, point);
  event.notches = right_to_left && sideways ? -notches : notches;
  event.sideways = sideways;
  tell(event);
  deliver();
}

void HeadlessDialog::tap(int control, Point point) {
  const std::weak_ptr<bool> alive = alive_;
  pen_down(control, point);
  if (!alive.expired()) pen_up(control, point);
}

void HeadlessDialog::read_out_tap(int control, Point point) {
  if (!reach_drawn(control)) return;
  DialogEvent down = pointer_event(Event::pointer_down, control, point);
  down.alone = true;
  tell(down);
  send_pointer(Event::pointer_up, control, point);
}

void HeadlessDialog::key(int control, std::uint32_t code, bool control_held, bool shift_held) {
  if (reach(control)) key(code, control_held, shift_held);
}

void HeadlessDialog::key(std::uint32_t code, bool control_held, bool shift_held) {
  deliver();
  if (closed || !is_on_top()) return;
  if (code == kKeyEscape && dropped_down != 0) {
    dropped_down = 0;
    return;
  }
  if (code == kKeyEscape && role_ != Role::modeless) return press_close();
  HeadlessControl* found = reachable(focused) ? find(focused) : nullptr;
  if (found && is_drawn(found->made.kind)) {
    DialogEvent event{Event::key, focused, nullptr, size_of(focused)};
    event.key = right_to_left ? mirrored_key(code) : code;
    event.control_held = control_held;
    event.shift_held = shift_held;
    tell(event);
  } else if (!found || !use_key(*found, code)) {
    if (code == kKeyReturn) return press_default();
  }
  deliver();
}

// False: the control has no use for it.
bool HeadlessDialog::use_key(HeadlessControl& control, std::uint32_t code) {
  const Kind kind = control.made.kind;
  const int by = code == kKeyDown || code == kKeyRight ? 1
                 : code == kKeyUp || code == kKeyLeft  ? -1
                                                       : 0;
  if (kind == Kind::edit && (code == kKeyUp || code == kKeyDown)) {
    DialogEvent event{Event::key, control.made.id, nullptr, {}};
    event.key = code;
    tell(event);
    return true;
  }
  if (by != 0) {
    if (control.list || control.choice) move_row(control, by);
    if (kind == Kind::radio_button) choose_radio(control, by);
    if (control.range) {
      const int before = control.range->position();
      control.range->set_position(before + by);
      if (control.range->position() != before) changed(control);
    }
    if (kind == Kind::month_calendar) {
      MonthDayYear date = control.date->date();
      const bool weeks = code == kKeyDown || code == kKeyUp;
      AddDays(date.month, date.day, date.year, weeks ? 7 * by : by);
      control.date->set_date(date);
      changed(control);
    }
    return true;
  }
  if (code != kKeyReturn && code != kKeySpace) return false;
  const bool pressed_by_space =
      kind == Kind::check_box || kind == Kind::toggle || kind == Kind::radio_button;
  if (is_button(kind) || (pressed_by_space && code == kKeySpace)) {
    press(control.made.id);
  } else if (code == kKeyReturn &&
             (control.list || kind == Kind::month_calendar || dropped_down == control.made.id)) {
    taken(control);
  } else if (kind == Kind::multi_line_edit || control.notes) {
    type(code == kKeyReturn ? u"\n" : u" ");
  } else {
    return false;
  }
  return true;
}

void HeadlessDialog::move_row(HeadlessControl& control, int by) {
  const std::size_t count = (control.list ? control.list->rows() : control.choice->rows()).size();
  const std::vector<int> selected =
      control.list ? control.list->selected() : std::vector<int>{control.choice->selected()};
  const int before = selected.empty() ? -1 : selected.front();
  const int row = std::clamp(before + by, 0, static_cast<int>(count) - 1);
  if (count == 0 || row == before || (control.list && control.list->several())) return;
  if (control.list)
    control.list->select({row});
  else
    control.choice->select(row);
  changed(control);
}

void HeadlessDialog::choose_radio(HeadlessControl& control, int by) {
  std::vector<int> group;
  std::size_t at = 0;
  for (const ControlTemplate& made : dialog.controls) {
    if (made.kind != Kind::radio_button || made.group != control.made.group) continue;
    if (!can_focus(controls.at(made.id))) continue;
    if (made.id == control.made.id) at = group.size();
    group.push_back(made.id);
  }
  const std::size_t count = group.size();
  press(group[(at + (by > 0 ? 1 : count - 1)) % count]);
}

void HeadlessDialog::press_default() {
  for (const ControlTemplate& made : dialog.controls) {
    if (made.kind != Kind::default_button || !reachable(made.id)) continue;
    tell(Event::command, made.id);
    return deliver();
  }
  if (accept) accept();
  deliver();
}

// Ticks that were not told yet are one.
bool HeadlessDialog::fire_timer(int id) {
  if (closed || !timers.count(id)) return false;
  const bool waits = std::any_of(queue_.begin(), queue_.end(), [id](const DialogEvent& event) {
    return event.kind == Event::timer && event.control == id;
  });
  if (!waits) tell(Event::timer, id);
  deliver();
  return true;
}

void HeadlessDialog::press_beside() {
  deliver();
  if (closed || !is_on_top() || !dialog.popup) return;
  tell(Event::focus_lost);
  deliver();
}

void HeadlessDialog::press_close() {
  deliver();
  if (closed || !is_on_top() || role_ == Role::modeless) return;
  if (role_ == Role::page) {
    if (cancel) cancel();
    return;
  }
  if (!procedure_.may_close(*this)) return deliver();
  tell(Event::close);
  deliver();
  close(0);
}

}  // namespace orvello
