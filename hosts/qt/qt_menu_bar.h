// The menu bar as a widget at the window's bottom edge.
#pragma once

#include <vector>

#include "hosts/qt/qt_main_window.h"
#include "ports/menu_bar.h"

namespace orvello {

class BarButton;

class QtMenuBar : public MenuBar {
 public:
  explicit QtMenuBar(QtMainWindow& window);
  ~QtMenuBar() override { destroy(); }

  bool create(const MenuBarContent& content) override;
  void destroy() override;
  bool exists() const override { return bar_ != nullptr; }
  int height() const override { return height_; }
  void set_button_text(int index, TextView text) override;
  void enable_button(std::uint32_t command, bool enabled) override;
  void check_button(std::uint32_t command, bool checked) override;
  void highlight_button(std::uint32_t command, bool highlighted, TextView hint) override;
  void set_menu(std::uint32_t command, const std::vector<MenuItem>& items) override;

 private:
  class Bar;
  BarButton* button_of(std::uint32_t command) const;
  void take_height();

  QtMainWindow& window_;
  Density density_;           // it follows the desktop while it stands
  double wanted_height_ = 0;  // design units
  Bar* bar_ = nullptr;
  std::vector<BarButton*> buttons_;  // by position, null for a separator
  int height_ = 0;
};

}  // namespace orvello
