// The reference page of the settings, made from their table.
#include "settings/colors.h"
#include "settings/registry_access.h"
#include "settings/setting_table.h"

namespace orvello {
namespace {

std::string name_cell(const SettingRow& row) {
  std::string name = to_utf8(row.name);
  if (row.count > 1) {
    name.replace(name.find("%d"), 2, "N");
    name += "`, N = 0 to " + std::to_string(row.count - 1);
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

constexpr const char* kGroups[] = {"Month view", "Day view", "Year view", "Popup schedule",
                                   "Popup notes"};

constexpr const char* kMovingSettings = R"(
## Moving settings

`orvello settings export FILE` writes a text in UTF-8 with one value a line, and `orvello settings
import FILE` reads it:

```
; What stands behind a semicolon is not read.
[settings]
startmode = 1
activeprofilename = "Work"
[colours]
itemcolor7 = #ffffff  ; Month view: Date background 1
[icons]
displayicon0 = 12
displayiconstring0 = "Meetings"
[profile "Work"]
"Meetings"
"Travel"
[subject texts]
"Meet with "
[location texts]
"Room 7"
[category colours]
"Meetings" = #7777ff, flag 0  ; flag 1: the colour is not used
```

Names are those of the tables above, whatever the case of their letters, and may stand in any of the
first three sections. Numbers are decimal, colours `#rrggbb`; texts stand between quotation marks, with
`\"`, `\\`, `\n` and `\uXXXX` for what a line cannot hold. Nothing may stand twice.

A setting that is not in the file stays as it is, and so does a list without its section; a list with
one takes the other's place as a whole. `defaultscalendar` and `sendmailcommand` say something about
one device and are neither written nor read.

The whole file is checked first; what is wrong is named with its line, and nothing is changed then. The
lists are replaced in one step, then the settings in another: a process that dies between the two leaves
the new lists with the old settings, and importing again completes it.
)";

std::string color_rows() {
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

std::string setting_meaning(const SettingRow& row, int slot) {
  if (row.kind != SettingKind::color) return row.label;
  const ColorRow& color = color_table()[static_cast<std::size_t>(slot)];
  return std::string(kGroups[static_cast<int>(color.group)]) + ": " + to_utf8(color.label);
}

std::string setting_table_as_markdown() {
  std::string page =
      "# Settings\n\n"
      "Made from the table in `settings/`; a test compares the two.\n\n"
      "All values lie under `HKEY_CLASSES_ROOT\\" +
      to_utf8(kSettingsKey) +
      "`: numbers, flags and colours as 32-bit numbers, the rest as texts. A value that is "
      "missing, of the other type or outside its range counts as its default. A slot is a half "
      "hour "
      "of the day: 0 is 0:00, 47 is 23:30.\n\n"
      "| Name | Kind | Default | Range | Meaning |\n|---|---|---|---|---|\n";
  for (const SettingRow& row : setting_table())
    page += "| " + name_cell(row) + " | " + kind_cell(row) + " | " + default_cell(row) + " | " +
            range_cell(row) + " | " + row.label + " |\n";
  page += "\n## Colours\n\n| N | Group | Label | Default (red, green, blue) |\n|---|---|---|---|\n";
  return page + color_rows() + kMovingSettings;
}

}  // namespace orvello
