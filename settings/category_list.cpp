#include "settings/category_list.h"

#include <algorithm>

#include "ports/calendar_store.h"
#include "settings/category_text.h"

namespace orvello {
namespace {

constexpr TextView kError = u"Error";

constexpr TextView kNotRead = u"Handle Read Failure";

// False when a folder could not be read.
bool read_folders(const FolderText& folder_text, std::vector<Text>& entries) {
  Text joined;
  bool read = true;
  for (const int folder : {kFolderCalendar, kFolderTasks, kFolderContacts}) {
    const auto text = folder_text(folder);
    if (!text) read = false;
    if (!text || text->empty()) continue;
    if (!joined.empty()) joined += u',';
    joined += *text;
  }
  if (joined.empty()) return read;
  std::replace(joined.begin(), joined.end(), u'\n', u',');
  for (const Text& piece : split(joined, u',')) {
    entries.emplace_back(trimmed(cut(piece, kLabelLength)));
  }
  removeDuplicateLabels(entries);
  return read;
}

// Finds and opens the list; the invalid handle after a message.
DatabaseHandle open_list(const SettingsVolume& device) {
  RecordDatabases& databases = device.databases;
  if (!databases.enumerate(kObjectStore)) {
    device.boxes.show(kNotRead, kError);
    return kInvalidDatabase;
  }
  const DatabaseHandle handle = databases.open(kObjectStore, kCategoriesDatabase, 0);
  if (handle != kInvalidDatabase) return handle;
  const bool no_memory = databases.last_error() == DatabaseError::not_enough_memory;
  device.boxes.show(no_memory ? u"Not enough memory" : u"The database doesn't exist", kError);
  return handle;
}

// Goes through the records until `visit(record, id)` is false. False when one could not be read,
// which has been shown.
template <typename Visit>
[[nodiscard]] bool visit_list(const SettingsVolume& device, DatabaseHandle list, Visit visit) {
  return visit_records(device, list, kNotRead, visit, kError);
}

// On any text of the record, as long as labels are.
bool bears(const Record& record, TextView label) {
  return std::any_of(record.begin(), record.end(), [&](const RecordProperty& property) {
    const Text* text = std::get_if<Text>(&property.value);
    return text && cut(*text, kLabelLength) == label;
  });
}

// The first record of the label; 0 when there is none, nothing after a failure, which has been
// shown.
std::optional<RecordId> find_listed(const SettingsVolume& device, DatabaseHandle list,
                                    TextView label) {
  RecordId found = 0;
  const bool read = visit_list(device, list, [&](const Record& record, RecordId id) {
    if (bears(record, label)) found = id;
    return found == 0;
  });
  return read ? std::optional(found) : std::nullopt;
}

bool in_use(const Record& record) {
  return std::any_of(record.begin(), record.end(), [](const RecordProperty& property) {
    const auto* count = std::get_if<std::int16_t>(&property.value);
    return count && *count > 0 &&
           (property.id == kListAppointments || property.id == kListTasks ||
            property.id == kListContacts);
  });
}

bool person_agrees(MessageBoxes& boxes) {
  return boxes.show(
             u"This category label is currently being referenced by an existing Appointment, Task, "
             u"or Contact entry on your device, so the label will be marked for removal",
             u"Info", BoxIcon::warning, BoxButtons::ok_cancel_losing, true) == BoxAnswer::ok;
}

}  // namespace

void CategoryNumbers::count(const Record& record) {
  empty_ = false;
  for (const RecordProperty& property : record) {
    if (property_number(property.id) != property_number(kListNumber)) continue;
    if (const auto* number = std::get_if<std::int16_t>(&property.value))
      largest_ = std::max<std::int32_t>(largest_.value_or(*number), *number);
  }
}

// Two different first numbers, deliberately: 20 in an empty database, 21 in one without numbers.
std::int16_t CategoryNumbers::next() const {
  if (empty_) return 20;
  return static_cast<std::int16_t>(std::min(largest_.value_or(20), 32766) + 1);
}

bool readCategoryList(const SettingsVolume& device, int generation, const FolderText& folder_text,
                      std::vector<Text>& entries) {
  entries.clear();
  if (generation == kListlessGeneration) {
    if (read_folders(folder_text, entries)) return true;
    device.boxes.show(kNotRead, kError);
    return false;
  }
  const OpenDatabase list(device.databases, open_list(device));
  return list && visit_list(device, list.handle(), [&](const Record& record, RecordId) {
           const auto first = std::find_if(record.begin(), record.end(), [](const auto& one) {
             return std::holds_alternative<Text>(one.value);
           });
           entries.push_back(
               first == record.end() ? Text() : cut(std::get<Text>(first->value), kLabelLength));
           return true;
         });
}

int removeCategory(const SettingsVolume& device, TextView label) {
  const OpenDatabase list(device.databases, open_list(device));
  if (!list) return 0;
  const Text wanted = cut(label, kLabelLength);
  RecordId found = 0;
  bool used = false;
  const bool read = visit_list(device, list.handle(), [&](const Record& record, RecordId id) {
    if (!bears(record, wanted)) return true;
    found = id;
    used = in_use(record);
    return false;
  });
  if (!read || found == 0) return 0;
  if (used)
    return person_agrees(device.boxes) &&
           write_reported(device, list.handle(), found, {kListActive, std::int16_t{0}});
  if (device.databases.erase(list.handle(), found)) return 1;
  reportWriteError(device, 0);
  return 0;
}

CategoryAddition add_to_list(const SettingsVolume& device, TextView label) {
  const OpenDatabase list(device.databases, open_list(device));
  if (!list) return CategoryAddition::failed;
  const Text added = cut(label, kLabelLength);
  CategoryNumbers numbers;
  bool present = false;
  const bool read = visit_list(device, list.handle(), [&](const Record& record, RecordId) {
    numbers.count(record);
    present = bears(record, added);
    return !present;
  });
  if (present) return CategoryAddition::present;
  if (!read) return CategoryAddition::failed;
  RecordId id = 0;
  for (const RecordProperty& property : Record{{kListLabel, added},
                                               {kListNumber, numbers.next()},
                                               {kListActive, std::int16_t{1}},
                                               {kListAppointments, std::int16_t{0}},
                                               {kListTasks, std::int16_t{0}},
                                               {kListContacts, std::int16_t{0}}}) {
    if (write_reported(device, list.handle(), id, property)) continue;
    if (id != 0) device.databases.erase(list.handle(), id);  // no half of a label stays
    return CategoryAddition::failed;
  }
  return CategoryAddition::added;
}

int addCategory(const SettingsVolume& device, TextView label) {
  return add_to_list(device, label) == CategoryAddition::present;
}

int renameCategory(const SettingsVolume& device, TextView label, TextView name) {
  const OpenDatabase list(device.databases, open_list(device));
  auto found = list ? find_listed(device, list.handle(), label) : std::nullopt;
  return found.value_or(0) != 0 &&
         write_reported(device, list.handle(), *found, {kListLabel, cut(name, kLabelLength)});
}

bool eraseCategory(const SettingsVolume& device, TextView label) {
  const OpenDatabase list(device.databases, open_list(device));
  const auto found = list ? find_listed(device, list.handle(), label) : std::nullopt;
  if (!found) return false;
  if (*found == 0 || device.databases.erase(list.handle(), *found)) return true;
  reportWriteError(device, 0);
  return false;
}

std::vector<Text> marked_categories(const SettingsVolume& device) {
  std::vector<Text> marked;
  RecordDatabases& databases = device.databases;
  const OpenDatabase list(databases, databases.open(kObjectStore, kCategoriesDatabase, 0));
  const auto keep_marked = [&](const Record& record, RecordId) {
    const Text* label = text_of(record, kListLabel);
    const auto active = std::find_if(record.begin(), record.end(), [](const RecordProperty& one) {
      return one.id == kListActive && one.value == decltype(one.value)(std::int16_t{0});
    });
    if (label && active != record.end()) marked.push_back(cut(*label, kLabelLength));
    return true;
  };
  if (list && !each_record(databases, list.handle(), keep_marked)) marked.clear();
  return marked;
}

}  // namespace orvello
