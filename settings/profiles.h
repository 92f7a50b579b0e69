// Profiles: named sets of category labels. While one other than "All" is active, only appointments
// with a category of the set are shown.
#pragma once

#include <optional>

#include "ports/menu_bar.h"
#include "settings/settings_record.h"
#include "settings/volume.h"

namespace orvello {

inline constexpr TextView kProfilePrefix = u"pfile-";

// A list box with several items chosen.
struct ListSelection {
  std::vector<Text> items;
  std::vector<int> selected;  // positions
};

// Replaces `labels` by the profile's, in sort order; "All" has none. False when they could not all
// be read; nothing of an earlier profile is left then.
[[nodiscard]] bool loadProfile(const SettingsVolume& volume, TextView name,
                               std::vector<Text>& labels);
// The same for the profile that is active. One that cannot be read, or that is not on the volume
// any more, hides nothing: every appointment is shown, and the person is told. False then.
bool load_active_profile(const SettingsVolume& volume, SettingsRecord& settings);
// The database is that of the selected labels from then on, whatever it was: in one step, so that
// a profile is never lost halfway. False when it is as it was, which has been shown.
bool saveProfileInfoToDatabase(const SettingsVolume& volume, TextView database_name,
                               const ListSelection& list_box);
// False when it is still there, which has been shown.
bool deleteSettingsDatabase(const SettingsVolume& volume, TextView name);

// The stored ones, in order of creation; nothing when they could not be read, which has been shown.
std::optional<std::vector<Text>> stored_profiles(const SettingsVolume& volume);
// Puts one label into a stored profile, or takes it out. False after a failure, which has been
// shown.
bool add_profile_label(const SettingsVolume& volume, TextView profile, TextView label);
bool remove_profile_label(const SettingsVolume& volume, TextView profile, TextView label);

// Marks the active profile in the menu, whose first two items stay, and lists the others behind
// them in order of creation. Returns how many there are.
int listProfilesInMenu(const SettingsVolume& volume, TextView active_name,
                       std::vector<MenuItem>& menu);
// In order of creation. False when they could not be read, which has been shown; it is empty then.
bool listProfilesInCombo(const SettingsVolume& volume, ChoiceList& combo_box);

// Of one label; letter case counts.
bool profileAllowsCategory(const SettingsRecord& settings, TextView label);

}  // namespace orvello
