#include "hosts/qt/control_input.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QStyleHints>
#include <QWidget>

#include "draw/mirrored.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/modal_layer.h"
#include "hosts/qt/qt_keys.h"
#include "hosts/qt/qt_look.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kSamePlace = 6;  // how far apart two taps of one double tap may lie

}  // namespace

ControlInput::ControlInput(QWidget& surface, QWidget& control, const Density& density, int id,
                           Report report)
    : surface_(surface), control_(control), density_(density), id_(id), report_(std::move(report)) {
  surface.setAttribute(Qt::WA_AcceptTouchEvents);
}

DialogEvent ControlInput::event_of(Event kind, Point at) const {
  DialogEvent event;
  event.kind = kind;
  event.control = id_;
  event.size = {density_.device(control_.width()), density_.device(control_.height())};
  event.point = at;
  return event;
}

Point ControlInput::turned_point(QPointF place) const {
  const Point point = density_.device(place);
  return is_right_to_left() ? mirrored(point, density_.device(control_.width())) : point;
}

bool ControlInput::is_second_tap(const QEvent& event, QPointF place) {
  const quint64 time = static_cast<const QInputEvent&>(event).timestamp();
  const bool near = (place - tap_place_).manhattanLength() <= density_.scaled(kSamePlace);
  const auto interval =
      static_cast<quint64>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
  const bool soon = time != 0 && time - tap_time_ < interval;
  const bool second = tapped_ && near && (soon || event.type() == QEvent::MouseButtonDblClick);
  tapped_ = !second;
  tap_time_ = time;
  tap_place_ = place;
  return second;
}

// The mouse's other button, or the pen's.
bool ControlInput::take_other_button(const QEvent& event) {
  const bool mouse =
      event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
  if (!mouse && event.type() != QEvent::TabletPress) return false;
  const auto& press = static_cast<const QSinglePointEvent&>(event);
  if (press.button() != Qt::RightButton) return false;
  if (pointer_.is_down() || is_covered(surface_)) return true;
  report_(event_of(Event::context_menu, turned_point(surface_.mapTo(&control_, press.position()))));
  return true;
}

void ControlInput::take_wheel(const QWheelEvent& event) {
  const WheelNotches::Turn turn = wheel_.take(event);
  if (turn.notches == 0 || is_covered(surface_)) return;
  DialogEvent told =
      event_of(Event::wheel, turned_point(surface_.mapTo(&control_, event.position())));
  told.notches = turn.notches;
  told.sideways = turn.sideways;
  report_(told);
}

bool ControlInput::take_pointer(QEvent& event) {
  if (take_other_button(event)) {
    event.accept();
    return true;
  }
  const quint64 time = event.isInputEvent() ? static_cast<QInputEvent&>(event).timestamp() : 0;
  const QtPointer::Step step = pointer_.take(event);
  if (!step.taken) return false;
  event.accept();  // also keeps the toolkit from making mouse events of touches
  if (is_covered(surface_)) {
    if (step.change == QtPointer::Change::up) pass_release_on(surface_, step.place);
    return true;
  }
  Event kind = Event::pointer_move;
  switch (step.change) {
    case QtPointer::Change::none:
    case QtPointer::Change::hover:
      return true;
    case QtPointer::Change::down:
      kind = is_second_tap(event, step.place) ? Event::double_tap : Event::pointer_down;
      break;
    case QtPointer::Change::move:
      break;
    case QtPointer::Change::up:
      kind = Event::pointer_up;
      break;
  }
  DialogEvent told = event_of(kind, turned_point(surface_.mapTo(&control_, step.place)));
  told.time = time;
  report_(told);
  return true;
}

bool ControlInput::take_key(QKeyEvent& event) {
  const int key = event.key();
  if (key == Qt::Key_Tab || key == Qt::Key_Backtab) return false;
  if (event.modifiers() & (Qt::AltModifier | Qt::MetaModifier)) return false;
  const std::uint32_t code = virtual_key(event);
  // Escape closes what is modal.
  if (code == 0 || (key == Qt::Key_Escape && is_modal(surface_))) return false;
  DialogEvent told = event_of(Event::key, {});
  told.key = code;
  told.control_held = event.modifiers() & Qt::ControlModifier;
  told.shift_held = event.modifiers() & Qt::ShiftModifier;
  event.accept();
  report_(told);
  return true;
}

void ControlInput::tap(Point at) {
  if (is_covered(surface_)) return;
  const QPointer<QWidget> alive(&surface_);
  DialogEvent down = event_of(Event::pointer_down, at);
  down.alone = true;
  report_(down);
  if (alive) report_(event_of(Event::pointer_up, at));
}

void ControlInput::release_at(QPointF global) {
  report_(event_of(Event::pointer_up, turned_point(control_.mapFromGlobal(global))));
}

}  // namespace orvello
