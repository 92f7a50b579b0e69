#include "cli/setting_names.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "base/quoted_text.h"
#include "settings/registry_access.h"

namespace orvello {
namespace {

std::string lower(std::string_view word) {
  std::string result(word);
  for (char& c : result)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return result;
}

// How many letters must be put in, taken out or changed.
std::size_t difference(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t corner = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t changed = corner + (a[i - 1] == b[j - 1] ? 0 : 1);
      corner = row[j];
      row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
    }
  }
  return row[b.size()];
}

std::string wanted(const SettingRow& row) {
  switch (row.kind) {
    case SettingKind::flag:
      return "is 0 (off) or 1 (on)";
    case SettingKind::color:
      return "is a colour as #rrggbb";
    case SettingKind::text:
      return "is a text of at most " + std::to_string(row.most) + " characters";
    case SettingKind::number:
      break;
  }
  if (row.most == INT32_MAX) return "is a number from " + std::to_string(row.least);
  return "is a number from " + std::to_string(row.least) + " to " + std::to_string(row.most);
}

}  // namespace

bool operator==(const SettingValue& a, const SettingValue& b) {
  return a.place.row == b.place.row && a.place.slot == b.place.slot && a.number == b.number &&
         a.text == b.text;
}

Result<SettingPlace> find_setting_place(std::string_view name) {
  const std::string wanted_name = lower(name);
  std::vector<std::string> names;
  for (const SettingRow& row : setting_table())
    for (int slot = 0; slot < row.count; ++slot) {
      names.push_back(name_of({&row, slot}));
      if (lower(names.back()) == wanted_name) return SettingPlace{&row, slot};
    }
  const std::string near = nearest_word(name, names);
  return Result<SettingPlace>::failure("there is no setting " + std::string(name) +
                                       (near.empty() ? "" : ": is " + near + " meant?"));
}

std::string name_of(const SettingPlace& place) {
  return to_utf8(setting_name(*place.row, place.slot));
}

SettingValue value_in(Registry& registry, const SettingPlace& place, const LocaleData& locale) {
  if (place.row->kind == SettingKind::text)
    return {place, 0, stored_text_of(registry, *place.row, place.slot)};
  return {place, stored_number_of(registry, *place.row, place.slot, locale), {}};
}

SettingValue default_of(const SettingPlace& place, const LocaleData& locale) {
  if (place.row->kind == SettingKind::text) return {place, 0, Text(place.row->default_text)};
  return {place, default_number(*place.row, place.slot, locale), {}};
}

std::string shown_plainly(const SettingValue& value) {
  switch (value.place.row->kind) {
    case SettingKind::text:
      return to_utf8(value.text);
    case SettingKind::color:
      return shown_color(static_cast<Color>(value.number));
    case SettingKind::flag:
    case SettingKind::number:
      break;
  }
  return std::to_string(value.number);
}

std::string shown_quoted(const SettingValue& value) {
  return value.place.row->kind == SettingKind::text ? quoted(value.text) : shown_plainly(value);
}

std::optional<std::int32_t> parse_number(std::string_view words, std::int32_t least,
                                         std::int32_t most) {
  std::int32_t number = 0;
  const auto [end, fault] = std::from_chars(words.data(), words.data() + words.size(), number);
  const bool whole = fault == std::errc{} && end == words.data() + words.size();
  if (!whole || number < least || number > most) return std::nullopt;
  return number;
}

std::optional<Color> parse_color(std::string_view words) {
  std::uint32_t value = 0;
  if (words.size() != 7 || words[0] != '#') return std::nullopt;
  const auto [end, fault] = std::from_chars(words.data() + 1, words.data() + 7, value, 16);
  if (fault != std::errc{} || end != words.data() + 7) return std::nullopt;
  return rgb(static_cast<int>(value >> 16), static_cast<int>(value >> 8), static_cast<int>(value));
}

std::string shown_color(Color color) {
  char text[16];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(red_of(color)),
                static_cast<unsigned>(green_of(color)), static_cast<unsigned>(blue_of(color)));
  return text;
}

Result<SettingValue> parse_setting(const SettingPlace& place, std::string_view words) {
  const SettingRow& row = *place.row;
  if (row.kind == SettingKind::text) {
    Text text = to_utf16(words);
    if (to_utf8(text) == words) return check_text(place, std::move(text));
    return Result<SettingValue>::failure(name_of(place) + " is no text in UTF-8");
  }
  std::optional<std::int32_t> number;
  if (row.kind != SettingKind::color)
    number = parse_number(words, row.least, row.most);
  else if (const auto color = parse_color(words))
    number = static_cast<std::int32_t>(*color);
  if (number) return SettingValue{place, *number, {}};
  return Result<SettingValue>::failure(name_of(place) + " " + wanted(row));
}

Result<SettingValue> check_text(const SettingPlace& place, Text text) {
  if (text.size() <= static_cast<std::size_t>(place.row->most) && text.find(u'\0') == Text::npos)
    return SettingValue{place, 0, std::move(text)};
  return Result<SettingValue>::failure(name_of(place) + " " + wanted(*place.row));
}

bool put_value(Registry& registry, const SettingValue& value) {
  const Text name = setting_name(*value.place.row, value.place.slot);
  if (value.place.row->kind == SettingKind::text)
    return WriteTextSetting(registry, name, value.text) == 0;
  return WriteNumberSetting(registry, name, value.number) == 0;
}

std::string nearest_word(std::string_view word, const std::vector<std::string>& names) {
  std::string nearest;
  std::size_t least = std::max<std::size_t>(2, word.size() / 3) + 1;
  for (const std::string& name : names) {
    const std::size_t here = difference(lower(word), lower(name));
    if (here >= least) continue;
    least = here;
    nearest = name;
  }
  return nearest;
}

}  // namespace orvello
