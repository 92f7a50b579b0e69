#include "hosts/headless/memory_registry.h"

namespace orvello {

class MemoryRegistry::Key : public RegistryKey {
 public:
  Key(MemoryRegistry& registry, Values& values) : registry_(registry), values_(values) {}

  std::optional<RegistryValue> query(TextView name) const override {
    const auto found = values_.find(upper_ascii(name));
    if (found == values_.end()) return std::nullopt;
    return found->second;
  }
  bool set(TextView name, const RegistryValue& value) override {
    if (registry_.unwritable) return false;
    values_[upper_ascii(name)] = value;
    return true;
  }
  bool flush() override {
    ++registry_.flushes;
    return !registry_.fail_flush;
  }

 private:
  MemoryRegistry& registry_;
  Values& values_;
};

std::unique_ptr<RegistryKey> MemoryRegistry::open(RegistryRoot root, TextView path) {
  const auto found = keys_.find({root, upper_ascii(path)});
  if (found == keys_.end()) return nullptr;
  return std::make_unique<Key>(*this, found->second);
}

std::unique_ptr<RegistryKey> MemoryRegistry::create(RegistryRoot root, TextView path) {
  if (!unwritable) keys_[{root, upper_ascii(path)}];
  return open(root, path);
}

void MemoryRegistry::put(RegistryRoot root, TextView path, TextView name,
                         const RegistryValue& value) {
  keys_[{root, upper_ascii(path)}][upper_ascii(name)] = value;
}

std::optional<RegistryValue> MemoryRegistry::get(RegistryRoot root, TextView path,
                                                 TextView name) const {
  const auto key = keys_.find({root, upper_ascii(path)});
  if (key == keys_.end()) return std::nullopt;
  const auto value = key->second.find(upper_ascii(name));
  if (value == key->second.end()) return std::nullopt;
  return value->second;
}

}  // namespace orvello
