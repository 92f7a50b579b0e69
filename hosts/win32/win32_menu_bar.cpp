#include "hosts/win32/win32_menu_bar.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "hosts/win32/bar_window.h"
#include "hosts/win32/form_look.h"

namespace orvello {

Win32MenuBar::Win32MenuBar(Win32Window& window) : window_(window) {
  window.on_look = [this] {
    if (!bar_) return;
    take_height();
    bar_->lay_out();
  };
}

Win32MenuBar::~Win32MenuBar() {
  window_.on_look = nullptr;
  destroy();
}

bool Win32MenuBar::create(const MenuBarContent& content) {
  if (!window_.frame() || bar_) return false;
  const auto bar = std::make_shared<BarWindow>(window_, content);
  wanted_height_ = content.height / window_.form_density().unit();
  shell_bar_ = window_.handheld().create_menu_bar(window_.frame());
  if (!bar->make(shell_bar_ ? shell_bar_ : window_.frame(), std::max(1, content.height)))
    return false;
  bar_ = bar;
  take_height();
  return true;
}

void Win32MenuBar::take_height() {
  const double unit = window_.form_density().unit();
  height_ = std::max(static_cast<int>(std::lround(wanted_height_ * unit)),
                     static_cast<int>(std::ceil(kTouchHeight * unit)));
  const std::weak_ptr<BarWindow> bar = bar_;
  BarSlot slot{bar_->window(), height_, {}, {}};
  slot.take_tab = [bar](bool backwards) {
    const auto alive = bar.lock();
    return alive && alive->window() && alive->take_tab(backwards);
  };
  slot.press = [bar](int soft_key) {
    const auto alive = bar.lock();
    if (alive && alive->window()) alive->press_text_button(soft_key);
  };
  window_.set_bar(std::move(slot));
}

void Win32MenuBar::destroy() {
  const std::shared_ptr<BarWindow> bar = std::exchange(bar_, nullptr);
  if (!bar) return;
  height_ = 0;
  const HWND window = bar->window(), shell_bar = std::exchange(shell_bar_, nullptr);
  if (!window) return;  // the main window has taken it along
  const bool had_focus = GetFocus() == window;
  window_.set_bar({});
  DestroyWindow(shell_bar ? shell_bar : window);
  if (had_focus && window_.frame()) SetFocus(window_.frame());
}

void Win32MenuBar::set_button_text(int index, TextView text) {
  if (!bar_ || index < 0 || index >= static_cast<int>(bar_->buttons().size())) return;
  MenuBarButton& button = bar_->buttons()[static_cast<std::size_t>(index)].content;
  if (button.kind == MenuBarButton::Kind::separator || button.text == text) return;
  button.text = Text(text);
  bar_->lay_out();
}

void Win32MenuBar::enable_button(std::uint32_t command, bool enabled) {
  BarWindow::Button* button = bar_ ? bar_->button_of(command) : nullptr;
  if (!button || button->enabled == enabled) return;
  button->enabled = enabled;
  bar_->lay_out();
}

void Win32MenuBar::check_button(std::uint32_t command, bool checked) {
  BarWindow::Button* button = bar_ ? bar_->button_of(command) : nullptr;
  if (!button || button->checked == checked) return;
  button->checked = checked;
  bar_->lay_out();
}

void Win32MenuBar::highlight_button(std::uint32_t command, bool highlighted, TextView hint) {
  BarWindow::Button* button = bar_ ? bar_->button_of(command) : nullptr;
  if (!highlighted) hint = {};
  if (!button || (button->highlighted == highlighted && button->hint == hint)) return;
  button->highlighted = highlighted;
  button->hint = Text(hint);
  bar_->lay_out();
}

void Win32MenuBar::set_menu(std::uint32_t command, const std::vector<MenuItem>& items) {
  if (BarWindow::Button* button = bar_ ? bar_->button_of(command) : nullptr)
    button->content.menu = items;
}

}  // namespace orvello
