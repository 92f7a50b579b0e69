#include "app/told_registry.h"

namespace orvello {

class ToldRegistry::Key : public RegistryKey {
 public:
  Key(ToldRegistry& told, std::unique_ptr<RegistryKey> key) : told_(told), key_(std::move(key)) {}

  std::optional<RegistryValue> query(TextView name) const override { return key_->query(name); }
  bool set(TextView name, const RegistryValue& value) override { return key_->set(name, value); }
  bool flush() override {
    if (key_->flush()) return true;
    if (auto tell = std::exchange(told_.tell_, {})) tell(told_.trouble());
    return false;
  }

 private:
  ToldRegistry& told_;
  std::unique_ptr<RegistryKey> key_;
};

std::unique_ptr<RegistryKey> ToldRegistry::open(RegistryRoot root, TextView path) {
  return told(registry_.open(root, path));
}

std::unique_ptr<RegistryKey> ToldRegistry::create(RegistryRoot root, TextView path) {
  return told(registry_.create(root, path));
}

std::unique_ptr<RegistryKey> ToldRegistry::told(std::unique_ptr<RegistryKey> key) {
  return key ? std::make_unique<Key>(*this, std::move(key)) : nullptr;
}

}  // namespace orvello
