// The pen and the eraser on a notes page.
#include <QScrollBar>
#include <QTabletEvent>
#include <QTouchEvent>

#include "hosts/qt/ink_paint.h"
#include "hosts/qt/notes_pane.h"

namespace orvello {
namespace {

// 1 where the device does not know.
double pressure_of(const QEvent& event) {
  switch (event.type()) {
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease: {
      const auto& pen = static_cast<const QTabletEvent&>(event);
      const bool knows = pen.pointingDevice()->hasCapability(QInputDevice::Capability::Pressure);
      return knows ? pen.pressure() : 1;
    }
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate: {
      const auto& touch = static_cast<const QTouchEvent&>(event);
      const bool knows = touch.pointingDevice()->hasCapability(QInputDevice::Capability::Pressure);
      return knows && !touch.points().isEmpty() ? touch.points().first().pressure() : 1;
    }
    default:
      return 1;
  }
}

bool is_eraser_end(const QEvent& event) {
  return event.type() == QEvent::TabletPress &&
         static_cast<const QTabletEvent&>(event).pointerType() ==
             QPointingDevice::PointerType::Eraser;
}

}  // namespace

QPointF NotesPane::on_page(QPointF place) const {
  return (place + QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value())) /
         density_.unit();
}

bool NotesPane::take_viewport_event(QEvent* event) {
  // A pen that is turned round erases whatever is chosen.
  const bool draws = tool_ != NotesTool::text || erasing_ || is_eraser_end(*event);
  if (draws && take_pointer(*event)) return true;
  return QTextEdit::viewportEvent(event);
}

bool NotesPane::take_pointer(QEvent& event) {
  const QtPointer::Step step = pointer_.take(event);
  if (!step.taken) return false;
  event.accept();
  switch (step.change) {
    case QtPointer::Change::down:
      setFocus(Qt::MouseFocusReason);
      erasing_ = tool_ == NotesTool::eraser || is_eraser_end(event);
      press(on_page(step.place), pressure_of(event));
      break;
    case QtPointer::Change::move:
      drag(on_page(step.place), pressure_of(event));
      break;
    case QtPointer::Change::up:
      lift();
      break;
    case QtPointer::Change::none:
    case QtPointer::Change::hover:
      break;
  }
  return true;
}

void NotesPane::press(QPointF at, double pressure) {
  history_.end_typing();
  now_.caret = textCursor().position();
  if (erasing_) {
    last_ = at;
    before_erasing_ = now_;
    return erase(at, at);
  }
  drawing_.emplace();
  drag(at, pressure);
}

void NotesPane::drag(QPointF at, double pressure) {
  if (erasing_) return erase(std::exchange(last_, at), at);
  if (!drawing_ || !add_point(*drawing_, page_point(at), pressure)) return;
  const QRectF drawn = to_qt(bounds_of_end(*drawing_));
  const double unit = density_.unit();
  const QPointF corner = drawn.topLeft() * unit -
                         QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value());
  viewport()->update(QRectF(corner, drawn.size() * unit).adjusted(-2, -2, 2, 2).toAlignedRect());
}

void NotesPane::lift() {
  if (std::exchange(erasing_, false)) {
    // All that one move took away comes back together.
    if (before_erasing_.ink != now_.ink) {
      history_.note(std::move(before_erasing_));
      tell();
    }
    return;
  }
  if (!drawing_) return;
  std::vector<NotesStroke> ink = *now_.ink;
  ink.push_back(*std::exchange(drawing_, std::nullopt));
  history_.note(now_);
  set_ink(std::move(ink));
  tell();
}

void NotesPane::erase(QPointF from, QPointF to) {
  std::vector<NotesStroke> ink = *now_.ink;
  const auto gone = [&](const NotesStroke& stroke) {
    return touches(stroke, page_point(from), page_point(to), kEraserReach);
  };
  if (std::erase_if(ink, gone) > 0) set_ink(std::move(ink));
}

}  // namespace orvello
