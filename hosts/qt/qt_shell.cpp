#include "hosts/qt/qt_shell.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "app/messages.h"
#include "hosts/qt/hover_text.h"
#include "hosts/qt/qt_keys.h"
#include "hosts/qt/qt_look.h"

namespace orvello {
namespace {

constexpr int kResizePauseMilliseconds = 60;
constexpr int kNotch = 120;

}  // namespace

ContentArea::ContentArea(QWidget* parent, const Density& density, ShellEvents& events)
    : QWidget(parent), density_(density), events_(events) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_AcceptTouchEvents);
  setAttribute(Qt::WA_InputMethodEnabled, false);
  setObjectName(QStringLiteral("content"));
}

bool ContentArea::event(QEvent* event) {
  const QtPointer::Step step = pointer_.take(*event);
  if (!step.taken) return QWidget::event(event);
  event->accept();  // also keeps the toolkit from making mouse events of touches
  send_pointer(step);
  return true;
}

bool ContentArea::send_pointer(const QtPointer::Step& step) {
  Message message;
  message.wparam = step.change == QtPointer::Change::up ? 0 : 1;  // the button is held
  message.point = density_.device(step.place);
  switch (step.change) {
    case QtPointer::Change::none:
      return false;
    case QtPointer::Change::down:
      setFocus(Qt::MouseFocusReason);
      message.id = kMessageButtonDown;
      break;
    case QtPointer::Change::move:
      message.id = kMessageMouseMove;
      break;
    case QtPointer::Change::up:
      message.id = kMessageButtonUp;
      break;
  }
  return events_.send(message);
}

void ContentArea::paintEvent(QPaintEvent*) {
  QPainter(this).fillRect(rect(), Qt::white);
  events_.send({kMessagePaint, 0, {}, 0});
}

bool ContentArea::send_key(const QKeyEvent& event, std::uint32_t id) {
  const std::uint32_t key = virtual_key(event);
  return key != 0 && events_.send({id, key, {}, 0});
}

void ContentArea::keyPressEvent(QKeyEvent* event) {
  if (!send_key(*event, kMessageKeyDown)) QWidget::keyPressEvent(event);
}

void ContentArea::keyReleaseEvent(QKeyEvent* event) {
  // A held key repeats its press alone.
  if (event->isAutoRepeat()) return;
  if (!send_key(*event, kMessageKeyUp)) QWidget::keyReleaseEvent(event);
}

void ContentArea::wheelEvent(QWheelEvent* event) {
  const int turned = event->angleDelta().y();
  // What is left of a turn in the other direction is dropped, or its first notch would be lost.
  if ((turned > 0) != (wheel_rest_ > 0)) wheel_rest_ = 0;
  wheel_rest_ += turned;
  const int notches = wheel_rest_ / kNotch;
  wheel_rest_ %= kNotch;
  event->accept();
  if (notches) events_.send({kMessageMouseWheel, 0, density_.device(event->position()), notches});
}

void ContentArea::tell_accessible_change() {}

Shell::Shell(const Density& density, ShellEvents& events)
    : density_(density), events_(events), content_(new ContentArea(this, density, events)) {
  setObjectName(QStringLiteral("shell"));
  setAttribute(Qt::WA_OpaquePaintEvent);
  resize_pause_.setSingleShot(true);
  resize_pause_.setInterval(kResizePauseMilliseconds);
  QObject::connect(&resize_pause_, &QTimer::timeout, this, [this] { events_.resized(); });
}

void Shell::set_bar(QWidget* bar, int device_height) {
  bar_ = bar;
  bar_height_ = bar ? device_height : 0;
  lay_out();
  if (bar_) bar_->show();
  if (cover_) cover_->raise();
}

void Shell::set_cover(QWidget* cover) {
  cover_ = cover;
  lay_out();
}

void Shell::add_sheet(QWidget* sheet) {
  sheet->setParent(content_);
  sheet->setGeometry(content_->rect());
}

void Shell::place_content(const Rect& place) {
  const QRect inside = QRect(0, 0, width(), height() - density_.logical(bar_height_));
  content_->setGeometry(density_.logical(place).intersected(inside));
  for (QObject* child : content_->children())
    if (auto* sheet = qobject_cast<QWidget*>(child)) sheet->setGeometry(content_->rect());
  update();
}

void Shell::show_label(const HoverLabel& label) {
  if (!label_) label_ = new HoverText(this, density_);
  label_->set_label(label);
  label_->setGeometry(density_.logical(label.place).translated(content_->pos()));
  label_->raise();
  if (cover_) cover_->raise();
  label_->show();
}

void Shell::hide_label() {
  if (label_) label_->hide();
}

void Shell::lay_out() {
  const int bar = bar_ ? density_.logical(bar_height_) : 0;
  if (bar_) bar_->setGeometry(0, height() - bar, width(), bar);
  if (cover_) cover_->setGeometry(rect());
  place_content({0, 0, density_.device(width()), density_.device(height() - bar)});
}

void Shell::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  lay_out();
  if (isVisible()) resize_pause_.start();
}

void Shell::closeEvent(QCloseEvent* event) {
  event->ignore();  // the program decides
  events_.close_wanted();
}

void Shell::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::ActivationChange)
    events_.send({kMessageActivate, isActiveWindow() ? 1u : 0u, {}, 0});
}

void Shell::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), Qt::white); }

}  // namespace orvello
