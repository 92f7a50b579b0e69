// Makes the widget of one control, and connects it with what its form tells.
#pragma once

#include <functional>

#include "calendar/locale_data.h"
#include "hosts/qt/density.h"
#include "ports/dialog.h"

class QWidget;

namespace orvello {

struct FormSink {
  std::function<void(DialogEvent::Kind, int control)> tell;
  std::function<void(const DialogEvent&)> report;  // paints, pointer and keys
};

// `density` and `locale` outlive the widget.
QWidget* make_control(QWidget* parent, const Density& density, const LocaleData& locale,
                      const ControlTemplate& control, const FormSink& sink);

bool takes_focus(ControlTemplate::Kind kind);

// What stands in it, as Dialog::text tells; silent.
Text text_of(QWidget& widget);
void set_text_of(QWidget& widget, TextView text);

}  // namespace orvello
