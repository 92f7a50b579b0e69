// Pen, touch and mouse as one pointer with one button.
#pragma once

#include <QPointF>

class QEvent;

namespace orvello {

class QtPointer {
 public:
  enum class Change { none, down, move, up, hover };  // hover: moved while nobody holds it
  struct Step {
    bool taken = false;  // the event is the pointer's, even when nothing is to be told
    Change change = Change::none;
    QPointF place;
  };

  // What an event does to the pointer. While one device holds it the others are not heard.
  Step take(const QEvent& event);
  bool is_down() const { return holder_ != Holder::nobody; }
  // The pointer went to another window; its release will not be seen here.
  void let_go() { holder_ = Holder::nobody; }

 private:
  enum class Holder { nobody, mouse, pen, finger };
  Step press(Holder holder, QPointF place);
  Step move(Holder holder, QPointF place) const;
  Step release(Holder holder, QPointF place);
  Step take_mouse(const QEvent& event);
  Step take_pen(const QEvent& event);
  Step take_touch(const QEvent& event);

  Holder holder_ = Holder::nobody;
  int finger_ = 0;
};

}  // namespace orvello
