// A device in memory with an empty settings key, for the settings' tests.
#pragma once

#include <gtest/gtest.h>

#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_files.h"
#include "hosts/headless/memory_record_databases.h"
#include "hosts/headless/memory_registry.h"
#include "settings/load_settings.h"
#include "settings/registry_access.h"

namespace orvello {

inline void PrintTo(const ShownBox& box, std::ostream* out) {
  *out << to_utf8(box.caption) << ": " << to_utf8(box.text);
}

using Messages = std::vector<std::string>;

// The texts of the boxes shown since the last call, each after its caption.
inline Messages take_messages(HeadlessBoxes& boxes) {
  Messages texts;
  for (const ShownBox& box : boxes.shown)
    texts.push_back(to_utf8(box.caption) + ": " + to_utf8(box.text));
  boxes.shown.clear();
  return texts;
}

class SettingsTest : public ::testing::Test {
 protected:
  SettingsTest() {
    EnsureSettingsKey(registry);
    databases.on_volume_created = [this](TextView path) { files.present.emplace(path); };
  }
  ~SettingsTest() override { EXPECT_TRUE(databases.nothing_open()) << "a volume stays mounted"; }

  SettingsRecord load(const LocaleData& locale = english_locale(), bool low_resolution = true,
                      bool dark_desktop = false) {
    SettingsRecord settings;
    LoadSettings(settings, registry, volume, clock, locale, low_resolution, dark_desktop);
    return settings;
  }
  void store(TextView name, std::uint32_t number) {
    registry.put(RegistryRoot::classes_root, kSettingsKey, name, {false, number, {}});
  }
  void store(TextView name, TextView text) {
    registry.put(RegistryRoot::classes_root, kSettingsKey, name, {true, 0, Text(text)});
  }
  std::optional<RegistryValue> stored(TextView name) const {
    return registry.get(RegistryRoot::classes_root, kSettingsKey, name);
  }
  Messages boxes_shown() { return take_messages(boxes); }

  MemoryRegistry registry;
  MemoryFiles files;
  MemoryRecordDatabases databases;
  HeadlessBoxes boxes;
  HeadlessClock clock;
  SettingsVolume volume{databases, boxes, files};
};

}  // namespace orvello
