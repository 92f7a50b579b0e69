// The registry of this system. What is set is held until a flush, which writes each value by
// itself: another program's values stay. Where it cannot be written everything goes on being held.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <utility>

#include "hosts/shared/stored_registry.h"

namespace orvello {

// Where the two roots lie: a key that is always there, and a path below it, which ends in "\" or
// is empty.
struct RegistryPlaces {
  HKEY classes = nullptr;
  Text below_classes;
  HKEY machine = nullptr;
  Text below_machine;
};

// Of the person who runs this: HKEY_CLASSES_ROOT shows what lies there, and nobody but who looks
// after the machine may write to the machine's own part.
RegistryPlaces registry_of_person();

class Win32Registry : public StoredRegistry {
 public:
  explicit Win32Registry(RegistryPlaces places = registry_of_person());
  ~Win32Registry() override;  // writes what was not flushed
  Win32Registry(const Win32Registry&) = delete;
  Win32Registry& operator=(const Win32Registry&) = delete;

  Text trouble() const override { return trouble_; }
  bool is_new() const override;
  bool changed_outside() override;
  void forget_changes() override { held_.clear(); }
  std::unique_ptr<RegistryKey> open(RegistryRoot root, TextView path) override;
  std::unique_ptr<RegistryKey> create(RegistryRoot root, TextView path) override;

 private:
  class Key;
  using Place = std::pair<RegistryRoot, Text>;  // the path in capitals
  struct HeldValue {
    Text name;
    RegistryValue value;
  };
  struct HeldKey {
    Text path;
    std::map<Text, HeldValue> values;  // by name in capitals
  };
  std::pair<HKEY, Text> whole_path(RegistryRoot root, TextView path) const;
  HKEY open_key(RegistryRoot root, TextView path) const;  // null: it is not there
  const RegistryValue* held_value(RegistryRoot root, TextView path, TextView name) const;
  void hold(RegistryRoot root, TextView path, TextView name, const RegistryValue& value);
  std::uint64_t last_write(const Place& place) const;  // 0: no key
  void watch(RegistryRoot root, TextView path, HKEY key);
  bool flush();
  LONG write(RegistryRoot root, const HeldKey& key) const;

  RegistryPlaces places_;
  Text trouble_;
  std::map<Place, HeldKey> held_;
  std::map<Place, std::uint64_t> seen_;  // when each key was last written, as far as is told
  bool changed_ = false;                 // by another process, and not told yet
};

}  // namespace orvello
