// Settings that nobody should have stored, and a registry that keeps nothing.
#include "settings/load_settings.h"
#include "settings/setting_table.h"
#include "tests/contract/settings_contract.h"

namespace orvello::test {
namespace {

// What each row may find in its place; `counts` says whether it is a value that a start takes.
struct StrangeValue {
  const char* what;
  std::function<RegistryValue(const SettingRow&)> value;
  bool counts = false;
};

RegistryValue as_number(std::int64_t number) {
  return {false, static_cast<std::uint32_t>(number), {}};
}

// A number, or a text of that many characters.
RegistryValue of_size(const SettingRow& row, std::int64_t size) {
  if (row.kind != SettingKind::text) return as_number(size);
  return {true, 0, Text(static_cast<std::size_t>(size), u'W')};
}

const StrangeValue kStrangeValues[] = {
    {"above its range",
     [](const SettingRow& row) { return of_size(row, std::int64_t{row.most} + 1); }},
    {"below its range",
     [](const SettingRow& row) {
       return row.kind == SettingKind::text ? of_size(row, 600)
                                            : as_number(std::int64_t{row.least} - 1);
     }},
    {"all bits",
     [](const SettingRow& row) {
       return row.kind == SettingKind::text ? of_size(row, 0xFFFF) : as_number(0xFFFFFFFF);
     }},
    {"one of the other type",
     [](const SettingRow& row) {
       return row.kind == SettingKind::text ? as_number(0x00420041) : RegistryValue{true, 0, u"1"};
     }},
    {"600 characters",
     [](const SettingRow&) {
       return RegistryValue{true, 0, Text(600, u'7')};
     }},
    {"the least", [](const SettingRow& row) { return of_size(row, row.least); }, true},
    {"the most", [](const SettingRow& row) { return of_size(row, row.most); }, true},
    {"no letters",
     [](const SettingRow& row) {
       return row.kind == SettingKind::text ? RegistryValue{true, 0, u"\n%d%s\x1B\xD800|\"\\"}
                                            : as_number(row.most);
     },
     true},
};

// What a record would be stored as.
std::map<Text, Text> stored_form(const SettingsRecord& settings) {
  MemoryRegistry registry;
  EnsureSettingsKey(registry);
  std::map<Text, Text> all;
  for (const SettingRow& row : setting_table())
    for (int slot = 0; slot < row.count; ++slot)
      if (save_setting(registry, settings, row.name, slot)) {
        const Text name = setting_name(row, slot);
        const auto value = stored_value(registry, name);
        all[name] = value->is_text ? value->text : format(u"%d", value->number);
      }
  return all;
}

TEST_P(SettingsContract, StrangeValuesCountAsDefaultsAndHurtNoPage) {
  const auto defaults = stored_form(desk->settings);
  ASSERT_GT(defaults.size(), 170u);
  for (const StrangeValue& strange : kStrangeValues) {
    SCOPED_TRACE(strange.what);
    renew();
    for (const SettingRow& row : setting_table())
      for (int slot = 0; slot < row.count; ++slot)
        desk->device.registry.put(RegistryRoot::classes_root, kSettingsKey, setting_name(row, slot),
                                  strange.value(row));
    desk->load();
    if (!strange.counts) {
      for (const auto& [name, value] : stored_form(desk->settings))
        EXPECT_EQ(value, defaults.at(name)) << to_utf8(name);
    }
    desk->start(ViewMode::day);
    for (const std::uint32_t view : kViewCommands) {
      desk->device.window.command(view);
      desk->settle();
    }
    desk->open(kPageDisplay, [&] {
      for (int page = kPageOptions; page <= kPageIcons; ++page) desk->show_page(page);
    });
    EXPECT_EQ(desk->open(kPageIcons, [&] { desk->ok(); }), kSheetOk);
    EXPECT_EQ(desk->program->state().view_mode, ViewMode::year);
  }
}

// The choices hold, also those that a window reads again, and the person is told once.
TEST_P(SettingsContract, WhatCannotBeKeptLastsAndIsToldOnce) {
  desk->start(ViewMode::month);
  desk->device.registry.fail_flush = true;
  for (int time = 0; time < 2; ++time) {
    EXPECT_EQ(desk->open(kPageDisplay,
                         [&] {
                           WriteNumberSetting(desk->whole.registry, u"abcbarshow", 1);
                           desk->ok();
                         }),
              kSheetOk);
    const auto told = desk->boxes_shown();
    EXPECT_EQ(told.size(), time == 0 ? 1u : 0u);
    for (const auto& box : told) EXPECT_NE(box.find("The registry is full."), std::string::npos);
    EXPECT_EQ(stored_number(desk->whole.registry, u"abcbarshow"), 1);
  }
}

}  // namespace
}  // namespace orvello::test
