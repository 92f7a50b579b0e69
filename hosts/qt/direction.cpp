#include "hosts/qt/direction.h"

#include <QGuiApplication>
#include <QPainter>
#include <QStyle>

namespace orvello {

void set_right_to_left(bool right_to_left) {
  QGuiApplication::setLayoutDirection(right_to_left ? Qt::RightToLeft : Qt::LeftToRight);
}

bool is_right_to_left() { return QGuiApplication::isRightToLeft(); }

QRect turned(const QRect& place, int width) {
  if (!is_right_to_left()) return place;
  return {width - place.x() - place.width(), place.y(), place.width(), place.height()};
}

int turned_key(int key) {
  if (!is_right_to_left()) return key;
  return key == Qt::Key_Left ? Qt::Key_Right : key == Qt::Key_Right ? Qt::Key_Left : key;
}

Qt::Alignment turned_alignment(Qt::Alignment alignment) {
  return QStyle::visualAlignment(QGuiApplication::layoutDirection(), alignment) | Qt::AlignAbsolute;
}

// Unseen marks at both ends keep the signs there on their side.
QString kept_direction(const QString& text) {
  if (!is_right_to_left() || text.isRightToLeft()) return text;
  return QChar(0x200E) + text + QChar(0x200E);
}

void draw_directed(QPainter& painter, const QRect& room, int flags, QString text) {
  const auto across = turned_alignment(Qt::Alignment(flags & Qt::AlignHorizontal_Mask));
  painter.setLayoutDirection(Qt::LayoutDirectionAuto);
  // A blank behind its last letter would keep it from the edge where lines begin.
  if (is_right_to_left())
    while (text.endsWith(u' ')) text.chop(1);
  painter.drawText(room, int((flags & ~Qt::AlignHorizontal_Mask) | across.toInt()), text);
}

}  // namespace orvello
