// A push button that is as flat as the rest: the default one in the accent colour.
#pragma once

#include <QPushButton>

#include "hosts/qt/density.h"

namespace orvello {

class FlatButton : public QPushButton {
 public:
  FlatButton(const QString& text, QWidget* parent, const Density& density)
      : QPushButton(text, parent), density_(density) {}
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Density& density_;
};

}  // namespace orvello
