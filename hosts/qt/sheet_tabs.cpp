#include "hosts/qt/sheet_tabs.h"

#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/qt_look.h"

namespace orvello {

SheetTabs::SheetTabs(QWidget* parent, const Density& density) : Guarded(parent), density_(density) {
  setObjectName(QStringLiteral("tabs"));
  setDrawBase(false);
  setExpanding(false);
  setElideMode(Qt::ElideNone);
  setUsesScrollButtons(false);
  // A screen reader shows a tab without asking.
  on_signal(this, &QTabBar::currentChanged, this, [this](int index) {
    if (index == shown_) return;
    show_tab(shown_);
    if (wanted) wanted(index);
  });
}

void SheetTabs::show_tab(int index) {
  shown_ = index;
  const QSignalBlocker silence(this);
  setCurrentIndex(index);
}

void SheetTabs::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const int index = tabAt(event->position().toPoint());
  if (index >= 0 && index != shown_ && wanted) wanted(index);
}

void SheetTabs::keyPressEvent(QKeyEvent* event) {
  const int key = turned_key(event->key());
  const int by = key == Qt::Key_Right ? 1 : key == Qt::Key_Left ? -1 : 0;
  if (by == 0) return event->ignore();
  const int index = shown_ + by;
  if (index >= 0 && index < count() && wanted) wanted(index);
}

// It moves the tabs, and shows no other page.
void SheetTabs::wheelEvent(QWheelEvent* event) { event->ignore(); }

QSize SheetTabs::tabSizeHint(int index) const {
  const QFontMetrics metrics(widget_font(density_, kTextSize, true));
  const int text = metrics.horizontalAdvance(tabText(index)) + density_.scaled(4 * kGrid);
  return {std::max(density_.scaled(44), text), density_.scaled(kTouchHeight + 2)};
}

void SheetTabs::paintEvent(QPaintEvent*) {
  const LookColors& look = *density_.colors;
  QPainter painter(this);
  const int line = std::max(1, density_.scaled(1)), thick = std::max(2, density_.scaled(3));
  painter.fillRect(rect(), qt_color(look.ground));
  painter.fillRect(0, height() - line, width(), line, qt_color(look.line));
  for (int i = 0; i < count(); ++i) {
    const QRect tab = tabRect(i);
    const bool shown = i == shown_;
    if (shown) {
      painter.fillRect(tab, qt_color(look.field));
      painter.fillRect(tab.left(), tab.bottom() + 1 - thick, tab.width(), thick,
                       qt_color(look.accent));
    }
    painter.setFont(widget_font(density_, kTextSize, shown));
    painter.setPen(qt_color(shown ? look.accent : look.text));
    draw_directed(painter, tab, Qt::AlignCenter | Qt::TextSingleLine, tabText(i));
    if (!shown || !hasFocus()) continue;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(qt_color(look.accent), line));
    painter.drawRect(tab.adjusted(2 * line, 2 * line, -3 * line, -2 * line - thick));
  }
}

}  // namespace orvello
