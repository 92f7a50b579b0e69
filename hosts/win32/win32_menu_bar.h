// The menu bar as a window at the main window's bottom edge.
#pragma once

#include <memory>

#include "hosts/win32/win32_window.h"
#include "ports/menu_bar.h"

namespace orvello {

class BarWindow;

class Win32MenuBar : public MenuBar {
 public:
  explicit Win32MenuBar(Win32Window& window);
  ~Win32MenuBar() override;

  bool create(const MenuBarContent& content) override;
  void destroy() override;
  bool exists() const override { return bar_ != nullptr; }
  int height() const override { return height_; }
  void set_button_text(int index, TextView text) override;
  void enable_button(std::uint32_t command, bool enabled) override;
  void check_button(std::uint32_t command, bool checked) override;
  void highlight_button(std::uint32_t command, bool highlighted, TextView hint) override;
  void set_menu(std::uint32_t command, const std::vector<MenuItem>& items) override;

  BarWindow* bar() const { return bar_.get(); }  // null: none stands

 private:
  void take_height();

  Win32Window& window_;
  std::shared_ptr<BarWindow> bar_;
  double wanted_height_ = 0;  // design units
  int height_ = 0;
  HWND shell_bar_ = nullptr;  // of a handheld, around ours
};

}  // namespace orvello
