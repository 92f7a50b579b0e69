#include "hosts/qt/form_focus.h"

#include <QEvent>
#include <QWidget>
#include <utility>

namespace orvello {

using Event = DialogEvent::Kind;

void FormFocus::watch(QWidget& widget, int control) {
  QWidget* focused = widget.focusProxy() ? widget.focusProxy() : &widget;
  controls_[focused] = control;
  focused->installEventFilter(this);
}

bool FormFocus::filter_event(QObject* object, QEvent* event) {
  if (event->type() == QEvent::FocusIn) move(controls_.at(object));
  return false;
}

void FormFocus::move(int control) {
  if (control == control_) return;
  if (here_) tell_lost();
  control_ = control;
  if (here_ && control_ != 0) tell_(Event::focus_gained, control_);
}

void FormFocus::tell_lost() {
  if (control_ == 0) return;
  if (is_left_changed(control_)) tell_(Event::taken, control_);
  tell_(Event::focus_lost, control_);
}

void FormFocus::come() {
  if (std::exchange(here_, true)) return;
  if (control_ != 0) tell_(Event::focus_gained, control_);
}

void FormFocus::go() {
  if (std::exchange(here_, false)) tell_lost();
}

void FormFocus::leave_changed(int control, bool changed) {
  if (changed)
    left_changed_.insert(control);
  else
    left_changed_.erase(control);
}

}  // namespace orvello
