// A desktop has neither ink controls nor an input panel to hide.
#pragma once

#include "ports/input_methods.h"

namespace orvello {

class DesktopInput : public InputMethods {
 public:
  bool load_library(TextView) override { return true; }
  void free_library(TextView) override {}
  PanelAnswer raise_input_panel(const Rect&) override { return PanelAnswer::raised; }
  void hide_input_panel() override {}
};

}  // namespace orvello
