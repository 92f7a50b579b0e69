// A registry in memory that can refuse on demand.
#pragma once

#include <map>
#include <vector>

#include "ports/registry.h"

namespace orvello {

class MemoryRegistry : public Registry {
 public:
  Text trouble() const override {
    return fail_flush && flushes > 0 ? Text(u"The registry is full.") : Text();
  }
  std::unique_ptr<RegistryKey> open(RegistryRoot root, TextView path) override;
  std::unique_ptr<RegistryKey> create(RegistryRoot root, TextView path) override;

  // Plain access for tests; `put` creates the key.
  void put(RegistryRoot root, TextView path, TextView name, const RegistryValue& value);
  std::optional<RegistryValue> get(RegistryRoot root, TextView path, TextView name) const;

  bool unwritable = false;  // values are refused, and keys that are missing are not created
  bool fail_flush = false;
  int flushes = 0;

 private:
  class Key;
  using Values = std::map<Text, RegistryValue>;  // by upper-case name
  std::map<std::pair<RegistryRoot, Text>, Values> keys_;
};

}  // namespace orvello
