// A widget that draws what a screen reader should hear of by itself.
#pragma once

#include <vector>

#include "hosts/qt/density.h"
#include "ports/accessibility.h"

namespace orvello {

class AccessibleParts {
 public:
  virtual ~AccessibleParts() = default;
  virtual const Density& parts_density() const = 0;
  virtual std::vector<AccessibleCell> accessible_parts() const = 0;  // device pixels of the widget
  virtual void choose_part(int part) = 0;                            // as a tap on it
};

}  // namespace orvello
