// Menus with rows as high as a finger needs.
#pragma once

#include <QPoint>
#include <QSize>
#include <functional>
#include <vector>

#include "hosts/qt/density.h"
#include "ports/menu_bar.h"

namespace orvello {

// Opens the menu where `place` says, on the screen, given its size; the chosen item's command, 0
// for none.
std::uint32_t run_touch_menu(const Density& density, const std::vector<MenuItem>& items,
                             const std::function<QPoint(QSize)>& place);

}  // namespace orvello
