#include "hosts/qt/form_focus.h"

#include <QEvent>
#include <QWidget>

namespace orvello {

void FormFocus::watch(QWidget& widget, int control) {
  QWidget* focused = widget.focusProxy() ? widget.focusProxy() : &widget;
  controls_[focused] = control;
  focused->installEventFilter(this);
}

bool FormFocus::filter_event(QObject* object, QEvent* event) {
  if (event->type() == QEvent::FocusIn) move(controls_.at(object));
  return false;
}

}  // namespace orvello
