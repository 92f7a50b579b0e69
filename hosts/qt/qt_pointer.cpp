#include "hosts/qt/qt_pointer.h"

#include <QMouseEvent>
#include <QTabletEvent>
#include <QTouchEvent>

namespace orvello {
namespace {

// A cancelled touch ends outside of everything, so that nothing is chosen by it.
const QPointF kNowhere(-1, -1);

}  // namespace

QtPointer::Step QtPointer::press(Holder holder, QPointF place) {
  // The same device again: its release went to a menu or a window that had opened meanwhile.
  if (holder_ != Holder::nobody && holder_ != holder) return {true, Change::none, place};
  holder_ = holder;
  return {true, Change::down, place};
}

QtPointer::Step QtPointer::move(Holder holder, QPointF place) const {
  if (holder_ == Holder::nobody) return {true, Change::hover, place};
  return {true, holder_ == holder ? Change::move : Change::none, place};
}

QtPointer::Step QtPointer::release(Holder holder, QPointF place) {
  if (holder_ != holder) return {true, Change::none, place};
  holder_ = Holder::nobody;
  return {true, Change::up, place};
}

QtPointer::Step QtPointer::take(const QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
      return take_mouse(event);
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
      return take_pen(event);
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
      return take_touch(event);
    default:
      return {};
  }
}

QtPointer::Step QtPointer::take_mouse(const QEvent& event) {
  const auto& mouse = static_cast<const QMouseEvent&>(event);
  const QPointF place = mouse.position();
  if (event.type() == QEvent::MouseMove) {
    // Moving unpressed: the release went to a menu or a window that had opened meanwhile.
    if (holder_ == Holder::mouse && !(mouse.buttons() & Qt::LeftButton)) let_go();
    return move(Holder::mouse, place);
  }
  if (mouse.button() != Qt::LeftButton) return {};
  // The second press of a double click is a press like any other.
  if (event.type() == QEvent::MouseButtonRelease) return release(Holder::mouse, place);
  return press(Holder::mouse, place);
}

QtPointer::Step QtPointer::take_pen(const QEvent& event) {
  const auto& pen = static_cast<const QTabletEvent&>(event);
  const QPointF place = pen.position();
  if (event.type() == QEvent::TabletMove) return move(Holder::pen, place);
  if (pen.button() != Qt::LeftButton) return {};
  return event.type() == QEvent::TabletPress ? press(Holder::pen, place)
                                             : release(Holder::pen, place);
}

QtPointer::Step QtPointer::take_touch(const QEvent& event) {
  const auto& touch = static_cast<const QTouchEvent&>(event);
  if (event.type() == QEvent::TouchCancel) return release(Holder::finger, kNowhere);
  if (event.type() == QEvent::TouchBegin && !touch.points().isEmpty()) {
    finger_ = touch.points().first().id();
    return press(Holder::finger, touch.points().first().position());
  }
  // Further fingers are not heard; the first one's lifting ends the touch.
  for (const QEventPoint& point : touch.points()) {
    if (point.id() != finger_) continue;
    if (point.state() == QEventPoint::Released) return release(Holder::finger, point.position());
    if (point.state() == QEventPoint::Updated) return move(Holder::finger, point.position());
  }
  return {true, Change::none, {}};
}

}  // namespace orvello
