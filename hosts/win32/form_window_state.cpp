// What of a form is seen and can be used, where its focus goes, and what its keys do.
#include <algorithm>

#include "draw/mirrored.h"
#include "hosts/win32/form_window.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

}  // namespace

// What a row, a date or a position is chosen in; a text that is typed into a combo is none.
bool FormWindow::is_choice(int id) const {
  const FormControl* found = control(id);
  if (!found) return false;
  switch (found->kind()) {
    case Kind::combo:
      return !found->is_typed();
    case Kind::drop_list:
    case Kind::date_picker:
    case Kind::list:
    case Kind::multi_list:
    case Kind::slider:
    case Kind::month_calendar:
      return true;
    default:
      return false;
  }
}

bool FormWindow::is_on_step(std::size_t at) const {
  const int step = made_as(at).step;
  return made_[at].shown && (step == 0 || step == step_);
}

bool FormWindow::is_seen(int id) const {
  const int at = index_of(id);
  return at >= 0 && shown_ && made_[static_cast<std::size_t>(at)].control &&
         is_on_step(static_cast<std::size_t>(at));
}

bool FormWindow::is_enabled(int id) const {
  const int at = index_of(id);
  return at >= 0 && made_[static_cast<std::size_t>(at)].enabled;
}

bool FormWindow::can_focus(std::size_t at) const {
  const FormControl* found = made_[at].control.get();
  return found && found->takes_focus() && made_[at].enabled && is_on_step(at);
}

// Shows what is to be seen. What had the focus and is not there any more leaves it to nobody: the
// platform would give it to its parent.
void FormWindow::keep_seen() {
  const int at = index_of(focus_.control());
  if (at >= 0 && !can_focus(static_cast<std::size_t>(at))) {
    left_ = at;
    focus(0);
  }
  for (std::size_t i = 0; i < made_.size(); ++i) {
    Made& made = made_[i];
    if (!made.control) continue;
    const bool seen = is_on_step(i);
    if (!seen || !made.enabled) made.control->close_drop();
    if (seen != made.seen) made.control->show(seen);
    made.seen = seen;
    if ((IsWindowEnabled(made.control->window()) != FALSE) != made.enabled)
      made.control->enable(made.enabled);
  }
}

void FormWindow::set_checked(int id, bool checked) {
  const int at = index_of(id);
  FormControl* found = control(id);
  if (!found) return;
  if (found->kind() == Kind::radio_button && checked)
    for (std::size_t i = 0; i < made_.size(); ++i) {
      const bool other = made_as(i).kind == Kind::radio_button && made_[i].control &&
                         made_as(i).group == made_as(static_cast<std::size_t>(at)).group;
      if (other && static_cast<int>(i) != at) made_[i].control->set_checked(false);
    }
  found->set_checked(checked);
}

void FormWindow::set_enabled(int id, bool enabled) {
  if (const int at = index_of(id); at >= 0) made_[static_cast<std::size_t>(at)].enabled = enabled;
  keep_seen();
}

void FormWindow::set_shown(int id, bool shown) {
  if (const int at = index_of(id); at >= 0) made_[static_cast<std::size_t>(at)].shown = shown;
  keep_seen();
}

void FormWindow::set_step(int step) {
  step_ = step;
  keep_seen();
  lay_out();
}

void FormWindow::focus(int id, Caret caret) {
  const int at = index_of(id);
  if (id != 0 && (at < 0 || !can_focus(static_cast<std::size_t>(at)))) return;
  if (id == 0 && focus_.control() != 0) left_ = index_of(focus_.control());
  if (id != 0) left_ = at;
  FormControl* found = control(id);
  focus_.move(id);
  // Where the form is not seen yet, it is given when it comes.
  if (shown_ && give_focus) give_focus(found ? found->focus_target() : body_.window());
  if (!found) return;
  found->put_caret(caret);
  bring_in_sight(id);
}

// As a whole where it can be.
void FormWindow::bring_in_sight(int id) {
  const FormControl* found = control(id);
  if (!found) return;
  RECT room{}, place{};
  GetClientRect(view_.window(), &room);
  GetWindowRect(found->window(), &place);
  MapWindowPoints(nullptr, body_.window(), reinterpret_cast<POINT*>(&place), 2);
  const int gap = look_.scaled(kGrid);
  int y = scrolled_.y;
  if (place.bottom + gap > y + room.bottom) y = place.bottom + gap - room.bottom;
  if (place.top - gap < y) y = place.top - gap;
  if (y != scrolled_.y) scroll_to(scrolled_.x, y);
}

