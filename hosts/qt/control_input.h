// What a person does to one control that the program draws, as events of its dialog.
#pragma once

#include <QPointF>
#include <functional>

#include "hosts/qt/density.h"
#include "hosts/qt/qt_pointer.h"
#include "hosts/qt/wheel_notches.h"
#include "ports/dialog.h"

class QKeyEvent;
class QWheelEvent;
class QWidget;

namespace orvello {

class ControlInput {
 public:
  using Report = std::function<void(const DialogEvent&)>;
  // `surface` takes the pointer: the control itself or its viewport. Points are told in the
  // control.
  ControlInput(QWidget& surface, QWidget& control, const Density& density, int id, Report report);

  // True when the event is done with. What a report does may end the control: nothing of it is
  // touched afterwards.
  bool take_pointer(QEvent& event);
  bool take_key(QKeyEvent& event);
  void take_wheel(const QWheelEvent& event);  // tells of whole notches
  // As if the pointer had come and gone at once.
  void tap(Point at);
  // A pointer that was pressed elsewhere lets go at a place of the screen.
  void release_at(QPointF global);

 private:
  Point turned_point(QPointF place) const;
  bool is_second_tap(const QEvent& event, QPointF place);
  bool take_other_button(const QEvent& event);
  DialogEvent event_of(DialogEvent::Kind kind, Point at) const;

  QWidget& surface_;
  QWidget& control_;
  const Density& density_;
  int id_;
  Report report_;
  QtPointer pointer_;
  WheelNotches wheel_;
  bool tapped_ = false;  // once, at this moment and place
  quint64 tap_time_ = 0;
  QPointF tap_place_;
};

}  // namespace orvello
