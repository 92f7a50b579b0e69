#include "hosts/qt/qt_shell.h"

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QFile>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QUrl>
#include <algorithm>

#include "draw/mirrored.h"
#include "hosts/qt/callbacks.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/hover_text.h"
#include "hosts/qt/modal_layer.h"
#include "hosts/qt/qt_accessible.h"
#include "hosts/qt/qt_keys.h"
#include "hosts/qt/qt_look.h"
#include "ports/messages.h"

namespace orvello {
namespace {

constexpr int kResizePauseMilliseconds = 60;

bool is_release(const QEvent& event) {
  return event.type() == QEvent::MouseButtonRelease || event.type() == QEvent::TabletRelease ||
         event.type() == QEvent::TouchEnd;
}

bool is_other_press(const QEvent& event) {
  return (event.type() == QEvent::MouseButtonPress ||
          event.type() == QEvent::MouseButtonDblClick) &&
         static_cast<const QMouseEvent&>(event).button() == Qt::RightButton;
}

bool is_tab(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

}  // namespace

ContentArea::ContentArea(QWidget* parent, const Density& density, ShellEvents& events)
    : Guarded(parent), density_(density), events_(events) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_AcceptTouchEvents);
  setAttribute(Qt::WA_InputMethodEnabled, false);
  setMouseTracking(true);
  setTabletTracking(true);
  setObjectName(QStringLiteral("content"));
}

bool ContentArea::take_event(QEvent* event) {
  if (event->type() == QEvent::Leave && !pointer_.is_down())
    events_.send({kMessageMouseMove, 0, {-1, -1}, 0});
  if (is_other_press(*event)) return ask_for_menu(static_cast<const QMouseEvent&>(*event));
  const bool released = is_release(*event);
  const QtPointer::Step step = pointer_.take(*event);
  if (!step.taken) return QWidget::event(event);
  event->accept();  // also keeps the toolkit from making mouse events of touches
  if (!is_covered(*this))
    send_pointer(step);
  else if (released)
    pass_release_on(*this, step.place);
  return true;
}

// Not while something is pressed already.
bool ContentArea::ask_for_menu(const QMouseEvent& event) {
  if (pointer_.is_down() || is_covered(*this)) return true;
  setFocus(Qt::MouseFocusReason);
  events_.send({kMessageContextMenu, 0, turned_point(density_.device(event.position())), 0});
  return true;
}

Point ContentArea::turned_point(Point point) const {
  return is_right_to_left() ? mirrored(point, density_.device(width())) : point;
}

bool ContentArea::send_pointer(const QtPointer::Step& step) {
  Message message;
  const bool held =
      step.change == QtPointer::Change::down || step.change == QtPointer::Change::move;
  message.wparam = held ? 1 : 0;
  message.point = turned_point(density_.device(step.place));
  switch (step.change) {
    case QtPointer::Change::none:
      return false;
    case QtPointer::Change::down:
      setFocus(Qt::MouseFocusReason);
      message.id = kMessageButtonDown;
      break;
    case QtPointer::Change::hover:
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
  QPainter(this).fillRect(rect(), qt_color(density_.colors->field));
  events_.send({kMessagePaint, 0, {}, 0});
}

bool ContentArea::send_key(const QKeyEvent& event, std::uint32_t id) {
  const std::uint32_t key = virtual_key(event);
  int held = 0;
  if (event.modifiers() & Qt::ControlModifier) held |= kControlHeld;
  if (event.modifiers() & Qt::ShiftModifier) held |= kShiftHeld;
  return key != 0 && events_.send({id, key, {}, held});
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
  const WheelNotches::Turn turn = wheel_.take(*event);
  event->accept();
  if (turn.notches == 0) return;
  const Point at = turned_point(density_.device(event->position()));
  if (turn.sideways)
    events_.send({kMessageMouseSideWheel, 0, at, -turn.notches});
  else
    events_.send({kMessageMouseWheel, 0, at, turn.notches});
}

void ContentArea::set_accessible_view(AccessibleView* view) {
  accessible_view_ = view;
  note_accessible_change();
}

void ContentArea::note_accessible_change() {
  ++accessible_version_;
  if (QAccessible::isActive()) tell_accessible_change(*this);
}

bool ContentArea::is_below_sheet() const {
  const auto covers = [](const QObject* child) {
    const auto* sheet = qobject_cast<const QWidget*>(child);
    return sheet && !sheet->isHidden();
  };
  return std::any_of(children().begin(), children().end(), covers);
}

void ContentArea::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  // Below a dialog there is nothing to see of it, nor to do.
  if (is_tab(event->reason()) && is_below_sheet()) {
    focusNextPrevChild(event->reason() == Qt::TabFocusReason);
    return;
  }
  if (is_tab(event->reason())) events_.send({kMessageSetFocus, 0, {}, 0});
  if (QAccessible::isActive()) tell_accessible_change(*this);
}

void ContentArea::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  if (is_tab(event->reason())) events_.send({kMessageKillFocus, 0, {}, 0});
}

