// A slider whose knob goes where the pen presses.
#pragma once

#include <QSlider>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

namespace orvello {

class FlatSlider : public Guarded<QSlider> {
 public:
  FlatSlider(QWidget* parent, const Density& density);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  int radius() const;
  void move_to(double x);

  const Density& density_;
};

}  // namespace orvello
