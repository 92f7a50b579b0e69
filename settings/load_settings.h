// Start-up's loading of every preference.
#pragma once

#include "ports/clock.h"
#include "ports/locale.h"
#include "ports/registry.h"
#include "settings/settings_record.h"
#include "settings/volume.h"

namespace orvello {

// In the registry: 1 from the first use on, until the person has seen the greeting.
inline constexpr TextView kGreetingDue = u"greeting";

// Called once, before the first view opens. The first use makes the settings volume with the
// ready-made texts, all or none: a process that dies leaves that to the next start.
// On a dark desktop it takes the dark colours, unless some were chosen already.
void LoadSettings(SettingsRecord& settings, Registry& registry, const SettingsVolume& volume,
                  const Clock& clock, const LocaleData& locale, bool low_resolution,
                  bool dark_desktop = false);

// Again after the Times page changed timeA to timeD.
void compute_time_fractions(SettingsRecord& settings);

void load_locale_conventions(SettingsRecord& settings, const LocaleData& locale);

}  // namespace orvello
