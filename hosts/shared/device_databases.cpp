#include "hosts/shared/device_databases.h"

#include <algorithm>
#include <map>

#include "ports/record_order.h"
#include "settings/category_list.h"
#include "settings/settings_record.h"

namespace orvello {
namespace {

struct ListedLabel {
  RecordId id = 0;
  Text label;
  Record record;
};

using Uses = std::map<Text, CategoryUse>;

// By label as long as the list keeps them; nothing when they could not be read.
std::optional<Uses> uses_of(RecordCalendarStore& store) {
  const std::optional<std::vector<CategoryUse>> counts = store.category_use_counts();
  if (!counts) return std::nullopt;
  Uses uses;
  for (const CategoryUse& use : *counts) {
    CategoryUse& sum = uses[cut(use.label, kLabelLength)];
    sum.appointments += use.appointments;
    sum.tasks += use.tasks;
    sum.contacts += use.contacts;
  }
  return uses;
}

Record counts_of(const CategoryUse& use) {
  const auto fitting = [](int count) { return static_cast<std::int16_t>(std::min(count, 32767)); };
  return {{kListAppointments, fitting(use.appointments)},
          {kListTasks, fitting(use.tasks)},
          {kListContacts, fitting(use.contacts)}};
}

bool marked_for_removal(const Record& record) {
  const RecordProperty* active = find_property(record, kListActive);
  return active && active->value == decltype(active->value)(std::int16_t{0});
}

// False when a record cannot be read.
[[nodiscard]] bool read_list(RecordDatabases& databases, DatabaseHandle list,
                             std::vector<ListedLabel>& labels) {
  return each_record(databases, list, [&](Record& record, RecordId id) {
    const RecordProperty* label = find_property(record, kListLabel);
    const Text* text = label ? std::get_if<Text>(&label->value) : nullptr;
    Text name = text ? cut(*text, kLabelLength) : Text();
    labels.push_back({id, std::move(name), std::move(record)});
    return true;
  });
}

// At most one write for a record; false when it failed.
bool correct(RecordDatabases& databases, DatabaseHandle list, const ListedLabel& listed,
             const Uses& uses) {
  const auto use = uses.find(listed.label);
  if (use == uses.end() && marked_for_removal(listed.record))
    return databases.erase(list, listed.id);
  Record changes;
  for (RecordProperty& count : counts_of(use == uses.end() ? CategoryUse{} : use->second)) {
    const RecordProperty* known = find_property(listed.record, count.id);
    if (!known || known->value != count.value) changes.push_back(std::move(count));
  }
  return changes.empty() || databases.write(list, listed.id, changes) != 0;
}

bool add(RecordDatabases& databases, DatabaseHandle list, const Text& label, std::int16_t number,
         const CategoryUse& use) {
  Record record{{kListLabel, label}, {kListNumber, number}, {kListActive, std::int16_t{1}}};
  for (RecordProperty& count : counts_of(use)) record.push_back(std::move(count));
  return databases.write(list, 0, record) != 0;
}

void correct_list(RecordDatabases& databases, DatabaseHandle list, Uses uses) {
  std::vector<ListedLabel> labels;
  if (!read_list(databases, list, labels)) return;
  CategoryNumbers numbers;
  for (const ListedLabel& listed : labels) {
    numbers.count(listed.record);
    if (!correct(databases, list, listed, uses)) return;
  }
  for (const ListedLabel& listed : labels) uses.erase(listed.label);
  for (const auto& [label, use] : uses) {
    const std::int16_t number = numbers.next();
    if (!add(databases, list, label, number, use)) return;
    numbers.count({{kListNumber, number}});
  }
}

}  // namespace

std::optional<std::vector<DatabaseInfo>> DeviceDatabases::enumerate(VolumeId volume) {
  if (volume == kObjectStore) {
    bring_list_up_to_date();
    fresh_ = true;
  }
  return databases_.enumerate(volume);
}

DatabaseHandle DeviceDatabases::open(VolumeId volume, TextView name, PropertyId sort_property) {
  if (volume == kObjectStore && name == kCategoriesDatabase) {
    if (!fresh_) bring_list_up_to_date();
    fresh_ = false;
  }
  return databases_.open(volume, name, sort_property);
}

void DeviceDatabases::bring_list_up_to_date() {
  DatabaseHandle list = databases_.open(kObjectStore, kCategoriesDatabase, 0);
  if (list == kInvalidDatabase && databases_.last_error() == DatabaseError::file_not_found) {
    databases_.create(kObjectStore, kCategoriesDatabase, 0);
    list = databases_.open(kObjectStore, kCategoriesDatabase, 0);
  }
  if (list == kInvalidDatabase) return;
  // Counts that are not known would let a marked label go that is still in use.
  if (const auto uses = store_ ? uses_of(*store_) : std::nullopt)
    correct_list(databases_, list, *uses);
  databases_.close(list);
}

}  // namespace orvello