Shell::Shell(const Density& density, ShellEvents& events)
    : density_(density), events_(events), content_(new ContentArea(this, density, events)) {
  install_accessibility();
  setObjectName(QStringLiteral("shell"));
  setAcceptDrops(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setPalette(look_palette(*density.colors));
  resize_pause_.setSingleShot(true);
  resize_pause_.setInterval(kResizePauseMilliseconds);
  on_signal(&resize_pause_, &QTimer::timeout, this, [this] { events_.resized(); });
}

void Shell::set_bar(QWidget* bar, int device_height) {
  bar_ = bar;
  bar_height_ = bar ? device_height : 0;
  lay_out();
  if (bar_) bar_->show();
  keep_order();
}

void Shell::push_cover(QWidget* cover, QWidget* focus_below, bool lets_through) {
  // A menu that stands open would keep the pointer.
  QWidget* menu = QApplication::activePopupWidget();
  while (menu && menu->close()) menu = QApplication::activePopupWidget();
  covers_.push_back({cover, focus_below, lets_through});
  lay_out();
  keep_order();
}

void Shell::drop_cover(const QWidget* cover) {
  const auto found = std::find_if(covers_.begin(), covers_.end(),
                                  [cover](const Cover& one) { return one.widget == cover; });
  if (found == covers_.end()) return;
  const QPointer<QWidget> focus_below = found->focus_below;
  const auto above = covers_.erase(found);
  keep_order();
  if (above == covers_.end())
    restore_focus(focus_below);
  else
    above->focus_below = focus_below;
}

// The one place that decides what takes input: everything else in the window is off.
void Shell::keep_order() {
  std::erase_if(covers_, [](const Cover& one) { return !one.widget; });
  const auto open = [this](const QWidget& widget) { return cover_over(widget) == nullptr; };
  content_->setEnabled(open(*content_));
  if (bar_) bar_->setEnabled(open(*bar_));
  for (const Cover& one : covers_) {
    one.widget->setEnabled(open(*one.widget));
    one.widget->raise();
  }
}

QWidget* Shell::cover_over(const QWidget& widget) const {
  for (auto cover = covers_.rbegin(); cover != covers_.rend(); ++cover) {
    if (!cover->widget) continue;
    if (cover->widget == &widget || cover->widget->isAncestorOf(&widget)) return nullptr;
    if (!cover->lets_through) return cover->widget;
  }
  return nullptr;
}

void Shell::give_focus(QWidget& widget) {
  std::size_t above = covers_.size();  // of what is about to cover everything
  if (content_->isAncestorOf(&widget)) above = 0;
  for (std::size_t i = 0; i < covers_.size(); ++i)
    if (covers_[i].widget->isAncestorOf(&widget)) above = i + 1;
  if (above < covers_.size())
    covers_[above].focus_below = &widget;
  else
    widget.setFocus(Qt::OtherFocusReason);
}

// What had the focus may be gone, or have been made anew.
void Shell::restore_focus(QWidget* wanted) {
  if (wanted && wanted->isEnabled() && wanted->isVisible()) return wanted->setFocus();
  QWidget* below = cover() ? cover() : content_;
  for (QWidget* widget : below->findChildren<QWidget*>())
    if (widget->isVisible() && widget->focusPolicy() & Qt::TabFocus) return widget->setFocus();
  below->setFocus();
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

void Shell::show_text(HoverText*& widget, const HoverLabel& label) {
  if (!widget) widget = new HoverText(this, density_);
  widget->set_label(label);
  const QRect place = turned(density_.logical(label.place), content_->width());
  widget->setGeometry(place.translated(content_->pos()));
  widget->raise();
  keep_order();
  widget->show();
}

void Shell::show_label(const HoverLabel& label) { show_text(label_, label); }

void Shell::show_notice(const HoverLabel& notice) {
  const bool news = !notice_ || notice_->isHidden() || notice_->text() != notice.text;
  show_text(notice_, notice);
  notice_->setObjectName(QStringLiteral("notice"));
  if (!news || !QAccessible::isActive()) return;
  QAccessibleEvent event(notice_, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
}

void Shell::hide_notice() {
  if (notice_) notice_->hide();
}

void Shell::hide_label() {
  if (label_) label_->hide();
}

void Shell::lay_out() {
  const int bar = bar_ ? density_.logical(bar_height_) : 0;
  if (bar_) bar_->setGeometry(0, height() - bar, width(), bar);
  for (const Cover& one : covers_)
    if (one.widget) one.widget->setGeometry(rect());
  place_content({0, 0, density_.device(width()), density_.device(height() - bar)});
}

void Shell::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  lay_out();
  if (isVisible()) resize_pause_.start();
}

// Of this machine only: nothing is fetched.
void Shell::dragEnterEvent(QDragEnterEvent* event) {
  const auto urls = event->mimeData()->urls();
  const bool files =
      std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
  if (files && events_.files_dropped) event->acceptProposedAction();
}

void Shell::dropEvent(QDropEvent* event) {
  std::vector<std::string> files;
  for (const QUrl& url : event->mimeData()->urls())
    if (url.isLocalFile()) files.push_back(QFile::encodeName(url.toLocalFile()).toStdString());
  if (files.empty() || !events_.files_dropped) return;
  event->acceptProposedAction();
  events_.files_dropped(std::move(files));
}

void Shell::closeEvent(QCloseEvent* event) {
  event->ignore();  // the program decides
  events_.close_wanted();
}

bool Shell::take_event(QEvent* event) {
  const bool other_desktop = event->type() == QEvent::ApplicationPaletteChange ||
                             event->type() == QEvent::ApplicationFontChange;
  if (other_desktop) events_.desktop_changed();
  return QWidget::event(event);
}

void Shell::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::ActivationChange) {
    if (isActiveWindow()) events_.activated();
    events_.send({kMessageActivate, isActiveWindow() ? 1u : 0u, {}, 0});
  }
}

// Nothing in the window has the focus: what is modal hears the keys all the same.
void Shell::keyPressEvent(QKeyEvent* event) {
  if (QWidget* modal = cover())
    QCoreApplication::sendEvent(modal, event);
  else
    QWidget::keyPressEvent(event);
}

void Shell::paintEvent(QPaintEvent*) {
  QPainter(this).fillRect(rect(), qt_color(density_.colors->field));
}

}  // namespace orvello
