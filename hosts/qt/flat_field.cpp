#include "hosts/qt/flat_field.h"

#include <QPainter>

#include "hosts/qt/qt_look.h"

namespace orvello {
namespace {

QRectF inside(const QWidget& field, double line) {
  return QRectF(field.rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2);
}

}  // namespace

void paint_field_ground(QWidget& field, const Density& density) {
  const LookColors& look = *density.colors;
  QPainter painter(&field);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(qt_color(field.isEnabled() ? look.field : look.ground));
  painter.drawRoundedRect(inside(field, 1), density.scaled(2), density.scaled(2));
}

void paint_field_edge(QWidget& field, const Density& density, bool focused) {
  const LookColors& look = *density.colors;
  QPainter painter(&field);
  painter.setRenderHint(QPainter::Antialiasing);
  const double line = std::max(1, density.scaled(focused ? kFieldEdge : 1));
  const Color color = focused ? look.accent : field.isEnabled() ? look.edge : look.line;
  painter.setPen(QPen(qt_color(color), line, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter.drawRoundedRect(inside(field, line), density.scaled(2), density.scaled(2));
}

}  // namespace orvello
