// Menus with rows as high as a finger needs, in the form's colours.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "base/geometry.h"
#include "ports/menu_bar.h"

namespace orvello {

class Win32Window;

// Shows a menu until an item is chosen; its command, 0 for none. Its first corner, where lines
// begin, is at a point of the screen, as far as there is room.
std::uint32_t run_popup_menu(Win32Window& window, const std::vector<MenuItem>& items, POINT at);
// The same beside a place of the screen that it must not cover: above it.
std::uint32_t run_popup_menu_above(Win32Window& window, const std::vector<MenuItem>& items,
                                   const RECT& place);

}  // namespace orvello