RECT FormWindow::place_on_screen(int id) const {
  RECT place{};
  if (const FormControl* found = control(id)) GetWindowRect(found->window(), &place);
  return place;
}

// Of a group of radio buttons the chosen one, or the first.
bool FormWindow::is_tab_stop(std::size_t at) const {
  const FormControl& radio = *made_[at].control;
  if (radio.kind() != Kind::radio_button || radio.checked()) return true;
  const int group = made_as(at).group;
  for (std::size_t i = 0; i < made_.size(); ++i) {
    if (made_as(i).kind != Kind::radio_button || made_as(i).group != group) continue;
    if (!can_focus(i)) continue;
    if (made_[i].control->checked() || i < at) return false;
  }
  return true;
}

// Rather something to be filled in or pressed than a picture.
int FormWindow::first_focus() const {
  int picture = 0;
  for (std::size_t i = 0; i < made_.size(); ++i) {
    if (!can_focus(i) || !is_tab_stop(i)) continue;
    if (made_as(i).kind != Kind::custom) return made_as(i).id;
    if (picture == 0) picture = made_as(i).id;
  }
  return picture;
}

void FormWindow::come(bool needs_focus) {
  int wanted = focus_.control();
  if (wanted == 0 && needs_focus) wanted = first_focus();
  if (wanted != 0 || needs_focus) focus(wanted);
  focus_.come();
}

bool FormWindow::focus_end(bool last) {
  const std::size_t count = made_.size();
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = last ? count - 1 - i : i;
    if (!can_focus(at) || !is_tab_stop(at)) continue;
    focus(made_as(at).id, Caret::all);
    return true;
  }
  return false;
}

// From where the focus was when it went to nobody.
void FormWindow::move_focus(bool back) {
  const auto count = static_cast<int>(made_.size());
  int at = focus_.control() != 0 ? index_of(focus_.control()) : left_;
  for (int i = 0; i < count; ++i) {
    at = at < 0 ? (back ? count - 1 : 0) : at + (back ? -1 : 1);
    if (at < 0 || at >= count) {
      if (tab_left && tab_left(back)) return;
      at = back ? count - 1 : 0;
    }
    const auto place = static_cast<std::size_t>(at);
    if (can_focus(place) && is_tab_stop(place)) return focus(made_as(place).id, Caret::all);
  }
}

bool FormWindow::choose_radio(int id, UINT key) {
  if (look_.right_to_left()) key = mirrored_key(key);
  const int by = key == VK_DOWN || key == VK_RIGHT ? 1 : key == VK_UP || key == VK_LEFT ? -1 : 0;
  if (by == 0) return false;
  const int own = index_of(id);
  std::vector<int> group;
  std::size_t at = 0;
  for (std::size_t i = 0; i < made_.size(); ++i) {
    if (made_as(i).kind != Kind::radio_button || !can_focus(i)) continue;
    if (made_as(i).group != made_as(static_cast<std::size_t>(own)).group) continue;
    if (static_cast<int>(i) == own) at = group.size();
    group.push_back(made_as(i).id);
  }
  const std::size_t count = group.size();
  if (count == 0) return true;
  const int next = group[(at + (by > 0 ? 1 : count - 1)) % count];
  focus(next);
  control(next)->press();
  return true;
}

bool FormWindow::take_key(int id, UINT key) {
  const bool control_held = is_key_held(VK_CONTROL), shift_held = is_key_held(VK_SHIFT);
  if (control_held && turn_wanted && (key == VK_TAB || key == VK_PRIOR || key == VK_NEXT)) {
    turn_wanted(key == VK_PRIOR || (key == VK_TAB && shift_held) ? -1 : 1);
    return true;
  }
  const FormControl* found = control(id);
  switch (key) {
    case VK_TAB:
      if (control_held) return false;
      move_focus(shift_held);
      return true;
    case VK_ESCAPE:
      if (!close_wanted) return false;
      close_wanted();
      return true;
    case VK_RETURN:
      if (!press_default() && accept_wanted) accept_wanted();
      return true;
    default:
      return found && found->kind() == Kind::radio_button && choose_radio(id, key);
  }
}

// What was typed on a line belongs to the edit that has come in its place by the time that all was
// told.
bool FormWindow::take_letter(int id, wchar_t letter) {
  FormControl* line = control(id);
  if (!line || !behind) return false;
  line->press();
  behind([this, letter] {
    const FormControl* edit = control(focus_.control());
    if (edit && (edit->kind() == Kind::edit || edit->kind() == Kind::combo))
      SendMessageW(edit->focus_target(), WM_CHAR, letter, 0);
  });
  return true;
}

}  // namespace orvello
