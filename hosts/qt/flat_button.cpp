#include "hosts/qt/flat_button.h"

#include <QPainter>

#include "hosts/qt/qt_look.h"

namespace orvello {

QSize FlatButton::sizeHint() const {
  const int text = fontMetrics().size(Qt::TextShowMnemonic, this->text()).width();
  return {text + density_.scaled(4 * kGrid), density_.scaled(kTouchHeight)};
}

void FlatButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool strong = isDefault() && isEnabled();
  QColor ground = strong ? QColor(kAccent) : QColor(Qt::white);
  if (isDown()) ground = strong ? QColor(kAccent).lighter(140) : QColor(kAccentTint);
  const double line = std::max(1, density_.scaled(1)), round = density_.scaled(2);
  const QRectF edge = QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2);
  painter.setBrush(ground);
  painter.setPen(QPen(QColor(strong ? kAccent : kHairline), line));
  painter.drawRoundedRect(edge, round, round);
  if (hasFocus()) {
    const double gap = 2 * line;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(strong ? QColor(Qt::white) : QColor(kAccent), line));
    painter.drawRoundedRect(edge.adjusted(gap, gap, -gap, -gap), round / 2, round / 2);
  }
  painter.setFont(font());
  painter.setPen(!isEnabled() ? QColor(kFaintInk) : strong ? QColor(Qt::white) : QColor(kInk));
  painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

}  // namespace orvello
