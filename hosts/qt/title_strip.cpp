#include "hosts/qt/title_strip.h"

#include <QPainter>
#include <QToolButton>
#include <algorithm>

#include "hosts/qt/direction.h"
#include "hosts/qt/qt_look.h"

namespace orvello {
namespace {

constexpr int kCrossSize = 18;  // design units

}  // namespace

void paint_title(QPainter& painter, const QRect& strip, const Density& density,
                 const QString& title, int right) {
  const LookColors& look = *density.colors;
  const int line = std::max(1, density.scaled(1)), side = density.scaled(2 * kGrid);
  painter.fillRect(strip, qt_color(look.field));
  painter.fillRect(strip.left(), strip.bottom() + 1 - line, strip.width(), line,
                   qt_color(look.accent));
  painter.setFont(widget_font(density, kHeadingSize, true));
  painter.setPen(qt_color(look.accent));
  if (right < 0) right = strip.height();  // the close button alone
  const QRect inside = QRect(QPoint(0, 0), strip.size()).adjusted(side, 0, -right, -line);
  const QRect room = turned(inside, strip.width()).translated(strip.topLeft());
  draw_directed(painter, room, Qt::AlignVCenter | Qt::AlignLeft,
                painter.fontMetrics().elidedText(title, Qt::ElideRight, room.width()));
}

QAbstractButton* make_close_button(QWidget& form, const Density& density) {
  auto* button = new QToolButton(&form);
  button->setText(QStringLiteral("\u00D7"));
  button->setFont(widget_font(density, kCrossSize));
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::NoFocus);
  button->setAccessibleName(QStringLiteral("Close"));
  button->setObjectName(QStringLiteral("close"));
  return button;
}

}  // namespace orvello
