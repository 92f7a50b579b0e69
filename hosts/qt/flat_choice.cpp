#include "hosts/qt/flat_choice.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "hosts/qt/direction.h"
#include "hosts/qt/qt_look.h"

namespace orvello {
namespace {

constexpr int kMark = 14;  // design units

void paint_mark(QPainter& painter, const QRectF& box, bool round) {
  const double side = box.width();
  if (round) {
    const double dot = side * 0.25;
    painter.setBrush(painter.pen().color());
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(box.adjusted(dot, dot, -dot, -dot));
    return;
  }
  paint_tick(painter, box);
}

}  // namespace

void paint_tick(QPainter& painter, const QRectF& box) {
  const double side = box.width();
  QPainterPath tick(box.topLeft() + QPointF(side * 0.22, side * 0.52));
  tick.lineTo(box.topLeft() + QPointF(side * 0.43, side * 0.73));
  tick.lineTo(box.topLeft() + QPointF(side * 0.79, side * 0.29));
  painter.strokePath(
      tick, QPen(painter.pen().color(), side * 0.13, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void paint_choice(QAbstractButton& button, const Density& density, bool round) {
  const LookColors& look = *density.colors;
  QPainter painter(&button);
  painter.setRenderHint(QPainter::Antialiasing);
  const double line = std::max(1, density.scaled(1)), side = density.scaled(kMark);
  const double begin = is_right_to_left() ? button.width() - line - side : line;
  const QRectF box(begin, (button.height() - side) / 2, side, side);
  const double corner = round ? side / 2 : density.scaled(2);
  const QColor ink = qt_color(button.isEnabled() ? look.accent : look.dim_text);
  painter.setPen(QPen(button.isChecked() || button.isDown() ? ink : qt_color(look.dim_text), line));
  painter.setBrush(qt_color(button.isDown() ? look.accent_tint : look.field));
  painter.drawRoundedRect(box, corner, corner);
  painter.setPen(ink);
  if (button.isChecked()) paint_mark(painter, box, round);
  const int left = static_cast<int>(line + side) + density.scaled(6);
  const QRect room = turned(QRect(left, 0, button.width() - left, button.height()), button.width());
  constexpr int flags = Qt::AlignVCenter | Qt::AlignLeft | Qt::TextWordWrap | Qt::TextShowMnemonic;
  painter.setFont(button.font());
  if (button.hasFocus()) {
    const int turned_flags = Qt::TextWordWrap | Qt::TextShowMnemonic |
                             (turned_alignment(Qt::AlignLeft) | Qt::AlignVCenter).toInt();
    const QRect text = button.fontMetrics().boundingRect(room, turned_flags, button.text());
    const int gap = static_cast<int>(2 * line);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(qt_color(look.accent), line));
    painter.drawRoundedRect(QRectF(text.adjusted(-gap, 0, gap, 0).intersected(button.rect()))
                                .adjusted(line / 2, line / 2, -line / 2, -line / 2),
                            gap, gap);
  }
  painter.setPen(qt_color(button.isEnabled() ? look.text : look.dim_text));
  draw_directed(painter, room, flags, button.text());
}

}  // namespace orvello
