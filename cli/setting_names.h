// Single settings by their stored names, as a person types and reads them.
#pragma once

#include <optional>
#include <string>

#include "base/result.h"
#include "settings/setting_table.h"

namespace orvello {

struct SettingPlace {
  const SettingRow* row = nullptr;
  int slot = 0;
};

struct SettingValue {
  SettingPlace place;
  std::int32_t number = 0;  // or
  Text text;
  friend bool operator==(const SettingValue&, const SettingValue&);
};

// "itemcolor7"; letter case does not count. Fails with a sentence that names the nearest one.
Result<SettingPlace> find_setting_place(std::string_view name);
std::string name_of(const SettingPlace& place);  // as it is stored

// What counts now, and what counts where nothing is stored.
SettingValue value_in(Registry& registry, const SettingPlace& place, const LocaleData& locale);
SettingValue default_of(const SettingPlace& place, const LocaleData& locale);

// Numbers in decimal, colours as #rrggbb; a text as it is, or between quotation marks.
std::string shown_plainly(const SettingValue& value);
std::string shown_quoted(const SettingValue& value);

// Of a text, `words` are the text itself. Fails with what the setting takes.
Result<SettingValue> parse_setting(const SettingPlace& place, std::string_view words);
Result<SettingValue> check_text(const SettingPlace& place, Text text);
// A number from `least` to `most`; nothing for anything else.
std::optional<std::int32_t> parse_number(std::string_view words, std::int32_t least,
                                         std::int32_t most);
std::optional<Color> parse_color(std::string_view words);
std::string shown_color(Color color);

// False when the registry refused it.
bool put_value(Registry& registry, const SettingValue& value);

// That of `names` which differs from `word` the least; empty when none is near.
std::string nearest_word(std::string_view word, const std::vector<std::string>& names);

}  // namespace orvello
