// Small conversions between our values and the toolkit's.
#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>

#include "base/image.h"
#include "base/text.h"

namespace orvello {

inline QString to_qt(TextView text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}
inline Text from_qt(const QString& text) {
  return Text(reinterpret_cast<const char16_t*>(text.utf16()),
              static_cast<std::size_t>(text.size()));
}
inline QRgb to_qt(Color color) { return qRgb(red_of(color), green_of(color), blue_of(color)); }
inline QColor qt_color(Color color) { return QColor(to_qt(color)); }
inline QRect to_qt(const Rect& rect) { return {rect.x, rect.y, rect.width, rect.height}; }

// Magenta becomes transparent.
QImage to_qt(const Image& image);

}  // namespace orvello
