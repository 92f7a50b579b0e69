// A text that is tapped to edit what it shows. It takes the focus, and Return and Space press it.
#pragma once

#include <QAbstractButton>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

namespace orvello {

class LineControl : public Guarded<QAbstractButton> {
 public:
  LineControl(const QString& text, QWidget* parent, const Density& density);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void type_on(const QString& text);

  const Density& density_;
};

}  // namespace orvello
