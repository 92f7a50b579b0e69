#include "hosts/qt/focus_edge.h"

#include <QPainter>
#include <algorithm>

#include "draw/readable.h"
#include "hosts/qt/qt_look.h"

namespace orvello {

// Above the area, so that what scrolls below it does not take it along.
FocusEdge::FocusEdge(QWidget& area, const Density& density) : Guarded(&area), density_(density) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  hide();
}

void FocusEdge::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int line = std::max(1, density_.scaled(2));
  // On the ground that the area has, which may be another than the host's.
  const QColor base = parentWidget()->palette().color(QPalette::Base);
  const Color ground = rgb(base.red(), base.green(), base.blue());
  const QColor color = qt_color(visible_on(ground, density_.colors->accent));
  painter.fillRect(0, 0, width(), line, color);
  painter.fillRect(0, height() - line, width(), line, color);
  painter.fillRect(0, line, line, height() - 2 * line, color);
  painter.fillRect(width() - line, line, line, height() - 2 * line, color);
}

}  // namespace orvello
