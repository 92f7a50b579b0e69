// Start-up's loading of every preference.
#pragma once

#include "ports/clock.h"
#include "ports/locale.h"
#include "ports/registry.h"
#include "settings/settings_record.h"
#include "settings/volume.h"

namespace orvello {

// Called once, after the main window exists (the first-use message belongs to it) and before the
// first view opens.
void LoadSettings(SettingsRecord& settings, Registry& registry, const SettingsVolume& volume,
                  const Clock& clock, const LocaleData& locale, bool low_resolution);

// Again after the Times page changed timeA to timeD.
void compute_time_fractions(SettingsRecord& settings);

void load_locale_conventions(SettingsRecord& settings, const LocaleData& locale);

}  // namespace orvello
