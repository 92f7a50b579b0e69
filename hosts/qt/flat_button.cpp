#include "hosts/qt/flat_button.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "hosts/qt/direction.h"
#include "hosts/qt/qt_look.h"

namespace orvello {

QSize FlatButton::sizeHint() const {
  const int text = fontMetrics().size(Qt::TextShowMnemonic, this->text()).width();
  return {text + density_.scaled(4 * kGrid), density_.scaled(kTouchHeight)};
}

void FlatButton::paintEvent(QPaintEvent*) {
  const LookColors& look = *density_.colors;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool marked = (isDefault() || isChecked()) && isEnabled();
  const bool strong = marked && picture_.isNull();  // dark pictures need a light ground
  Color ground = strong ? look.accent : marked ? look.accent_tint : look.field;
  if (isDown()) ground = strong ? look.accent_down : look.accent_tint;
  const double line = std::max(1, density_.scaled(marked && !strong ? 2 : 1));
  const double round = density_.scaled(2);
  const QRectF edge = QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2);
  painter.setBrush(qt_color(ground));
  painter.setPen(QPen(qt_color(marked ? look.accent : look.line), line));
  painter.drawRoundedRect(edge, round, round);
  if (hasFocus()) {
    const double gap = 2 * line;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(qt_color(strong ? look.accent_text : look.accent), line));
    painter.drawRoundedRect(edge.adjusted(gap, gap, -gap, -gap), round / 2, round / 2);
  }
  if (!picture_.isNull()) return paint_picture(painter);
  painter.setFont(font());
  painter.setPen(qt_color(!isEnabled() ? look.dim_text : strong ? look.accent_text : look.text));
  const int side = static_cast<int>(4 * line);
  const QRect room = rect().adjusted(side, 0, -side, 0);
  draw_directed(
      painter, room, Qt::AlignCenter | Qt::TextShowMnemonic,
      fontMetrics().elidedText(text(), Qt::ElideRight, room.width(), Qt::TextShowMnemonic));
}

// The toolkit's own leaves Return to the default button, also where the keyboard stands on
// "Cancel".
void FlatButton::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && !isCheckable() && !event->isAutoRepeat())
    click();
  else
    QPushButton::keyPressEvent(event);
}

void FlatButton::set_picture(const QImage& picture) {
  picture_ = picture;
  update();
}

// In the middle, pixel for pixel; smaller where the button is.
void FlatButton::paint_picture(QPainter& painter) const {
  const int gap = std::max(1, density_.scaled(2));
  QSizeF size = QSizeF(picture_.size()) / density_.ratio;
  const QSizeF room = QSizeF(width() - 2 * gap, height() - 2 * gap);
  if (size.width() > room.width() || size.height() > room.height()) {
    size.scale(room, Qt::KeepAspectRatio);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
  }
  const double x = std::floor((width() - size.width()) / 2);
  const double y = std::floor((height() - size.height()) / 2);
  if (!isEnabled()) painter.setOpacity(0.4);
  const LookColors& look = *density_.colors;
  const bool tinted = isDown() || ((isDefault() || isChecked()) && isEnabled());
  painter.drawImage(QRectF(QPointF(x, y), size),
                    picture_on(picture_, tinted ? look.accent_tint : look.field));
}

}  // namespace orvello
