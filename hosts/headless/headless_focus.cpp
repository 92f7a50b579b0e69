// How a dialog without a screen tells its events, and where its focus is.
#include <utility>

#include "hosts/headless/headless_dialog.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

}  // namespace

void HeadlessDialog::deliver() {
  if (delivering_) return;
  delivering_ = true;
  const std::weak_ptr<bool> alive = alive_;
  while (!queue_.empty() && !closed) {
    const DialogEvent event = queue_.front();
    queue_.pop_front();
    procedure_.handle(*this, event);
    if (alive.expired()) return;
  }
  delivering_ = false;
}

void HeadlessDialog::start() {
  tell(Event::init);
  deliver();
}

void HeadlessDialog::come() {
  here_ = true;
  int wanted = std::exchange(focused, 0);
  const HeadlessControl* found = find(wanted);
  if (!found || !can_focus(*found)) wanted = 0;
  if (wanted == 0 && role_ != Role::modeless) wanted = first_focus();
  move_focus(wanted);
  deliver();
}

void HeadlessDialog::go() {
  const int had = focused;
  move_focus(0);
  tell(Event::page_left);
  deliver();
  here_ = false;
  focused = had;
}

// Before it is seen the focus is only remembered.
void HeadlessDialog::move_focus(int to) {
  if (to == focused) return;
  dropped_down = 0;
  if (here_ && focused != 0) {
    HeadlessControl& left = controls.at(focused);
    if (left.left_changed) taken(left);
    tell(Event::focus_lost, focused);
  }
  focused = to;
  if (here_ && to != 0) tell(Event::focus_gained, to);
}

void HeadlessDialog::drop_unseen_focus() {
  const HeadlessControl* found = find(focused);
  if (found && !can_focus(*found)) move_focus(0);
}

bool HeadlessDialog::takes_focus(const HeadlessControl& control) const {
  return control.made.kind != Kind::label;
}

bool HeadlessDialog::can_focus(const HeadlessControl& control) const {
  return takes_focus(control) && control.enabled && control.shown &&
         (control.made.step == 0 || control.made.step == step);
}

// Rather something to be filled in or pressed than a picture.
int HeadlessDialog::first_focus() const {
  int picture = 0;
  for (const ControlTemplate& made : dialog.controls) {
    const HeadlessControl& control = controls.at(made.id);
    if (!can_focus(control) || !is_tab_stop(control)) continue;
    if (made.kind != Kind::custom) return made.id;
    if (picture == 0) picture = made.id;
  }
  return picture;
}

// Of a group of radio buttons the chosen one, or the first.
bool HeadlessDialog::is_tab_stop(const HeadlessControl& control) const {
  if (control.made.kind != Kind::radio_button || control.checked) return true;
  bool first = true;
  for (const ControlTemplate& made : dialog.controls) {
    if (made.kind != Kind::radio_button || made.group != control.made.group) continue;
    if (controls.at(made.id).checked) return false;
    if (made.id == control.made.id) return first;
    first = false;
  }
  return first;
}

void HeadlessDialog::tab(bool back) {
  std::vector<int> stops;
  std::size_t at = 0;
  bool found = false;
  for (const ControlTemplate& made : dialog.controls) {
    const HeadlessControl& control = controls.at(made.id);
    if (!can_focus(control) || (!is_tab_stop(control) && made.id != focused)) continue;
    if (made.id == focused) {
      at = stops.size();
      found = true;
    }
    stops.push_back(made.id);
  }
  if (stops.empty() || !is_on_top()) return;
  const std::size_t count = stops.size();
  const std::size_t to = !found ? (back ? count - 1 : 0) : (at + (back ? count - 1 : 1)) % count;
  focus(stops[to], Caret::all);
  deliver();
}

HeadlessControl* HeadlessDialog::reach(int control) {
  deliver();
  if (!reachable(control)) return nullptr;
  HeadlessControl* found = find(control);
  if (takes_focus(*found)) move_focus(control);
  return found;
}

}  // namespace orvello
