#include "cli/settings_commands.h"

#include <algorithm>
#include <ostream>
#include <sstream>

#include "cli/commands.h"
#include "settings/registry_access.h"

namespace orvello {
namespace {

constexpr std::size_t kWidestValue = 24;  // longer ones push what is behind them

int settings_failed(const SettingsHost& host, const std::string& reasons) {
  std::istringstream lines(reasons);
  for (std::string line; std::getline(lines, line);) host.err << "orvello: " << line << "\n";
  return kExitFailure;
}

std::size_t letters_of(const std::string& utf8) {
  return static_cast<std::size_t>(std::ranges::count_if(
      utf8, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string padded(const std::string& text, std::size_t width) {
  const std::size_t letters = letters_of(text);
  return text + std::string(letters < width ? width - letters : 0, ' ') + "  ";
}

std::vector<SettingValue> all_values(const SettingsHost& host) {
  std::vector<SettingValue> values;
  for (const SettingRow& row : setting_table())
    for (int slot = 0; slot < row.count; ++slot)
      values.push_back(value_in(host.registry, {&row, slot}, host.locale));
  return values;
}

int list_settings(const SettingsHost& host) {
  std::vector<std::array<std::string, 4>> rows{{"Name", "Value", "Default", "Meaning"}};
  for (const SettingValue& value : all_values(host))
    rows.push_back({name_of(value.place), shown_quoted(value),
                    shown_quoted(default_of(value.place, host.locale)),
                    setting_meaning(*value.place.row, value.place.slot)});
  std::array<std::size_t, 3> widths{};
  for (const auto& row : rows)
    for (std::size_t i = 0; i < widths.size(); ++i)
      widths[i] = std::min(std::max(widths[i], letters_of(row[i])), kWidestValue);
  for (const auto& row : rows) {
    for (std::size_t i = 0; i < widths.size(); ++i) host.out << padded(row[i], widths[i]);
    host.out << row[3] << "\n";
  }
  return kExitSuccess;
}

int get_setting(const CommandLine& line, const SettingsHost& host) {
  const auto place = find_setting_place(line.setting_name);
  if (!place) return settings_failed(host, place.reason());
  host.out << shown_plainly(value_in(host.registry, *place, host.locale)) << "\n";
  return kExitSuccess;
}

// In one flush: all of them or none.
bool put_values(Registry& registry, const std::vector<SettingValue>& values) {
  const auto key = registry.create(RegistryRoot::classes_root, kSettingsKey);
  return key &&
         std::ranges::all_of(
             values, [&](const SettingValue& value) { return put_value(registry, value); }) &&
         key->flush();
}

int set_setting(const CommandLine& line, const SettingsHost& host) {
  const auto place = find_setting_place(line.setting_name);
  if (!place) return settings_failed(host, place.reason());
  if (place->row->name == u"defaultscalendar")
    return settings_failed(host,
                           "defaultscalendar also changes the desktop: choose it in the "
                           "window, Options, Settings, Options");
  const auto value = parse_setting(*place, line.setting_value);
  if (!value) return settings_failed(host, value.reason());
  if (put_values(host.registry, {*value})) return kExitSuccess;
  return settings_failed(host, to_utf8(host.registry.trouble()));
}

int export_settings(const CommandLine& line, const SettingsHost& host) {
  const auto lists = host.lists.read();
  if (!lists) return settings_failed(host, lists.reason());
  SettingsDocument document{all_values(host), *lists};
  std::erase_if(document.values,
                [](const SettingValue& value) { return of_this_device(*value.place.row); });
  const auto written = host.write_file(line.files[0], settings_document_text(document));
  return written ? kExitSuccess : settings_failed(host, written.reason());
}

bool names_profile(const SettingsLists& lists, const Text& name) {
  return name == kAllProfile ||
         std::ranges::any_of(lists.profiles, [&](const auto& one) { return one.first == name; });
}

int import_settings(const CommandLine& line, const SettingsHost& host) {
  const std::string& file = line.files[0];
  const auto content = host.read_file(file);
  if (!content) return settings_failed(host, content.reason());
  const auto document =
      parse_settings_document(*content, file == "-" ? std::string("standard input") : file);
  if (!document) return settings_failed(host, document.reason() + "\nNothing was changed.");
  const auto before = host.lists.read();
  if (!before) return settings_failed(host, before.reason() + "\nNothing was changed.");
  for (const SettingValue& value : document->values)
    if (value.place.row->name == u"activeprofilename" && !names_profile(*before, value.text) &&
        !names_profile(document->lists, value.text))
      return settings_failed(host, file + ": there is no profile \"" + to_utf8(value.text) +
                                       "\" here or in it\nNothing was changed.");
  const auto replaced = host.lists.replace(document->lists);
  if (!replaced) return settings_failed(host, replaced.reason() + "\nNothing was changed.");
  if (put_values(host.registry, document->values)) {
    host.out << document->values.size() << " settings and " << *replaced << " lists taken over\n";
    return kExitSuccess;
  }
  const auto back = host.lists.put_back(*before, document->lists);
  return settings_failed(
      host, to_utf8(host.registry.trouble()) +
                (back ? "\nNothing was changed."
                      : "\nThe lists were taken over, the settings were not: " + back.reason()));
}

}  // namespace

int run_settings(const CommandLine& line, const SettingsHost& host) {
  using Action = CommandLine::SettingsAction;
  switch (line.settings_action) {
    case Action::get:
      return get_setting(line, host);
    case Action::set:
      return set_setting(line, host);
    case Action::export_file:
      return export_settings(line, host);
    case Action::import_file:
      return import_settings(line, host);
    case Action::list:
      break;
  }
  return list_settings(host);
}

}  // namespace orvello
