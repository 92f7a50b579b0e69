// The small text over the window that takes no input.
#pragma once

#include <QWidget>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"
#include "ports/main_window.h"

namespace orvello {

class HoverText : public Guarded<QWidget> {
 public:
  HoverText(QWidget* parent, const Density& density);
  void set_label(const HoverLabel& label);
  const Text& text() const { return label_.text; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Density& density_;
  HoverLabel label_;
};

}  // namespace orvello
