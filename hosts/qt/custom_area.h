// A control that the program draws.
#pragma once

#include <QWidget>

#include "hosts/qt/accessible_parts.h"
#include "hosts/qt/callbacks.h"
#include "hosts/qt/control_input.h"

namespace orvello {

class CustomArea : public Guarded<QWidget>, public AccessibleParts {
 public:
  CustomArea(QWidget* parent, const Density& density, int control, ControlInput::Report report);

  ControlInput& input() { return input_; }
  void see_through() { see_through_ = true; }  // what is not drawn shows what lies below
  void set_parts(const std::vector<AccessibleCell>& parts);
  const Density& parts_density() const override { return density_; }
  std::vector<AccessibleCell> accessible_parts() const override;
  void choose_part(int part) override;

 protected:
  bool take_event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  const Density& density_;
  int control_;
  ControlInput::Report report_;
  ControlInput input_;
  std::vector<AccessibleCell> parts_;
  bool see_through_ = false;
};

}  // namespace orvello
