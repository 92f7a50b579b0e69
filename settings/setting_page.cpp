// The reference page of the settings, made from their table.
#include "settings/colors.h"
#include "settings/registry_access.h"
#include "settings/setting_table.h"

namespace orvello {
namespace {

std::string name_cell(const SettingRow& row) {
  std::string name = to_utf8(row.name);
  if (row.slots > 1) {
    name.replace(name.find("%d"), 2, "N");
    name += "`, N = 0 to " + std::to_string(row.slots - 1);
    return "`" + name;
  }
  return "`" + name + "`";
}

std::string kind_cell(const SettingRow& row) {
  switch (row.kind) {
    case SettingKind::flag:
      return "flag";
    case SettingKind::color:
      return "colour";
    case SettingKind::text:
      return "text";
    case SettingKind::number:
      break;
  }
  return "number";
}

std::string default_cell(const SettingRow& row) {
  switch (row.rule) {
    case SettingDefault::slot_number:
      return "N";
    case SettingDefault::factory_color:
      return "below";
    case SettingDefault::locale_clock:
      return "the locale's clock";
    case SettingDefault::locale_long_date:
      return "the locale's order + 3";
    case SettingDefault::fixed:
      break;
  }
  if (row.kind != SettingKind::text) return std::to_string(row.default_number);
  return row.default_text.empty() ? "empty" : "`" + to_utf8(row.default_text) + "`";
}

std::string range_cell(const SettingRow& row) {
  switch (row.kind) {
    case SettingKind::text:
      return "up to " + std::to_string(row.most) + " characters";
    case SettingKind::flag:
      return "0 off, 1 on";
    case SettingKind::color:
      return "0x000000 to 0xffffff";
    case SettingKind::number:
      break;
  }
  if (row.most == INT32_MAX) return "from " + std::to_string(row.least);
  return std::to_string(row.least) + " to " + std::to_string(row.most);
}

std::string color_rows() {
  static constexpr const char* kGroups[] = {"Month view", "Day view", "Year view", "Popup schedule",
                                            "Popup notes"};
  std::string page;
  int slot = 0;
  for (const ColorRow& row : color_table())
    page += "| " + std::to_string(slot++) + " | " + kGroups[static_cast<int>(row.group)] + " | " +
            to_utf8(row.label) + " | " + std::to_string(red_of(row.factory)) + ", " +
            std::to_string(green_of(row.factory)) + ", " + std::to_string(blue_of(row.factory)) +
            " |\n";
  return page;
}

}  // namespace

std::string setting_table_as_markdown() {
  std::string page =
      "# Settings\n\n"
      "Made from the table in `settings/`; a test compares the two.\n\n"
      "All values lie under `HKEY_CLASSES_ROOT\\" +
      to_utf8(kSettingsKey) +
      "`: numbers, flags and colours as 32-bit numbers, the rest as texts. A value that is "
      "missing, "
      "or a number outside its range, counts as its default. A slot is a half hour of the day: 0 "
      "is "
      "0:00, 47 is 23:30.\n\n"
      "| Name | Kind | Default | Range | Meaning |\n|---|---|---|---|---|\n";
  for (const SettingRow& row : setting_table())
    page += "| " + name_cell(row) + " | " + kind_cell(row) + " | " + default_cell(row) + " | " +
            range_cell(row) + " | " + row.label + " |\n";
  page += "\n## Colours\n\n| N | Group | Label | Default (red, green, blue) |\n|---|---|---|---|\n";
  return page + color_rows();
}

}  // namespace orvello
