#include "cli/settings_lists.h"

#include <algorithm>

#include "settings/category_props.h"
#include "settings/pretexts.h"
#include "settings/profiles.h"
#include "settings/program_files.h"
#include "settings/registry_access.h"

namespace orvello {
namespace {

void add_text(std::vector<Text>& texts, const Record& record, PropertyId id, std::size_t longest) {
  const Text* stored = text_of(record, id);
  Text text = stored ? cut(*stored, longest) : Text();
  if (!text.empty() && std::ranges::find(texts, text) == texts.end())
    texts.push_back(std::move(text));
}

void add_category(std::vector<CategoryProp>& all, const Record& record) {
  CategoryProp prop = category_prop_of(record);
  prop.color &= 0xFFFFFF;
  const auto same = [&](const CategoryProp& other) { return other.label == prop.label; };
  if (!prop.label.empty() && std::ranges::none_of(all, same)) all.push_back(std::move(prop));
}

NewDatabase database_of(TextView name, PropertyId property, const std::vector<Text>& texts) {
  NewDatabase database{Text(name), property, {}};
  for (const Text& text : texts) database.records.push_back({{property, text}});
  return database;
}

std::vector<NewDatabase> databases_of(const SettingsLists& lists) {
  std::vector<NewDatabase> databases;
  if (lists.subjects)
    databases.push_back(database_of(kSubjectPretexts, kPretextText, *lists.subjects));
  if (lists.locations)
    databases.push_back(database_of(kLocationPretexts, kPretextText, *lists.locations));
  if (lists.categories) {
    NewDatabase categories{Text(kCategoryProps), kCategoryLabel, {}};
    for (const CategoryProp& one : *lists.categories)
      categories.records.push_back({{kCategoryLabel, one.label},
                                    {kCategoryColor, one.color},
                                    {kCategoryFlag, static_cast<std::int16_t>(one.flag)}});
    databases.push_back(std::move(categories));
  }
  for (const auto& [name, labels] : lists.profiles)
    databases.push_back(database_of(Text(kProfilePrefix) + name, kCategoryLabel, labels));
  return databases;
}

std::vector<Text> names_of(const std::vector<NewDatabase>& databases) {
  std::vector<Text> names;
  for (const NewDatabase& one : databases) names.push_back(one.name);
  return names;
}

// Mounted as long as this lives; what fails is told by the caller.
struct QuietMount {
  QuietMount(RecordDatabases& on, TextView path) : databases(on), id(on.mount(path)) {}
  ~QuietMount() {
    if (id != kInvalidVolume) databases.unmount(id);
  }
  QuietMount(const QuietMount&) = delete;
  QuietMount& operator=(const QuietMount&) = delete;
  RecordDatabases& databases;
  const VolumeId id;
};

}  // namespace

Result<SettingsLists> VolumeLists::read() const {
  const Text path = settings_volume_path(files_);
  SettingsLists lists;
  if (!FileExists(files_, path)) return lists;
  const auto failure = [&] {
    return Result<SettingsLists>::failure(name_ + " cannot be read: " + reason() + ".");
  };
  const QuietMount mount(databases_, path);
  if (mount.id == kInvalidVolume) return failure();
  const auto all = databases_.enumerate(mount.id);
  if (!all) return failure();
  for (const DatabaseInfo& one : *all)
    if (!read_list(mount.id, one, lists)) return failure();
  return lists;
}

bool VolumeLists::read_list(VolumeId volume, const DatabaseInfo& database,
                            SettingsLists& lists) const {
  const bool texts = database.name == kSubjectPretexts || database.name == kLocationPretexts;
  const bool categories = database.name == kCategoryProps;
  const bool profile = starts_with(database.name, kProfilePrefix);
  if (!texts && !categories && !profile) return true;
  const OpenDatabase opened(
      databases_, databases_.open(volume, database.name, texts ? kPretextText : kCategoryLabel));
  if (!opened) return false;
  std::vector<Text> read_texts;
  std::vector<CategoryProp> read_categories;
  const bool whole = each_record(databases_, opened.handle(), [&](const Record& record, RecordId) {
    if (categories)
      add_category(read_categories, record);
    else
      add_text(read_texts, record, texts ? kPretextText : kCategoryLabel,
               texts ? kLongestText : kLabelLength);
    return true;
  });
  if (!whole) return false;
  if (categories)
    lists.categories = std::move(read_categories);
  else if (texts)
    (database.name == kSubjectPretexts ? lists.subjects : lists.locations) = std::move(read_texts);
  else if (const Text name = database.name.substr(kProfilePrefix.size());
           !name.empty() && name.size() <= kProfileNameLength && name != kAllProfile)
    lists.profiles.emplace_back(name, std::move(read_texts));
  return true;
}

Result<int> VolumeLists::replace(const SettingsLists& lists) const {
  const std::vector<NewDatabase> databases = databases_of(lists);
  return replace(names_of(databases), databases);
}

Result<int> VolumeLists::put_back(const SettingsLists& before,
                                  const SettingsLists& replaced) const {
  const std::vector<Text> names = names_of(databases_of(replaced));
  std::vector<NewDatabase> databases = databases_of(before);
  std::erase_if(databases, [&](const NewDatabase& one) {
    return std::ranges::find(names, one.name) == names.end();
  });
  return replace(names, databases);
}

Result<int> VolumeLists::replace(const std::vector<Text>& removed,
                                 const std::vector<NewDatabase>& databases) const {
  if (removed.empty()) return 0;
  const QuietMount mount(databases_, settings_volume_path(files_));
  if (mount.id != kInvalidVolume && databases_.replace(mount.id, removed, databases))
    return static_cast<int>(databases.size());
  return Result<int>::failure(name_ + " cannot be written: " + reason() + ".");
}

std::string VolumeLists::reason() const {
  switch (databases_.last_error()) {
    case DatabaseError::sharing_violation:
      return "another program holds it";
    case DatabaseError::damaged:
      return "it is damaged";
    case DatabaseError::disk_full:
      return "the disk is full";
    case DatabaseError::access_denied:
      return "permission denied";
    case DatabaseError::not_enough_memory:
      return "there is not enough memory";
    default:
      break;
  }
  return "error " + std::to_string(static_cast<unsigned>(databases_.last_error()));
}

}  // namespace orvello
