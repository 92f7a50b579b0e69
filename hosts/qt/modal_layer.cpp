#include "hosts/qt/modal_layer.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

#include "hosts/qt/qt_look.h"

namespace orvello {
namespace {

QWidget* parent_for(QtMainWindow& window) {
  // On the window it could not be reached while a modal window of its own stands.
  if (QWidget* standing = QApplication::activeModalWidget()) return standing;
  Shell* shell = window.shell();
  // Also what belongs to nobody goes on the window when that is shown: on a small screen it could
  // stand nowhere else.
  return shell && shell->isVisible() ? shell : nullptr;
}

ModalLayer* layer_over(const QWidget& widget) {
  const auto* shell = dynamic_cast<const Shell*>(widget.window());
  return shell ? dynamic_cast<ModalLayer*>(shell->cover_over(widget)) : nullptr;
}

}  // namespace

bool is_modal(const QWidget& widget) {
  for (const QWidget* above = &widget; above; above = above->parentWidget())
    if (dynamic_cast<const ModalLayer*>(above)) return true;
  return false;
}

bool is_covered(const QWidget& widget) { return layer_over(widget) != nullptr; }

void give_focus(QWidget& widget) {
  if (auto* shell = dynamic_cast<Shell*>(widget.window()))
    shell->give_focus(widget);
  else
    widget.setFocus(Qt::OtherFocusReason);
}

void pass_release_on(const QWidget& widget, QPointF place) {
  const ModalLayer* layer = layer_over(widget);
  if (layer && layer->released) layer->released(widget.mapToGlobal(place));
}

ModalLayer::ModalLayer(QtMainWindow& window) : Guarded(parent_for(window)), window_(window) {
  setFocusPolicy(Qt::StrongFocus);
  setObjectName(QStringLiteral("modal"));
  if (dynamic_cast<Shell*>(parentWidget())) {
    focus_before_ = window.shell()->focusWidget();
  } else {
    setPalette(look_palette(*window.density().colors));
    setWindowFlags(Qt::Dialog);
    setWindowModality(Qt::ApplicationModal);
  }
}

void ModalLayer::uncover() {
  qApp->removeEventFilter(this);
  hide();
  if (covers_window() && window_.shell()) window_.shell()->drop_cover(this);
}

void ModalLayer::leave() {
  hide();
  shown = close_wanted = accept_wanted = pressed_beside = nullptr;
  released = nullptr;
  deleteLater();
  uncover();
}

void ModalLayer::prepare(QWidget& sheet, QSize own_window) {
  sheet_ = &sheet;
  if (covers_window())
    setGeometry(window_.shell()->rect());
  else
    resize(own_window);
  place();
}

void ModalLayer::run(QWidget& sheet, QSize own_window) {
  if (ended_) return;
  prepare(sheet, own_window);
  const QPointer<ModalLayer> alive(this);
  window_.let_pointer_go();
  if (covers_window()) {
    window_.shell()->push_cover(this, focus_before_, lets_presses_through);
    if (lets_presses_through) qApp->installEventFilter(this);
  }
  sheet.show();
  show();
  if (shown) shown();
  if (!alive) return;
  const QWidget* focus = window()->focusWidget();
  if (!focus || !isAncestorOf(focus)) focusNextPrevChild(true);
  QEventLoop loop;
  loop_ = &loop;
  if (!ended_) loop.exec();
  if (!alive) return;
  loop_ = nullptr;
  uncover();
}

void ModalLayer::end() {
  ended_ = true;
  // A menu that the press opened runs a loop inside of this one's.
  if (lets_presses_through) hide();
  if (loop_) loop_->quit();
}

void ModalLayer::place() {
  if (!sheet_ || !place_sheet) return;
  sheet_->setGeometry(place_sheet(size()));
  if (!lets_presses_through) return;
  const QRegion shape = sheet_->mask().isEmpty() ? QRegion(sheet_->rect()) : sheet_->mask();
  setMask(shape.translated(sheet_->pos()));
}

// Presses on what lies below are on their way there.
bool ModalLayer::filter_event(QObject* object, QEvent* event) {
  const QEvent::Type type = event->type();
  const bool press = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick ||
                     type == QEvent::TabletPress || type == QEvent::TouchBegin ||
                     type == QEvent::Wheel;
  const auto* widget = press ? qobject_cast<QWidget*>(object) : nullptr;
  const bool beside = widget && isVisible() && widget->window() == window() && widget != this &&
                      widget != window() && !isAncestorOf(widget);
  if (beside && pressed_beside) pressed_beside();
  return false;
}

void ModalLayer::resizeEvent(QResizeEvent*) { place(); }

void ModalLayer::paintEvent(QPaintEvent*) {
  if (!covers_window() || pressed_beside) return;
  QPainter(this).fillRect(rect(), QColor(20, 22, 40, 90));
}

void ModalLayer::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (event->key() == Qt::Key_Escape && close_wanted)
    close_wanted();
  else if (enter && accept_wanted)
    accept_wanted();
  event->accept();  // nothing reaches the window below
}

void ModalLayer::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (pressed_beside) pressed_beside();
}

void ModalLayer::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (close_wanted) close_wanted();
}

// The focus goes round inside the sheet.
bool ModalLayer::focusNextPrevChild(bool next) {
  QWidget* focus = window()->focusWidget();
  QWidget* start = focus && isAncestorOf(focus) ? focus : this;
  QWidget* candidate = start;
  do {
    candidate = next ? candidate->nextInFocusChain() : candidate->previousInFocusChain();
    if (candidate != this && isAncestorOf(candidate) && candidate->isEnabled() &&
        candidate->isVisibleTo(this) && (candidate->focusPolicy() & Qt::TabFocus)) {
      candidate->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
      return true;
    }
  } while (candidate != start);
  return true;
}

}  // namespace orvello
