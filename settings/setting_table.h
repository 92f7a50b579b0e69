// The table of all stored settings: one row a setting. Loading, saving and the reference page come
// from it.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "ports/registry.h"
#include "settings/settings_record.h"

namespace orvello {

enum class SettingKind { flag, number, color, text };

// Where a default comes from when it is not a fixed value.
enum class SettingDefault { fixed, slot_number, factory_color, locale_clock, locale_long_date };

// When a setting is loaded; `by_its_window` settings are read when the window that owns them opens.
enum class LoadStep {
  flags,
  row_colors,
  display_icons,
  default_times,
  views,
  colors,
  day_header,
  new_appointments,
  by_its_window,
};

// A number kept in the record, a text, a table of either, or a half-hour slot kept as a time of
// day.
using SettingField =
    std::variant<std::monostate, std::int32_t SettingsRecord::*, Text SettingsRecord::*,
                 HourMinute SettingsRecord::*, ItemColors SettingsRecord::*,
                 std::array<std::int32_t, kDisplayIconSlots> SettingsRecord::*,
                 std::array<Text, kDisplayIconSlots> SettingsRecord::*>;

struct SettingRow {
  TextView name;  // a family's contains %d
  SettingKind kind;
  int count;  // 1, or how many values the family has
  SettingDefault rule;
  std::int32_t default_number;
  TextView default_text;
  std::int32_t least;  // of a text: 0
  std::int32_t most;   // of a text: its length in characters
  LoadStep step;
  SettingField field;
  const char* label;
};

// In the order of loading.
const std::vector<SettingRow>& setting_table();
const SettingRow* find_setting(TextView name);
Text setting_name(const SettingRow& row, int slot);

// The default of a number or colour; `add` the locale's part where it has one.
std::int32_t default_number(const SettingRow& row, int slot, const LocaleData& locale);

bool in_range(const SettingRow& row, std::int32_t value);

// Presets the default, then reads what is stored. What this program would not have written counts
// as missing: a number outside its range, a text that is too long, one in the place of the other.
void load_setting(Registry& registry, const SettingRow& row, int slot, const LocaleData& locale,
                  SettingsRecord& settings);
// All rows of a step: slot by slot, and in each slot row by row.
void load_settings_of(LoadStep step, Registry& registry, const LocaleData& locale,
                      SettingsRecord& settings);
// Writes the record's value; false when it could not be written or nothing has that name.
bool save_setting(Registry& registry, const SettingsRecord& settings, TextView name, int slot = 0);

// What counts: the stored value, or the default.
std::int32_t stored_number_of(Registry& registry, const SettingRow& row, int slot,
                              const LocaleData& locale);
Text stored_text_of(Registry& registry, const SettingRow& row, int slot);
// A setting that the record does not hold, or a default time's slot: as stored, or its default.
std::int32_t stored_number(Registry& registry, TextView name);
Text stored_text(Registry& registry, TextView name);

// What the setting is, of a colour with its group: "Month view: Line color".
std::string setting_meaning(const SettingRow& row, int slot);

// The reference page, Markdown in UTF-8.
std::string setting_table_as_markdown();

}  // namespace orvello
