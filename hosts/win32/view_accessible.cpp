#include "hosts/win32/view_accessible.h"

#include <oleacc.h>

#include <algorithm>
#include <utility>

#include "draw/mirrored.h"
#include "hosts/win32/painting.h"
#include "hosts/win32/win32_window.h"

namespace orvello {
namespace {

Rect on_screen(HWND window, const Rect& place) {
  RECT edges = native_rect(place);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&edges), 2);
  return from_native(edges);
}

}  // namespace

void ViewAccessible::set_view(AccessibleView* view) {
  view_ = view;
  changed();
}

void ViewAccessible::changed() {
  known_ = false;
  items_.clear();
  if (!heard_ || !owner_.view()) return;
  AccessibleWindow::tell(owner_.view(), EVENT_OBJECT_REORDER);
  if (has_keyboard()) tell_focus();
}

void ViewAccessible::tell_focus() {
  if (heard_) AccessibleWindow::tell(owner_.view(), EVENT_OBJECT_FOCUS, selected());
}

std::optional<LRESULT> ViewAccessible::answer(WPARAM wparam, LPARAM lparam) {
  const auto given = window_.answer(owner_.view(), wparam, lparam);
  if (given) heard_ = true;
  return given;
}

bool ViewAccessible::has_keyboard() const { return GetFocus() == owner_.view(); }

const std::vector<int>& ViewAccessible::cells() {
  // What stands above the view is told in its place.
  if (!view_ || owner_.view_is_covered()) return none_;
  if (std::exchange(known_, true)) return cells_;
  grid_ = view_->accessible_grid();
  cells_.clear();
  for (std::size_t i = 0; i < grid_.cells.size(); ++i)
    if (!grid_.cells[i].name.empty()) cells_.push_back(static_cast<int>(i));
  return cells_;
}

const std::vector<Text>& ViewAccessible::items(int cell) {
  const auto known = items_.find(cell);
  if (known != items_.end()) return known->second;
  std::vector<Text> asked = view_->accessible_items(cell);
  return items_[cell] = std::move(asked);
}

int ViewAccessible::selected() {
  const std::vector<int>& told = cells();
  for (std::size_t part = 0; part < told.size(); ++part)
    if (grid_.cells[static_cast<std::size_t>(told[part])].selected) return static_cast<int>(part);
  return -1;
}

AccessiblePart ViewAccessible::accessible_self() {
  AccessiblePart self;
  const bool table = !cells().empty();
  if (table) self.name = grid_.name;
  self.role = table ? ROLE_SYSTEM_TABLE : ROLE_SYSTEM_CLIENT;
  self.state = STATE_SYSTEM_FOCUSABLE;
  if (has_keyboard()) self.state |= STATE_SYSTEM_FOCUSED;
  self.place = on_screen(owner_.view(), client_rect(owner_.view()));
  return self;
}

AccessiblePart ViewAccessible::accessible_part(int part) {
  AccessiblePart told;
  const std::vector<int>& all = cells();
  if (part < 0 || part >= static_cast<int>(all.size())) return told;
  const int number = all[static_cast<std::size_t>(part)];
  const AccessibleCell& cell = grid_.cells[static_cast<std::size_t>(number)];
  told.name = told.action = cell.name;
  for (const Text& item : items(number)) {
    if (!told.description.empty()) told.description += u"; ";
    told.description += item;
  }
  const int days = static_cast<int>(grid_.cells.size()) - grid_.buttons;
  told.role = number < days ? ROLE_SYSTEM_CELL : ROLE_SYSTEM_PUSHBUTTON;
  told.state = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_SELECTABLE;
  if (cell.selected) told.state |= STATE_SYSTEM_SELECTED;
  if (cell.selected && has_keyboard()) told.state |= STATE_SYSTEM_FOCUSED;
  const int width = client_rect(owner_.view()).width;
  told.place =
      on_screen(owner_.view(), owner_.right_to_left() ? mirrored(cell.place, width) : cell.place);
  return told;
}

int ViewAccessible::accessible_focus() { return has_keyboard() ? selected() : -1; }

std::vector<int> ViewAccessible::accessible_selection() {
  const int part = selected();
  return part < 0 ? std::vector<int>() : std::vector<int>{part};
}

// Posted: what it opens may run as long as a person likes.
void ViewAccessible::press_accessible(int part) {
  const std::vector<int>& all = cells();
  if (part < 0 || part >= static_cast<int>(all.size())) return;
  const int number = all[static_cast<std::size_t>(part)];
  owner_.later([this, number] {
    if (view_ && !owner_.view_is_covered()) view_->choose_accessible(number);
  });
}

}  // namespace orvello
