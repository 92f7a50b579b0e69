#include "hosts/qt/ink_paint.h"

#include <QPainter>
#include <QPainterPath>

#include "hosts/qt/qt_text.h"

namespace orvello {

void paint_stroke(QPainter& painter, const NotesStroke& stroke, const QRectF& seen, Color color) {
  QPen pen(qt_color(color), 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  for (const InkCurve& curve : curves_of(stroke)) {
    const QPointF from = to_qt(curve.from);
    if (stroke.points.size() == 1) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(pen.color());
      painter.drawEllipse(from, curve.width / 2, curve.width / 2);
      return;
    }
    if (!to_qt(bounds_of(curve)).intersects(seen)) continue;
    QPainterPath path(from);
    path.quadTo(to_qt(curve.bend), to_qt(curve.to));
    pen.setWidthF(curve.width);
    painter.strokePath(path, pen);
  }
}

}  // namespace orvello
