// What the shell of a handheld does and a desktop's does not: its menu bar and soft keys, dialogs
// that fill the screen, the input panel, the ink libraries. Entry points are looked up by name
// while the program runs; where they are missing, the desktop's way is taken by whoever asked.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "base/geometry.h"

namespace orvello {

class Handheld {
 public:
  // The address of an entry point; null: there is none.
  using LookUp = std::function<void*(const wchar_t* library, const char* name)>;
  struct Version {
    int major = 0, minor = 0;  // 0.0 on a desktop
  };

  Handheld();  // of this system
  Handheld(LookUp look_up, Version version) : look_up_(std::move(look_up)), version_(version) {}

  bool is_here() const { return version_.major > 0; }
  Version version() const { return version_; }

  // The shell's bar at the screen's bottom edge, empty, for our buttons; null: there is none. Its
  // soft keys then come as keys of the window. It goes with DestroyWindow.
  HWND create_menu_bar(HWND window) const;
  // The number of the soft key that a key is, from 0; -1: none.
  int soft_key(WPARAM key) const;
  // A dialog that has just been made fills the screen; false: it keeps its size.
  bool fill_screen(HWND dialog) const;
  // Of the window's WM_ACTIVATE and WM_SETTINGCHANGE.
  void tell_activation(HWND window, WPARAM wparam, LPARAM lparam);
  void tell_setting_change(HWND window, WPARAM wparam, LPARAM lparam);

  // The input panel's place on the screen when it is up; nothing: there is none.
  std::optional<Rect> panel_place() const;
  std::optional<Rect> visible_desktop() const;  // what the panel leaves, when it is up
  bool raise_panel(HWND window) const;          // false: there is none
  void hide_panel(HWND window) const;
  // What an ink library needs once it is loaded.
  void start_ink(HMODULE library) const;

 private:
  // As the shell lays it out: its state from one activation to the next.
  struct Activation {
    DWORD size = sizeof(Activation);
    HWND last_focus = nullptr;
    UINT flags = 0;
  };
  template <typename Call>
  Call entry(const wchar_t* library, const char* name) const;
  struct PanelInfo;
  bool ask_panel(PanelInfo& info) const;

  LookUp look_up_;
  Version version_;
  Activation activation_;
};

}  // namespace orvello
