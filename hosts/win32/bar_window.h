// The menu bar's window, at the bottom edge of the main window: drawn by itself, heard by pen and
// keys, told to a screen reader as buttons.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "hosts/win32/accessible_object.h"
#include "hosts/win32/bar_layout.h"
#include "hosts/win32/native_window.h"
#include "ports/menu_bar.h"

namespace orvello {

class Canvas;
class Win32Window;

inline bool shows_image(const MenuBarButton& button) {
  return button.kind == MenuBarButton::Kind::image ||
         button.kind == MenuBarButton::Kind::image_menu;
}
inline bool drops_menu(const MenuBarButton& button) {
  return button.kind == MenuBarButton::Kind::menu || button.kind == MenuBarButton::Kind::image_menu;
}

class BarWindow : public NativeWindow,
                  public AccessibleSource,
                  public std::enable_shared_from_this<BarWindow> {
 public:
  struct Button {
    MenuBarButton content;
    bool enabled = true, checked = false, highlighted = false;
    Text hint;   // of a highlighted one
    Rect place;  // counted from where lines begin
  };
  BarWindow(Win32Window& owner, const MenuBarContent& content);
  ~BarWindow() override;
  bool make(HWND parent, int height);  // at its bottom edge

  std::vector<Button>& buttons() { return buttons_; }
  Button* button_of(std::uint32_t command);
  void lay_out();  // and draws it anew, after anything has changed
  bool take_tab(bool backwards);
  void press_text_button(int number);              // from 0
  Rect place_on_window(std::size_t button) const;  // device pixels of this window

  AccessiblePart accessible_self() override;
  int accessible_count() override { return static_cast<int>(shown().size()); }
  AccessiblePart accessible_part(int part) override;
  int accessible_focus() override;
  void press_accessible(int part) override;

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override;

 private:
  std::vector<std::size_t> shown() const;  // all but separators
  bool pointer(UINT id, LPARAM lparam);
  bool key(WPARAM code);
  void activate(int button, bool by_key = false);
  void begin_menu_by_key();
  int button_at(Point point) const;
  void hover(int button);
  void focus_on(int button);
  bool step(bool backwards);
  Text told_name(const Button& button) const;

  void paint(HDC dc);
  void draw(Canvas& canvas, std::size_t index) const;
  void draw_image(Canvas& canvas, const Button& button, bool grey) const;
  void take_pictures();
  void tell_hints();

  Win32Window& owner_;
  std::vector<Button> buttons_;
  const Image strip_;
  Image seen_, grey_;  // the strip on the bar's ground
  int text_height_ = 0;
  int pressed_ = -1, hovered_ = -1, focused_ = -1, open_ = -1;
  bool leaving_told_ = false;
  HWND hints_ = nullptr;
  AccessibleWindow accessible_{*this};
};

}  // namespace orvello
