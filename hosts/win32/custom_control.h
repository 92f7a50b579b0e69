// A control that the program draws: its paints go to the form's procedure.
#pragma once

#include <optional>

#include "hosts/win32/pointed_control.h"
#include "hosts/win32/win32_surface.h"

namespace orvello {

class CustomControl : public PointedControl, private AccessibleSource {
 public:
  using PointedControl::PointedControl;

  bool create(HWND parent) override;
  void look_changed() override { invalidate(); }
  void set_parts(const std::vector<AccessibleCell>& parts) override;

 protected:
  LRESULT control_message(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void paint();
  AccessiblePart accessible_self() override;
  int accessible_count() override { return static_cast<int>(parts_.size()); }
  AccessiblePart accessible_part(int part) override;
  int accessible_focus() override;
  void press_accessible(int part) override;

  std::vector<AccessibleCell> parts_;
  AccessibleWindow accessible_{*this};
};

}  // namespace orvello
