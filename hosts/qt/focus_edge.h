// The focus of an area without an edge of its own, while keys are used.
#pragma once

#include <QWidget>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

namespace orvello {

class FocusEdge : public Guarded<QWidget> {
 public:
  FocusEdge(QWidget& area, const Density& density);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Density& density_;
};

}  // namespace orvello
