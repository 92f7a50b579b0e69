#include "hosts/headless/headless_dialog.h"

#include "draw/form_layout.h"
#include "hosts/headless/headless_menu.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

bool takes_text(Kind kind) {
  return kind == Kind::edit || kind == Kind::multi_line_edit || kind == Kind::combo;
}

bool has_text_of_its_own(Kind kind) {
  switch (kind) {
    case Kind::date_picker:
    case Kind::slider:
    case Kind::report:
    case Kind::month_calendar:
    case Kind::notes:
    case Kind::custom:
      return false;
    default:
      return true;
  }
}

}  // namespace

HeadlessDialog::HeadlessDialog(const DialogTemplate& shown, DialogProcedure& procedure, Role role)
    : dialog(shown), procedure_(procedure), role_(role), title_(shown.title) {
  for (const ControlTemplate& control : dialog.controls) make(control);
}

void HeadlessDialog::make(const ControlTemplate& made) {
  HeadlessControl& control = controls[made.id];
  control.made = made;
  control.shown = !made.hidden;
  if (has_text_of_its_own(made.kind)) control.text = made.text;
  const int id = made.id;
  const auto open = [this, id] {
    if (!reachable(id)) return;
    move_focus(id);
    dropped_down = id;
  };
  const auto track_menu = [this](const std::vector<MenuItem>& items) { return track(items); };
  switch (made.kind) {
    case Kind::drop_list:
      control.choice = std::make_unique<HeadlessChoice>(open);
      break;
    case Kind::combo:
      control.choice = std::make_unique<HeadlessChoice>(open, control.text, made.limit);
      break;
    case Kind::list:
    case Kind::multi_list:
      control.list = std::make_unique<HeadlessList>(made.kind == Kind::multi_list);
      break;
    case Kind::date_picker:
    case Kind::month_calendar:
      control.date = std::make_unique<HeadlessDate>();
      break;
    case Kind::slider:
      control.range = std::make_unique<HeadlessRange>();
      break;
    case Kind::notes:
      control.notes = std::make_unique<HeadlessNotes>(made.limit);
      break;
    case Kind::report:
      control.report = std::make_unique<HeadlessReport>(made.place);
      [[fallthrough]];
    case Kind::custom:
    case Kind::picture_button:
      control.drawn = std::make_unique<HeadlessDrawn>(track_menu);
      if (made.image) control.drawn->image = *made.image;
      break;
    default:
      break;
  }
}

const HeadlessControl* HeadlessDialog::find(int control) const {
  const auto found = controls.find(control);
  return found == controls.end() ? nullptr : &found->second;
}

HeadlessControl* HeadlessDialog::find(int control) {
  const auto found = controls.find(control);
  return found == controls.end() ? nullptr : &found->second;
}

Text HeadlessDialog::text(int control) const {
  if (control == 0) return title_;
  const HeadlessControl* found = find(control);
  if (!found) return {};
  if (found->choice) return found->choice->text();
  return found->list ? found->list->text() : found->text;
}

void HeadlessDialog::set_text(int control, TextView text) {
  if (control == 0) title_ = text;
  HeadlessControl* found = find(control);
  if (!found) return;
  const Kind kind = found->made.kind;
  if (found->list) return found->list->select_text(text);
  if (kind == Kind::drop_list) return found->choice->select(found->choice->row_of(text));
  if (!has_text_of_its_own(kind)) return;
  found->text = takes_text(kind) ? within_limit(text, found->made.limit) : text;
  found->caret = found->marked = static_cast<int>(found->text.size());
}

bool HeadlessDialog::checked(int control) const {
  const HeadlessControl* found = find(control);
  return found && found->checked;
}

void HeadlessDialog::set_checked(int control, bool checked) {
  if (HeadlessControl* found = find(control)) check(*found, checked);
}

