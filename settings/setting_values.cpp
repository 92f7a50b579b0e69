// Settings on their way between the record and the registry.
#include <algorithm>
#include "settings/registry_access.h"

#include "settings/setting_table.h"

namespace orvello {
namespace {

int slot_of(HourMinute time) { return time.hour % 24 * 2 + (time.minute >= 30 ? 1 : 0); }

std::int32_t number_in(const SettingsRecord& settings, const SettingField& field, int slot) {
  const auto at = static_cast<std::size_t>(slot);
  if (const auto* one = std::get_if<std::int32_t SettingsRecord::*>(&field)) return settings.**one;
  if (const auto* time = std::get_if<HourMinute SettingsRecord::*>(&field))
    return slot_of(settings.**time);
  if (const auto* colors = std::get_if<ItemColors SettingsRecord::*>(&field))
    return static_cast<std::int32_t>((settings.**colors)[at]);
  using Icons = std::array<std::int32_t, kDisplayIconSlots> SettingsRecord::*;
  if (const auto* icons = std::get_if<Icons>(&field)) return (settings.**icons)[at];
  return 0;
}

void put_number(SettingsRecord& settings, const SettingField& field, int slot, std::int32_t value) {
  const auto at = static_cast<std::size_t>(slot);
  if (const auto* one = std::get_if<std::int32_t SettingsRecord::*>(&field))
    settings.** one = value;
  if (const auto* time = std::get_if<HourMinute SettingsRecord::*>(&field))
    settings.** time = TimeSlotToHourMinute(value);
  if (const auto* colors = std::get_if<ItemColors SettingsRecord::*>(&field))
    (settings.**colors)[at] = static_cast<Color>(value);
  using Icons = std::array<std::int32_t, kDisplayIconSlots> SettingsRecord::*;
  if (const auto* icons = std::get_if<Icons>(&field)) (settings.**icons)[at] = value;
}

template <typename Record>
auto text_in(Record& settings, const SettingField& field, int slot)
    -> decltype(&settings.strprevlocation) {
  if (const auto* one = std::get_if<Text SettingsRecord::*>(&field)) return &(settings.**one);
  using Labels = std::array<Text, kDisplayIconSlots> SettingsRecord::*;
  if (const auto* labels = std::get_if<Labels>(&field))
    return &(settings.**labels)[static_cast<std::size_t>(slot)];
  return nullptr;
}

// The settings key opened once for all that is read from it: opening may be slow.
class OpenedSettings : public Registry {
 public:
  explicit OpenedSettings(Registry& registry)
      : registry_(registry), key_(registry.open(RegistryRoot::classes_root, kSettingsKey)) {}
  Text trouble() const override { return registry_.trouble(); }
  std::unique_ptr<RegistryKey> open(RegistryRoot root, TextView path) override {
    if (root != RegistryRoot::classes_root || path != kSettingsKey)
      return registry_.open(root, path);
    return key_ ? std::make_unique<Lent>(*key_) : nullptr;
  }
  std::unique_ptr<RegistryKey> create(RegistryRoot root, TextView path) override {
    return registry_.create(root, path);
  }

 private:
  class Lent : public RegistryKey {
   public:
    explicit Lent(RegistryKey& key) : key_(key) {}
    std::optional<RegistryValue> query(TextView name) const override { return key_.query(name); }
    bool set(TextView name, const RegistryValue& value) override { return key_.set(name, value); }
    bool flush() override { return key_.flush(); }

   private:
    RegistryKey& key_;
  };
  Registry& registry_;
  std::unique_ptr<RegistryKey> key_;
};

}  // namespace

std::int32_t stored_number_of(Registry& registry, const SettingRow& row, int slot,
                              const LocaleData& locale) {
  const std::int32_t preset = default_number(row, slot, locale);
  const auto stored = stored_value(registry, setting_name(row, slot));
  if (!stored || stored->is_text) return preset;
  const auto value = static_cast<std::int32_t>(stored->number);
  return in_range(row, value) ? value : preset;
}

Text stored_text_of(Registry& registry, const SettingRow& row, int slot) {
  const Text name = setting_name(row, slot);
  const auto stored = stored_value(registry, name);
  Text text;
  const bool good = stored && stored->is_text && ReadTextSetting(registry, name, text) == 0 &&
                    text.size() <= static_cast<std::size_t>(row.most);
  return good ? text : Text(row.default_text);
}

void load_setting(Registry& registry, const SettingRow& row, int slot, const LocaleData& locale,
                  SettingsRecord& settings) {
  if (Text* field = text_in(settings, row.field, slot)) {
    *field = stored_text_of(registry, row, slot);
  } else {
    put_number(settings, row.field, slot, stored_number_of(registry, row, slot, locale));
  }
}

void load_settings_of(LoadStep step, Registry& registry, const LocaleData& locale,
                      SettingsRecord& settings) {
  int slots = 0;
  for (const SettingRow& row : setting_table())
    if (row.step == step) slots = std::max(slots, row.count);
  OpenedSettings opened(registry);
  for (int slot = 0; slot < slots; ++slot)
    for (const SettingRow& row : setting_table())
      if (row.step == step && slot < row.count) load_setting(opened, row, slot, locale, settings);
}

bool save_setting(Registry& registry, const SettingsRecord& settings, TextView name, int slot) {
  const SettingRow* row = find_setting(name);
  if (!row || slot < 0 || slot >= row->count || std::holds_alternative<std::monostate>(row->field))
    return false;
  if (const Text* field = text_in(settings, row->field, slot))
    return WriteTextSetting(registry, setting_name(*row, slot), *field) == 0;
  return WriteNumberSetting(registry, setting_name(*row, slot),
                            number_in(settings, row->field, slot)) == 0;
}

std::int32_t stored_number(Registry& registry, TextView name) {
  const SettingRow* row = find_setting(name);
  return row ? stored_number_of(registry, *row, 0, LocaleData{}) : 0;
}

Text stored_text(Registry& registry, TextView name) {
  const SettingRow* row = find_setting(name);
  return row ? stored_text_of(registry, *row, 0) : Text();
}

}  // namespace orvello
