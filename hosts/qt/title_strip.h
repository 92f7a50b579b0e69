// The strip at the top of what is modal: a title, and what closes it.
#pragma once

#include "hosts/qt/density.h"

class QAbstractButton;
class QPainter;
class QString;
class QWidget;

namespace orvello {

// The title stands left in `strip`, which `right` pixels of buttons end.
void paint_title(QPainter& painter, const QRect& strip, const Density& density,
                 const QString& title, int right = -1);
QAbstractButton* make_close_button(QWidget& form, const Density& density);

}  // namespace orvello
