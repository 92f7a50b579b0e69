#include "hosts/qt/bar_button.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <algorithm>

#include "hosts/qt/direction.h"
#include "hosts/qt/qt_look.h"
#include "hosts/qt/qt_text.h"
#include "hosts/qt/touch_menu.h"

namespace orvello {

using Kind = MenuBarButton::Kind;

BarButton::BarButton(QWidget* parent, const Density& density, const MenuBarButton& button,
                     QImage image)
    : Guarded(parent), density_(density), content_(button), image_(std::move(image)) {
  // A tap leaves the keyboard with the calendar.
  setFocusPolicy(Qt::TabFocus);
  setText(to_qt(button.text));
  if (shows_image()) {
    setToolTip(kept_direction(to_qt(button.hint)));
    setAccessibleName(to_qt(button.hint));
  } else {
    setAccessibleName(to_qt(button.text));
  }
  setObjectName(QStringLiteral("bar%1").arg(button.command));
}

bool BarButton::shows_image() const {
  return content_.kind == Kind::image || content_.kind == Kind::image_menu;
}
bool BarButton::has_menu() const {
  return content_.kind == Kind::menu || content_.kind == Kind::image_menu;
}

void BarButton::set_caption(const QString& text) {
  setText(text);
  // An image button keeps its text unseen and goes on being called by its hint.
  if (!shows_image()) setAccessibleName(text);
}

void BarButton::highlight(bool highlighted, const QString& hint) {
  highlighted_ = highlighted;
  const QString told = highlighted ? hint : to_qt(content_.hint);
  setToolTip(kept_direction(told));
  setAccessibleName(told);
  update();
}

int BarButton::text_width() const { return fontMetrics().horizontalAdvance(text()); }

std::uint32_t BarButton::run_menu() {
  const QPointer<BarButton> alive(this);
  setDown(true);
  // Above the bar, and inside the window as far as it fits.
  const auto place = [this](QSize size) {
    const int left = mapTo(window(), QPoint(0, 0)).x();
    const int begin = turned(QRect(0, 0, size.width(), 0), width()).x();
    const int shift = std::max(-left, std::min(begin, window()->width() - left - size.width()));
    return mapToGlobal(QPoint(shift, -size.height()));
  };
  const std::uint32_t chosen = run_touch_menu(density_, content_.menu, place, hasFocus());
  if (alive) setDown(false);
  return chosen;
}

void BarButton::paintEvent(QPaintEvent*) {
  const LookColors& look = *density_.colors;
  QPainter painter(this);
  const bool marked = isCheckable() && isChecked();
  // The whole bar is off below what is modal; grey is only what the program has switched off.
  const bool grey = !isEnabledTo(parentWidget());
  const bool tinted = isDown() || marked || highlighted_;
  if (tinted || (hovered_ && isEnabled()))
    painter.fillRect(rect(), qt_color(tinted ? look.accent_tint : look.hover));
  if (highlighted_) {
    painter.setPen(QPen(qt_color(look.accent), std::max(1, density_.scaled(1))));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }
  if (marked)
    painter.fillRect(0, 0, width(), std::max(2, density_.scaled(2)), qt_color(look.accent));
  if (grey) painter.setOpacity(0.4);
  if (shows_image() && !image_.isNull())
    paint_image(painter);
  else
    paint_caption(painter);
  painter.setOpacity(1);
  if (hasFocus()) {
    const int edge = density_.scaled(2);
    painter.setPen(QPen(qt_color(look.accent), std::max(1, density_.scaled(1))));
    painter.drawRect(rect().adjusted(edge, edge, -edge - 1, -edge - 1));
  }
}

void BarButton::paint_caption(QPainter& painter) {
  painter.setFont(font());
  painter.setPen(qt_color(density_.colors->text));
  draw_directed(painter, rect(), Qt::AlignCenter, text());
}

int BarButton::image_side() const { return static_cast<int>(image_.width() / density_.ratio); }

// Pixel for pixel, at a device pixel's edge. A highlighted button's name stands beside it, once
// there is room for some of it.
void BarButton::paint_image(QPainter& painter) {
  const double side = image_.width() / density_.ratio;
  const int edge = density_.scaled(kGrid);
  const int room = width() - image_side() - 3 * edge;
  const bool named = highlighted_ && room >= 2 * fontMetrics().averageCharWidth();
  if (named) {
    const QRect text(2 * edge + image_side(), 0, room, height());
    painter.setFont(font());
    painter.setPen(qt_color(density_.colors->text));
    const QString shown = fontMetrics().elidedText(this->text(), Qt::ElideRight, room);
    draw_directed(painter, turned(text, width()), Qt::AlignLeft | Qt::AlignVCenter, shown);
  }
  const double left =
      named ? turned(QRect(edge, 0, image_side(), 0), width()).x() : (width() - side) / 2;
  const double x = std::floor(left * density_.ratio) / density_.ratio;
  const double y = std::floor((height() - side) / 2 * density_.ratio) / density_.ratio;
  painter.drawImage(QRectF(x, y, side, image_.height() / density_.ratio),
                    picture_on(image_, density_.colors->ground), QRectF(image_.rect()));
}

void BarButton::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool opens = has_menu() && (key == Qt::Key_Up || key == Qt::Key_Down);
  if (key == Qt::Key_Return || key == Qt::Key_Enter || opens)
    click();
  else
    QAbstractButton::keyPressEvent(event);
}

void BarButton::enterEvent(QEnterEvent*) {
  hovered_ = true;
  update();
}

void BarButton::leaveEvent(QEvent*) {
  hovered_ = false;
  update();
}

}  // namespace orvello
