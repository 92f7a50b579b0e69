// The menu bar at the window's bottom edge: text buttons, image buttons and drop-down menus.
// User-interface thread. A choice reaches the main window's handler as the command message.
#pragma once

#include <cstdint>
#include <vector>

#include "base/image.h"
#include "base/text.h"

namespace orvello {

struct MenuItem {
  std::uint32_t command = 0;  // 0: a separator
  Text text;
  bool enabled = true;
  bool checked = false;
};

struct MenuBarButton {
  enum class Kind { text, menu, separator, image, image_menu };
  Kind kind = Kind::text;
  std::uint32_t command = 0;
  Text text;  // shown on text and menu buttons; an image button shows its image alone
  int image = -1;
  std::vector<MenuItem> menu;
  Text hint;  // tool tip and accessible name of an image button
};

struct MenuBarContent {
  std::vector<MenuBarButton> buttons;
  Image strip;     // images side by side, square
  int height = 0;  // pixels
};

class MenuBar {
 public:
  virtual ~MenuBar() = default;
  // False: none could be made, or one stands already.
  virtual bool create(const MenuBarContent& content) = 0;
  virtual void destroy() = 0;
  virtual bool exists() const = 0;
  virtual int height() const = 0;  // 0 without a bar
  // By position from 0, separators counted. An image button keeps the text unseen.
  virtual void set_button_text(int index, TextView text) = 0;
  virtual void enable_button(std::uint32_t command, bool enabled) = 0;
  virtual void check_button(std::uint32_t command, bool checked) = 0;
  // An image button that stands out, since what it is for is on; `hint` takes the place of its own.
  virtual void highlight_button(std::uint32_t command, bool highlighted, TextView hint) {
    static_cast<void>(command), static_cast<void>(highlighted), static_cast<void>(hint);
  }
  // Replaces the menu under a drop-down button.
  virtual void set_menu(std::uint32_t command, const std::vector<MenuItem>& items) = 0;
};

}  // namespace orvello