// The others of its group of radio buttons go out.
void HeadlessDialog::check(HeadlessControl& control, bool checked) {
  const Kind kind = control.made.kind;
  if (kind != Kind::check_box && kind != Kind::radio_button && kind != Kind::toggle) return;
  if (kind == Kind::radio_button && checked)
    for (auto& [id, other] : controls)
      if (other.made.kind == kind && other.made.group == control.made.group) other.checked = false;
  control.checked = checked;
}

void HeadlessDialog::enable(int control, bool enabled) {
  if (HeadlessControl* found = find(control)) found->enabled = enabled;
  drop_unseen_focus();
}

void HeadlessDialog::show(int control, bool shown) {
  if (HeadlessControl* found = find(control)) found->shown = shown;
  drop_unseen_focus();
}

void HeadlessDialog::set_step(int wanted) {
  step = wanted;
  drop_unseen_focus();
}

void HeadlessDialog::focus(int control, Caret caret) {
  if (control == 0) return move_focus(0);
  HeadlessControl* found = find(control);
  if (!found || !can_focus(*found)) return;
  move_focus(control);
  if (caret == Caret::unchanged) return;
  const int size = static_cast<int>(found->text.size());
  found->caret = size;
  found->marked = caret == Caret::all ? 0 : size;
  if (found->notes) {
    const int length = static_cast<int>(found->notes->content().text.size());
    found->notes->select(caret == Caret::all ? 0 : length, length);
  }
}

bool HeadlessDialog::stands(int control) const {
  const HeadlessControl* found = find(control);
  return found && here_ && !closed && found->shown &&
         (found->made.step == 0 || found->made.step == step);
}

bool HeadlessDialog::reachable(int control) const {
  return seen(control) && is_on_top() && find(control)->enabled;
}

Rect HeadlessDialog::place(int control) const {
  if (!stands(control)) return {};
  const FormLayout layout = lay_out_form(dialog, 1, design_size(dialog), 0, step);
  for (std::size_t i = 0; i < dialog.controls.size(); ++i)
    if (dialog.controls[i].id == control) return layout.places[i];
  return {};
}

void HeadlessDialog::set_place(int control, const Rect& place) {
  HeadlessControl* found = find(control);
  if (!found) return;
  found->made.place = place;
  if (found->report) found->report->move(place);
  for (ControlTemplate& made : dialog.controls)
    if (made.id == control) made.place = place;
}

Size HeadlessDialog::size_of(int control) const {
  const HeadlessControl* found = find(control);
  return found ? Size{found->made.place.width, found->made.place.height} : Size();
}

ChoiceControl* HeadlessDialog::choice(int control) {
  HeadlessControl* found = find(control);
  return found ? found->choice.get() : nullptr;
}

ListControl* HeadlessDialog::list(int control) {
  HeadlessControl* found = find(control);
  return found ? found->list.get() : nullptr;
}

DateControl* HeadlessDialog::date(int control) {
  HeadlessControl* found = find(control);
  return found ? found->date.get() : nullptr;
}

RangeControl* HeadlessDialog::range(int control) {
  HeadlessControl* found = find(control);
  return found ? found->range.get() : nullptr;
}

NotesControl* HeadlessDialog::notes(int control) {
  HeadlessControl* found = find(control);
  return found ? found->notes.get() : nullptr;
}

ReportList* HeadlessDialog::report(int control) {
  HeadlessControl* found = find(control);
  return found ? found->report.get() : nullptr;
}

DrawnControl* HeadlessDialog::drawn(int control) {
  HeadlessControl* found = find(control);
  return found ? found->drawn.get() : nullptr;
}

std::uint32_t HeadlessDialog::track(const std::vector<MenuItem>& items) {
  menu = items;
  return chosen_of(items, menu_choice ? menu_choice(items) : 0);
}

void HeadlessDialog::set_timer(int id, int milliseconds) {
  if (milliseconds > 0)
    timers[id] = milliseconds;
  else
    timers.erase(id);
}

void HeadlessDialog::close(int with_result) {
  if (closed || role_ == Role::modeless) return;
  closed = true;
  result = with_result;
  if (closing) closing(with_result);
}

}  // namespace orvello
