#include "settings/profiles.h"

#include <algorithm>
#include <memory>
#include <new>

#include "resources/ids.h"

namespace orvello {
namespace {

constexpr TextView kNotRead = u"Failed to read record 1";

// The names after the prefix, in order of creation.
std::vector<Text> profile_names(const SettingsVolume& volume) {
  std::vector<Text> names;
  const MountedVolume mounted(volume);
  if (!mounted) return names;
  for (const DatabaseInfo& database : volume.databases.enumerate(mounted.id()))
    if (starts_with(database.name, kProfilePrefix))
      names.push_back(database.name.substr(kProfilePrefix.size()));
  return names;
}

}  // namespace

void loadProfile(const SettingsVolume& volume, TextView name, std::vector<Text>& labels) {
  labels.clear();
  if (name == kAllProfile) return;
  const MountedVolume mounted(volume);
  if (!mounted) return;
  std::uint32_t count = 0;
  const OpenDatabase database(
      volume.databases,
      OpenCreateDB_profile(volume, mounted.id(), Text(kProfilePrefix).append(name), count));
  visit_records(volume, database.handle(), count, kNotRead, [&](const Record& record, RecordId) {
    if (const Text* label = text_of(record, kCategoryLabel))
      labels.push_back(cut(*label, kLabelLength));
    return true;
  });
}

void saveProfileInfoToDatabase(const SettingsVolume& volume, TextView database_name,
                               const ListSelection& list_box) {
  const std::size_t chosen = list_box.selected.size();
  const std::unique_ptr<int[]> indices(new (std::nothrow) int[chosen]);
  if (!indices) {
    volume.boxes.show(u"saveProfileInfoToDatabase: Could not allocate intIndexArray memory!",
                      u"Error", BoxIcon::warning);
    return;
  }
  std::copy(list_box.selected.begin(), list_box.selected.end(), indices.get());
  const MountedVolume mounted(volume);
  if (!mounted) return;
  std::uint32_t count = 0;
  const OpenDatabase database(volume.databases,
                              OpenCreateDB_profile(volume, mounted.id(), database_name, count));
  for (std::size_t i = 0; i < chosen; ++i) {
    const Text& label = list_box.items.at(static_cast<std::size_t>(indices[i]));
    const RecordId written =
        volume.databases.write(database.handle(), 0, {{kCategoryLabel, label}});
    reportWriteError(volume, written);
    if (written == 0) return;
  }
}

void deleteSettingsDatabase(const SettingsVolume& volume, TextView name) {
  const MountedVolume mounted(volume);
  if (!mounted) return;
  const auto found = volume.databases.enumerate(mounted.id());
  const bool present = std::any_of(found.begin(), found.end(),
                                   [&](const DatabaseInfo& one) { return one.name == name; });
  if (present && !volume.databases.remove(mounted.id(), name))
    volume.boxes.show(u"error in CeDeleteDatabaseEx!", u"Error");
}

int listProfilesInMenu(const SettingsVolume& volume, TextView active_name,
                       std::vector<MenuItem>& menu) {
  for (MenuItem& item : menu)
    if (item.command == kCommandFirstProfile) item.checked = active_name == kAllProfile;
  if (menu.size() > 2) menu.resize(2);
  int count = 0;
  for (const Text& name : profile_names(volume)) {
    MenuItem item;
    item.command = kCommandFirstProfile + 1 + static_cast<std::uint32_t>(count++);
    item.text = cut(name, kProfileNameLength);
    item.checked = item.text == active_name;
    menu.push_back(std::move(item));
  }
  return count;
}

void listProfilesInCombo(const SettingsVolume& volume, ChoiceList& combo_box) {
  combo_box = {profile_names(volume), {}, -1};
}

bool profileAllowsCategory(const SettingsRecord& settings, TextView label) {
  if (settings.activeprofilename == kAllProfile) return true;
  const auto& labels = settings.profile_labels;
  return std::find(labels.begin(), labels.end(), label) != labels.end();
}

}  // namespace orvello
