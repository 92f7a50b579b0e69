// Hears which control of a form has got the toolkit's focus.
#pragma once

#include <QObject>
#include <map>

#include "hosts/qt/callbacks.h"
#include "hosts/shared/focus_told.h"

namespace orvello {

class FormFocus : public Guarded<QObject>, public FocusTold {
 public:
  explicit FormFocus(Tell tell) : FocusTold(std::move(tell)) {}

  void watch(QWidget& widget, int control);
  bool filter_event(QObject* object, QEvent* event) override;

 private:
  std::map<const QObject*, int> controls_;
};

}  // namespace orvello
