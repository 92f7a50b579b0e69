// The registry as the program keeps it between two starts.
#pragma once

#include "ports/registry.h"

namespace orvello {

class StoredRegistry : public Registry {
 public:
  virtual bool is_new() const = 0;  // nothing has ever been stored; false when that is not known
  // Whether another process has written to it since this was asked last.
  virtual bool changed_outside() = 0;
  // What was set and not flushed will not be stored any more.
  virtual void forget_changes() = 0;
};

}  // namespace orvello
