#include "hosts/qt/line_control.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <algorithm>

#include "hosts/qt/direction.h"
#include "hosts/qt/flat_field.h"
#include "hosts/qt/qt_look.h"

namespace orvello {
namespace {

// As much of a wrapped text as fits, with dots behind it.
QString shortened(const QString& text, const QFontMetrics& metrics, const QRect& room, int flags) {
  const auto fits = [&](const QString& candidate) {
    return metrics.boundingRect(QRect(0, 0, room.width(), 10000), flags, candidate).height() <=
           room.height();
  };
  if (fits(text)) return text;
  qsizetype least = 0, most = text.size();
  while (least < most) {
    const qsizetype middle = (least + most + 1) / 2;
    if (fits(text.left(middle) + QChar(0x2026)))
      least = middle;
    else
      most = middle - 1;
  }
  return text.left(least) + QChar(0x2026);
}

}  // namespace

LineControl::LineControl(const QString& text, QWidget* parent, const Density& density)
    : Guarded(parent), density_(density) {
  setText(text);
  setFocusPolicy(Qt::StrongFocus);
}

void LineControl::paintEvent(QPaintEvent*) {
  const LookColors& look = *density_.colors;
  const int line = std::max(1, density_.scaled(1)), side = density_.scaled(1.5 * kGrid);
  QPainter painter(this);
  if (isDown()) painter.fillRect(rect(), qt_color(look.accent_tint));
  painter.fillRect(0, height() - line, width(), line, qt_color(look.line));
  // The text stands where an edit in its place has it.
  const QRect room = rect().adjusted(side, 0, -side, -line);
  QString shown = text();
  shown.replace(QStringLiteral("&&"), QStringLiteral("&"));
  const QFontMetrics metrics(font());
  int flags = Qt::AlignLeft | Qt::AlignVCenter;
  if (room.height() >= 2 * metrics.lineSpacing()) {
    flags |= Qt::TextWordWrap;
    shown = shortened(shown, metrics, room, flags);
  } else {
    shown.replace(u'\n', u' ');
    shown = metrics.elidedText(shown, Qt::ElideRight, room.width());
  }
  painter.setFont(font());
  painter.setPen(qt_color(isEnabled() ? look.text : look.dim_text));
  draw_directed(painter, room, flags, shown);
  painter.end();
  if (hasFocus()) paint_field_edge(*this, density_, true);
}

void LineControl::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const bool held = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
  if (enter && !event->isAutoRepeat()) {
    click();
  } else if (event->key() != Qt::Key_Space && !held && !event->text().isEmpty() &&
             event->text().at(0).isPrint()) {
    click();
    type_on(event->text());
  } else {
    QAbstractButton::keyPressEvent(event);
  }
}

// What was typed belongs to the edit that has come in its place by the time that all was told.
void LineControl::type_on(const QString& text) {
  QWidget* const ground = window();
  later(ground, [ground, line = QPointer<QWidget>(this), text] {
    QWidget* const edit = ground->focusWidget();
    if (!edit || edit == line || !edit->inherits("QLineEdit")) return;
    QKeyEvent typed(QEvent::KeyPress, 0, Qt::NoModifier, text);
    QCoreApplication::sendEvent(edit, &typed);
  });
}

}  // namespace orvello
