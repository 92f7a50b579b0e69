// Strokes of a notes page with the toolkit's painter, in pixels at 96 dpi.
#pragma once

#include <QPointF>
#include <QRectF>

#include "hosts/shared/notes_ink.h"

class QPainter;

namespace orvello {

inline PagePoint page_point(QPointF point) { return {point.x(), point.y()}; }
inline QPointF to_qt(PagePoint point) { return {point.x, point.y}; }
inline QRectF to_qt(const PageBox& box) {
  return {QPointF(box.left, box.top), QPointF(box.right, box.bottom)};
}

// As far as it is seen; in a colour that can be seen where the stroke's own could not.
void paint_stroke(QPainter& painter, const NotesStroke& stroke, const QRectF& seen, Color color);

}  // namespace orvello
