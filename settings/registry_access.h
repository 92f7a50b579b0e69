// Single values of the settings key. Each call opens the key, does one thing and closes it. 0 is
// success and 1 failure; no caller reports a failure, since the default it preset stays.
#pragma once

#include "base/color.h"
#include "ports/device_shell.h"
#include "ports/files.h"
#include "ports/registry.h"

namespace orvello {

// Under classes_root, deliberately: neither the user's root nor the machine's.
inline constexpr TextView kSettingsKey = u"Brindlewick\\Orvello";
// Under local_machine: its value "1" names the program that the device starts for its calendar.
inline constexpr TextView kShellCalendarKey = u"SOFTWARE\\Microsoft\\Shell\\RAI\\:MSCALENDAR";
// Characters of a text that can be read: 1024 bytes with the terminator.
inline constexpr std::size_t kLongestText = 511;

// Makes the key; all writers rely on this having run.
bool EnsureSettingsKey(Registry& registry);
bool FlushSettings(Registry& registry);

// `value` is preset to the default and stays when nothing can be read. 0 also when the whole key is
// missing, deliberately; 1 when only the value is. The stored type is not looked at, but more than
// four bytes are a failed read.
int ReadNumberSetting(Registry& registry, TextView name, std::int32_t& value);
int WriteNumberSetting(Registry& registry, TextView name, std::int32_t value);

// As it is stored, whatever its type; nothing when the key or the value is missing.
std::optional<RegistryValue> stored_value(Registry& registry, TextView name);

// Any failure empties `text`, so that a default is put in afterwards and never before.
int ReadTextSetting(Registry& registry, TextView name, Text& text);
int WriteTextSetting(Registry& registry, TextView name, TextView text);

int ReadItemColor(Registry& registry, TextView name, Color& color);
int WriteItemColor(Registry& registry, TextView name, Color color);

// 1 makes this program the device's calendar, anything else restores the device's own: in the
// registry's value, and by what the device's shell goes by. 1 as well when either failed.
int SetDeviceCalendarHandler(Registry& registry, const Files& files, DeviceShell& shell,
                             int enable);
// Whether it is that now, whoever chose so; `stored` (the setting) where that cannot be found out.
bool IsDeviceCalendarHandler(const DeviceShell& shell, int stored);
// Makes the shell's key on a device that comes without one; nothing is written where there is one.
void EnsureShellCalendarKey(Registry& registry);

}  // namespace orvello
