#include "hosts/qt/drop_panel.h"

#include <QFocusEvent>
#include <QPainter>
#include <algorithm>

#include "hosts/qt/direction.h"
#include "hosts/qt/modal_layer.h"
#include "hosts/qt/qt_look.h"

namespace orvello {
namespace {

// Something modal has to stay above it, and takes it along when it goes.
QWidget* ground_of(QWidget& field) {
  for (QWidget* above = &field; above; above = above->parentWidget())
    if (dynamic_cast<ModalLayer*>(above)) return above;
  return field.window();
}

}  // namespace

DropPanel::DropPanel(QWidget& field, const Density& density, QWidget* content)
    : Guarded(ground_of(field)), field_(field), density_(density), content_(content) {
  setObjectName(QStringLiteral("drop"));
  setAttribute(Qt::WA_NoMousePropagation);
  content->setParent(this);
  content->setFocusPolicy(Qt::NoFocus);
  for (QWidget* part : content->findChildren<QWidget*>()) part->setFocusPolicy(Qt::NoFocus);
  // A press in it leaves the focus where it is, rather than give it to what is below.
  setFocusPolicy(Qt::ClickFocus);
  setFocusProxy(&field);
  QWidget* focused = field.focusProxy() ? field.focusProxy() : &field;
  focused->installEventFilter(this);
  parentWidget()->installEventFilter(this);
}

void DropPanel::open(QSize wanted, int least_height) {
  setGeometry(parentWidget()->rect());
  place(wanted, least_height);
  show();
  raise();
}

void DropPanel::place(QSize wanted, int least_height) {
  const int edge = std::max(1, density_.scaled(1));
  const QRect field(field_.mapTo(parentWidget(), QPoint(0, 0)), field_.size());
  const int below = height() - field.bottom() - 1, above = field.top();
  const int whole = wanted.height() + 2 * edge, least = least_height + 2 * edge;
  const bool downwards = whole <= below || below >= above;
  // Where neither side has room for the least of it, it covers the field.
  const int tall = std::min({whole, std::max(downwards ? below : above, least), height()});
  const int wide = std::min(std::max(field.width(), wanted.width() + 2 * edge), width());
  const int y = downwards ? field.bottom() + 1 : field.top() - tall;
  const int x = is_right_to_left() ? field.right() + 1 - wide : field.left();
  const QRect box(std::clamp(x, 0, width() - wide), std::clamp(y, 0, height() - tall), wide, tall);
  content_->setGeometry(box.adjusted(edge, edge, -edge, -edge));
}

void DropPanel::close_soon() {
  if (isHidden()) return;
  hide();
  deleteLater();
  if (closed) closed();
}

void DropPanel::paintEvent(QPaintEvent*) {
  const int edge = std::max(1, density_.scaled(1));
  QPainter painter(this);
  const QRect box = content_->geometry().adjusted(-edge, -edge, edge, edge);
  painter.fillRect(box.translated(2 * edge, 2 * edge), QColor(20, 22, 40, 50));
  painter.fillRect(box, qt_color(density_.colors->accent));
}

void DropPanel::mousePressEvent(QMouseEvent*) { close_soon(); }

bool DropPanel::take_event(QEvent* event) {
  // A pen beside it closes it, too, and does nothing else.
  if (event->type() == QEvent::TabletPress || event->type() == QEvent::TouchBegin) {
    close_soon();
    return true;
  }
  return QWidget::event(event);
}

bool DropPanel::filter_event(QObject* object, QEvent* event) {
  if (object == parentWidget()) {
    if (event->type() == QEvent::Resize) close_soon();
    return false;
  }
  if (event->type() == QEvent::Hide) close_soon();
  if (event->type() == QEvent::FocusOut) {
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) close_soon();
  }
  return false;
}

}  // namespace orvello
