// A field that drops something down, as a screen reader knows it.
#pragma once

#include <QString>

namespace orvello {

class DropField {
 public:
  virtual ~DropField() = default;
  virtual QString shown() const = 0;  // what is chosen
  virtual void open() = 0;
  virtual bool is_open() const = 0;
};

}  // namespace orvello
