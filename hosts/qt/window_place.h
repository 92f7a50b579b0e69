// Where something in a widget stands in the main window.
#pragma once

#include "hosts/qt/density.h"

class QWidget;

namespace orvello {

Rect place_in_window(const QWidget& widget, const QRect& inside, const Density& density);

}  // namespace orvello
