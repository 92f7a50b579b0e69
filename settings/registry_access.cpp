#include "settings/registry_access.h"

namespace orvello {
namespace {

constexpr RegistryRoot kRoot = RegistryRoot::classes_root;
constexpr std::size_t kTextBytes = (kLongestText + 1) * 2;
constexpr std::size_t kLongestModulePath = 198;
constexpr TextView kDeviceHandler = u":MSPOUTLOOK calendar";

TextView up_to_terminator(TextView text) { return text.substr(0, text.find(u'\0')); }

// What a reader gets that does not look at the type, as 16-bit units with a text's terminator.
Text units_of(const RegistryValue& value) {
  if (value.is_text) return value.text + u'\0';
  return {static_cast<char16_t>(value.number & 0xFFFF), static_cast<char16_t>(value.number >> 16)};
}

int read_bytes(Registry& registry, TextView name, std::uint32_t& value) {
  const auto key = registry.open(kRoot, kSettingsKey);
  if (!key) return 0;
  const auto found = key->query(name);
  if (!found) return 1;
  Text units = units_of(*found);
  if (units.size() * 2 > sizeof value) return 1;
  units.resize(2);
  value = units[0] | static_cast<std::uint32_t>(units[1]) << 16;
  return 0;
}

int write_value(Registry& registry, TextView name, const RegistryValue& value) {
  const auto key = registry.open(kRoot, kSettingsKey);
  return key && key->set(name, value) ? 0 : 1;
}

}  // namespace

bool EnsureSettingsKey(Registry& registry) {
  const auto key = registry.create(kRoot, kSettingsKey);
  return key && key->flush();
}

bool FlushSettings(Registry& registry) {
  const auto key = registry.open(kRoot, kSettingsKey);
  return key && key->flush();
}

int ReadNumberSetting(Registry& registry, TextView name, std::int32_t& value) {
  auto bytes = static_cast<std::uint32_t>(value);
  const int result = read_bytes(registry, name, bytes);
  value = static_cast<std::int32_t>(bytes);
  return result;
}

int WriteNumberSetting(Registry& registry, TextView name, std::int32_t value) {
  return write_value(registry, name, {false, static_cast<std::uint32_t>(value), {}});
}

std::optional<RegistryValue> stored_value(Registry& registry, TextView name) {
  const auto key = registry.open(kRoot, kSettingsKey);
  return key ? key->query(name) : std::nullopt;
}

int ReadTextSetting(Registry& registry, TextView name, Text& text) {
  text.clear();
  const auto found = stored_value(registry, name);
  if (!found) return 1;
  const Text units = units_of(*found);
  if (units.size() * 2 > kTextBytes) return 1;
  text = up_to_terminator(units);
  return 0;
}

int WriteTextSetting(Registry& registry, TextView name, TextView text) {
  return write_value(registry, name, {true, 0, cut(up_to_terminator(text), kLongestText)});
}

int ReadItemColor(Registry& registry, TextView name, Color& color) {
  return read_bytes(registry, name, color);
}

int WriteItemColor(Registry& registry, TextView name, Color color) {
  return write_value(registry, name, {false, color, {}});
}

int SetDeviceCalendarHandler(Registry& registry, const Files& files, DeviceShell& shell,
                             int enable) {
  const auto key = registry.open(RegistryRoot::local_machine, kShellCalendarKey);
  if (!key) return 1;
  const Text program = enable == 1
                           ? u"\"" + cut(files.module_file_name(), kLongestModulePath) + u"\""
                           : Text(kDeviceHandler);
  const bool written = key->set(u"1", {true, 0, program});
  const bool kept = key->flush();
  const bool heard = shell.start_this_program(enable == 1);
  return written && kept && heard ? 0 : 1;
}

bool IsDeviceCalendarHandler(const DeviceShell& shell, int stored) {
  return shell.starts_this_program().value_or(stored == 1);
}

void EnsureShellCalendarKey(Registry& registry) {
  if (registry.open(RegistryRoot::local_machine, kShellCalendarKey)) return;
  const auto key = registry.create(RegistryRoot::local_machine, kShellCalendarKey);
  if (key) key->flush();
}

}  // namespace orvello
