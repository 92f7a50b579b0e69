// The menu bar and the menus as data.
#pragma once

#include "ports/menu_bar.h"
#include "resources/strings.h"

namespace orvello {

// Menu bar 103. The profile menu holds "All" alone until the profiles are listed. `strip` is the
// image strip for the screen's density; the bar is `height` pixels high.
inline constexpr int kProfileButton = 7;  // its place in the bar
MenuBarContent main_menu_bar(Language language, Image strip, int height);

// What decides which commands of the bar's menu of options can be chosen.
struct OptionsMenuState {
  bool can_undo = false;
  bool can_redo = false;
};
std::vector<MenuItem> options_menu(Language language, const OptionsMenuState& state);

// What decides which commands of the day's menu can be chosen.
struct DayMenuState {
  bool on_appointment = false;  // its row was pressed
  bool has_source = false;      // something was cut or copied
};
// What decides which commands a day of a grid offers.
struct GridMenuState {
  bool has_source = false;
  bool open_day = true;           // from a grid
  bool other_than_today = false;  // today is not on the page
};
std::vector<MenuItem> grid_menu(Language language, const GridMenuState& state);

// Menu 111, for the Day view's list.
std::vector<MenuItem> day_menu(Language language, const DayMenuState& state);

}  // namespace orvello
