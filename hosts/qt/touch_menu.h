// Menus with rows as high as a finger needs.
#pragma once

#include <QPoint>
#include <QSize>
#include <functional>
#include <vector>

#include "base/geometry.h"
#include "hosts/qt/density.h"
#include "ports/menu_bar.h"

class QWidget;

namespace orvello {

// Opens the menu where `place` says, on the screen, given its size; the chosen item's command, 0
// for none. `by_key` it stands on its first row.
std::uint32_t run_touch_menu(const Density& density, const std::vector<MenuItem>& items,
                             const std::function<QPoint(QSize)>& place, bool by_key = false);
// The same at a point of a widget, in device pixels, inside its window as far as it fits.
std::uint32_t run_menu_at(const QWidget& widget, Point at, const Density& density,
                          const std::vector<MenuItem>& items);

}  // namespace orvello
