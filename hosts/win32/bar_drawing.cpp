// How the menu bar looks, and what a screen reader is told of it.
#include <oleacc.h>

#include <algorithm>

#include "hosts/win32/bar_window.h"
#include "hosts/win32/form_look.h"
#include "hosts/win32/painting.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_surface.h"
#include "hosts/win32/win32_window.h"

namespace orvello {
void BarWindow::paint(HDC dc) {
  const Rect all = client_rect(window());
  const Win32Density& density = owner_.form_density();
  Win32Surface surface(owner_.fonts(), {all.width, all.height}, owner_.right_to_left());
  Canvas& canvas = surface.canvas();
  canvas.fill_rect(all, density.colors->ground);
  canvas.fill_rect({0, 0, all.width, std::max(1, density.scaled(1))}, density.colors->line);
  for (const std::size_t button : shown()) draw(canvas, button);
  surface.publish();
  surface.paint(dc, {all.width, all.height});
}

void BarWindow::draw(Canvas& canvas, std::size_t index) const {
  const Button& button = buttons_[index];
  const Win32Density& density = owner_.form_density();
  const LookColors& look = *density.colors;
  const int at = static_cast<int>(index), line = std::max(1, density.scaled(1));
  const bool down = pressed_ == at || open_ == at;
  const bool tinted = down || button.checked || button.highlighted;
  if (tinted || hovered_ == at)
    canvas.fill_rect(button.place, tinted ? look.accent_tint : look.hover);
  if (button.highlighted) canvas.frame_rect(button.place, look.accent, line);
  if (button.checked)
    canvas.fill_rect(
        {button.place.x, button.place.y, button.place.width, std::max(2, density.scaled(2))},
        look.accent);
  if (shows_image(button.content) && !strip_.empty()) {
    draw_image(canvas, button, !button.enabled);
  } else {
    const Color color = button.enabled ? look.text : look.dim_text;
    canvas.draw_text(button.content.text, button.place,
                     {{text_height_, 400, false}, color, Align::center, true, false});
  }
  if (focused_ != at) return;
  const int edge = density.scaled(2);
  canvas.frame_rect(button.place.inset(edge, edge), look.accent, line);
}

// A highlighted button's name stands beside the image, once there is room for some of it.
void BarWindow::draw_image(Canvas& canvas, const Button& button, bool grey) const {
  const Win32Density& density = owner_.form_density();
  const int side = strip_.height, edge = density.scaled(kGrid);
  const Rect& place = button.place;
  const int room = place.width - side - 3 * edge;
  const bool named = button.highlighted && room >= density.scaled(kTextSize);
  const Rect source{button.content.image * side, 0, side, side};
  const int x = named ? place.x + edge : place.x + (place.width - side) / 2;
  if (source.x >= 0 && source.right() <= strip_.width)
    canvas.draw_image(grey ? grey_ : seen_, source, {x, place.y + (place.height - side) / 2});
  if (!named) return;
  const FontSpec font{text_height_, 400, false};
  Text name = button.content.text;
  const Text whole = name;
  while (!name.empty() && canvas.measure(name, font).width > room) {
    const std::size_t shorter = name.size() - (name.size() == whole.size() ? 1 : 2);
    name = cut(whole, name.size() > 1 ? shorter : 0);
    if (!name.empty()) name.push_back(u'\u2026');
  }
  canvas.draw_text(name, {place.x + 2 * edge + side, place.y, room, place.height},
                   {font, density.colors->text, Align::left, true, false});
}

AccessiblePart BarWindow::accessible_self() {
  AccessiblePart self;
  RECT place{};
  GetWindowRect(window(), &place);
  self.place = from_native(place);
  self.role = ROLE_SYSTEM_TOOLBAR;
  self.state = STATE_SYSTEM_FOCUSABLE;
  return self;
}

AccessiblePart BarWindow::accessible_part(int part) {
  AccessiblePart told;
  const std::vector<std::size_t> all = shown();
  if (part < 0 || part >= static_cast<int>(all.size())) return told;
  const std::size_t index = all[static_cast<std::size_t>(part)];
  const Button& button = buttons_[index];
  told.name = told_name(button);
  if (shows_image(button.content) && button.highlighted) told.description = button.content.text;
  RECT place = native_rect(place_on_window(index));
  MapWindowPoints(window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
  told.place = from_native(place);
  told.role = drops_menu(button.content) ? ROLE_SYSTEM_BUTTONMENU : ROLE_SYSTEM_PUSHBUTTON;
  told.state = STATE_SYSTEM_FOCUSABLE;
  if (!button.enabled) told.state = STATE_SYSTEM_UNAVAILABLE;
  if (button.checked) told.state |= STATE_SYSTEM_CHECKED;
  if (focused_ == static_cast<int>(index)) told.state |= STATE_SYSTEM_FOCUSED;
  if (drops_menu(button.content)) told.state |= STATE_SYSTEM_HASPOPUP;
  if (button.enabled) told.action = told.name;
  return told;
}

int BarWindow::accessible_focus() {
  const std::vector<std::size_t> all = shown();
  for (std::size_t i = 0; i < all.size(); ++i)
    if (static_cast<int>(all[i]) == focused_) return static_cast<int>(i);
  return -1;
}

void BarWindow::press_accessible(int part) {
  const std::vector<std::size_t> all = shown();
  if (part < 0 || part >= static_cast<int>(all.size())) return;
  const auto index = static_cast<int>(all[static_cast<std::size_t>(part)]);
  const std::weak_ptr<BarWindow> bar = weak_from_this();
  owner_.later([bar, index] {
    const auto alive = bar.lock();
    if (alive && alive->window() && IsWindowEnabled(alive->window()) &&
        alive->buttons_[static_cast<std::size_t>(index)].enabled)
      alive->activate(index);
  });
}

}  // namespace orvello
