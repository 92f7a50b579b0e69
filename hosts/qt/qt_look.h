// How the host's own widgets look: flat, quiet, one accent.
#pragma once

#include <QColor>
#include <QFont>

#include "hosts/qt/density.h"

class QScrollBar;
class QWidget;

namespace orvello {

inline constexpr QRgb kAccent = 0xFF0909A5;
inline constexpr QRgb kAccentTint = 0xFFE4E6F7;
inline constexpr QRgb kHairline = 0xFFC9CCD6;
inline constexpr QRgb kBarGround = 0xFFF6F6F9;
inline constexpr QRgb kInk = 0xFF1B1C26;
inline constexpr QRgb kDimInk = 0xFF6A6C7A;
inline constexpr QRgb kFaintInk = 0xFF9A9CA8;

inline constexpr int kTextSize = 11;     // design units, as are the following
inline constexpr int kTouchHeight = 26;  // 7 mm
inline constexpr int kHeadingSize = 12;
inline constexpr int kGrid = 4;
inline constexpr int kScrollBarWidth = 14;

QFont widget_font(const Density& density, double size = kTextSize, bool bold = false);

// The palette of everything that stands on a form.
void apply_form_look(QWidget& form, const Density& density);

// A scroll bar without buttons, wide enough for a pen.
void flatten_scroll_bar(QScrollBar& bar, const Density& density);

}  // namespace orvello
