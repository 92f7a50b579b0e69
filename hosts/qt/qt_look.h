// How the host's own widgets look: flat, quiet, one accent.
#pragma once

#include <QFont>
#include <QPalette>

#include "hosts/qt/density.h"
#include "hosts/qt/qt_text.h"

class QScrollBar;
class QWidget;

namespace orvello {

inline constexpr int kTextSize = 11;     // design units, as are the following
inline constexpr int kTouchHeight = 26;  // 7 mm
inline constexpr int kHeadingSize = 12;
inline constexpr int kGrid = 4;
inline constexpr int kScrollBarWidth = 14;

QFont widget_font(const Density& density, double size = kTextSize, bool bold = false);

// The palette of a window and of everything that stands on it.
QPalette look_palette(const LookColors& colors);

// A picture whose outlines were drawn for a light ground, so that they are seen on a dark one.
QImage picture_on(const QImage& picture, Color ground);

// A scroll bar without buttons, wide enough for a pen.
void flatten_scroll_bar(QScrollBar& bar, const Density& density);

}  // namespace orvello
