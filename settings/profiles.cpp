#include "settings/profiles.h"

#include <algorithm>
#include <memory>
#include <new>

#include "resources/ids.h"
#include "resources/strings.h"
#include "settings/program_files.h"

namespace orvello {
namespace {

constexpr TextView kNotRead = u"Failed to read record 1";

// What is on the volume; nothing when it could not be read, which has been shown.
std::optional<std::vector<DatabaseInfo>> databases_on(const SettingsVolume& volume,
                                                      const MountedVolume& mounted) {
  if (!mounted) return std::nullopt;
  auto all = volume.databases.enumerate(mounted.id());
  if (!all) volume.boxes.show(kNotRead, u"error");
  return all;
}

// Mounts, opens and hands over a profile; false when that or the operation failed.
template <typename Operation>
bool with_profile(const SettingsVolume& volume, TextView name, Operation operation) {
  const MountedVolume mounted(volume);
  if (!mounted) return false;
  std::uint32_t count = 0;
  const OpenDatabase database(
      volume.databases,
      OpenCreateDB_profile(volume, mounted.id(), Text(kProfilePrefix).append(name), count));
  return database && operation(database.handle());
}

}  // namespace

std::optional<std::vector<Text>> stored_profiles(const SettingsVolume& volume) {
  const MountedVolume mounted(volume);
  const auto all = databases_on(volume, mounted);
  if (!all) return std::nullopt;
  std::vector<Text> names;
  for (const DatabaseInfo& database : *all)
    if (starts_with(database.name, kProfilePrefix))
      names.push_back(database.name.substr(kProfilePrefix.size()));
  return names;
}

bool loadProfile(const SettingsVolume& volume, TextView name, std::vector<Text>& labels) {
  labels.clear();
  if (name == kAllProfile) return true;
  return with_profile(volume, name, [&](DatabaseHandle database) {
    return visit_records(volume, database, kNotRead, [&](const Record& record, RecordId) {
      if (const Text* label = text_of(record, kCategoryLabel))
        labels.push_back(cut(*label, kLabelLength));
      return true;
    });
  });
}

bool load_active_profile(const SettingsVolume& volume, SettingsRecord& settings) {
  const Text& name = settings.activeprofilename;
  settings.profile_labels.clear();
  settings.profile_unread = false;
  if (name == kAllProfile) return true;
  // Looked for first, since opening would make it: an empty one, which hides everything.
  const auto names = FileExists(volume.files, settings_volume_path(volume.files))
                         ? stored_profiles(volume)
                         : std::vector<Text>();
  const bool there = names && std::find(names->begin(), names->end(), name) != names->end();
  if (there && loadProfile(volume, name, settings.profile_labels)) return true;
  settings.profile_unread = true;
  volume.boxes.show(format(load_string(names && !there ? StringId::box_profile_gone
                                                       : StringId::box_profile_unread,
                                       volume.boxes),
                           name),
                    load_string(StringId::box_error, volume.boxes), BoxIcon::warning);
  return false;
}

bool saveProfileInfoToDatabase(const SettingsVolume& volume, TextView database_name,
                               const ListSelection& list_box) {
  const std::size_t chosen = list_box.selected.size();
  const std::unique_ptr<int[]> indices(new (std::nothrow) int[chosen]);
  if (!indices) {
    volume.boxes.show(u"saveProfileInfoToDatabase: Could not allocate intIndexArray memory!",
                      u"Error", BoxIcon::warning);
    return false;
  }
  std::copy(list_box.selected.begin(), list_box.selected.end(), indices.get());
  NewDatabase profile{Text(database_name), kCategoryLabel, {}};
  for (std::size_t i = 0; i < chosen; ++i)
    profile.records.push_back(
        {{kCategoryLabel, list_box.items.at(static_cast<std::size_t>(indices[i]))}});
  const MountedVolume mounted(volume);
  if (!mounted) return false;
  if (volume.databases.replace(mounted.id(), {profile.name}, {profile})) return true;
  reportWriteError(volume, 0);
  return false;
}

bool deleteSettingsDatabase(const SettingsVolume& volume, TextView name) {
  const MountedVolume mounted(volume);
  const auto all = databases_on(volume, mounted);
  if (!all) return false;
  const bool present = std::any_of(all->begin(), all->end(),
                                   [&](const DatabaseInfo& one) { return one.name == name; });
  if (!present || volume.databases.remove(mounted.id(), name)) return true;
  volume.boxes.show(u"error in CeDeleteDatabaseEx!", u"Error");
  return false;
}

bool add_profile_label(const SettingsVolume& volume, TextView profile, TextView label) {
  return with_profile(volume, profile, [&](DatabaseHandle database) {
    const RecordId written = volume.databases.write(database, 0, {{kCategoryLabel, Text(label)}});
    reportWriteError(volume, written);
    return written != 0;
  });
}

bool remove_profile_label(const SettingsVolume& volume, TextView profile, TextView label) {
  return with_profile(volume, profile, [&](DatabaseHandle database) {
    return erase_labelled(volume, database, kNotRead, label);
  });
}

int listProfilesInMenu(const SettingsVolume& volume, TextView active_name,
                       std::vector<MenuItem>& menu) {
  for (MenuItem& item : menu)
    if (item.command == kCommandFirstProfile) item.checked = active_name == kAllProfile;
  if (menu.size() > 2) menu.resize(2);
  int count = 0;
  for (const Text& name : stored_profiles(volume).value_or(std::vector<Text>())) {
    MenuItem item;
    item.command = kCommandFirstProfile + 1 + static_cast<std::uint32_t>(count++);
    item.text = cut(name, kProfileNameLength);
    item.checked = item.text == active_name;
    menu.push_back(std::move(item));
  }
  return count;
}

bool listProfilesInCombo(const SettingsVolume& volume, ChoiceList& combo_box) {
  const auto names = stored_profiles(volume);
  combo_box = {names.value_or(std::vector<Text>()), {}, -1};
  return names.has_value();
}

bool profileAllowsCategory(const SettingsRecord& settings, TextView label) {
  if (settings.activeprofilename == kAllProfile || settings.profile_unread) return true;
  const auto& labels = settings.profile_labels;
  return std::find(labels.begin(), labels.end(), label) != labels.end();
}

}  // namespace orvello
