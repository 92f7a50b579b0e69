// Settings, colours, icons, profiles, pretexts and category colours as a text that a person can
// read and edit, in UTF-8 with one value a line:
//
//   ; What stands behind a semicolon is not read.
//   [settings]
//   startmode = 1
//   [colours]
//   itemcolor7 = #ffffff  ; Month view: Date background 1
//   [profile "Work"]
//   "Meetings"
//   [category colours]
//   "Meetings" = #7777ff, flag 0
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/setting_names.h"
#include "settings/settings_record.h"

namespace orvello {

// The lists of the settings volume; nothing where there is no such list.
struct SettingsLists {
  std::optional<std::vector<Text>> subjects, locations;
  std::optional<std::vector<CategoryProp>> categories;
  std::vector<std::pair<Text, std::vector<Text>>> profiles;
  friend bool operator==(const SettingsLists&, const SettingsLists&) = default;
};

struct SettingsDocument {
  std::vector<SettingValue> values;
  SettingsLists lists;
};

// What is said of this device alone, and so is not taken from one to another.
bool of_this_device(const SettingRow& row);

std::string settings_document_text(const SettingsDocument& document);

// Fails with a sentence a fault, each on a line: "NAME:17: there is no setting startmod: ...".
Result<SettingsDocument> parse_settings_document(std::string_view content, const std::string& name);

}  // namespace orvello
