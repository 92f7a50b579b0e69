#include "hosts/headless/memory_record_databases.h"

#include "ports/record_order.h"

namespace orvello {

bool MemoryRecordDatabases::fail(DatabaseError reason) {
  error_ = reason;
  return false;
}

bool MemoryRecordDatabases::refuses_read() {
  if (fail_read_after < 0) return false;
  if (fail_read_after > 0) {
    --fail_read_after;
    return false;
  }
  error_ = DatabaseError::damaged;
  return true;
}

bool MemoryRecordDatabases::refuses_write() {
  if (fail_write == DatabaseError::none) return false;
  if (fail_write_after > 0) {
    --fail_write_after;
    return false;
  }
  if (fail_write_times == 0) return false;
  if (fail_write_times > 0) --fail_write_times;
  error_ = fail_write;
  return true;
}

MemoryRecordDatabases::Volume* MemoryRecordDatabases::volume_of(VolumeId id) {
  error_ = DatabaseError::none;
  if (id == kObjectStore) return &object_store_;
  const auto found = mounts_.find(id);
  if (found != mounts_.end()) return &volumes_[found->second];
  error_ = DatabaseError::invalid_parameter;
  return nullptr;
}

MemoryRecordDatabases::Database* MemoryRecordDatabases::database_of(DatabaseHandle handle) {
  const auto found = handles_.find(handle);
  if (found == handles_.end()) {
    error_ = DatabaseError::invalid_parameter;
    return nullptr;
  }
  Volume* volume = volume_of(found->second.volume);
  if (!volume) return nullptr;
  const auto database = volume->databases.find(found->second.object_id);
  if (database != volume->databases.end()) return &database->second;
  error_ = DatabaseError::file_not_found;
  return nullptr;
}

VolumeId MemoryRecordDatabases::mount(TextView path) {
  ++mounts;
  error_ = path.empty() ? DatabaseError::invalid_parameter : fail_mount;
  if (error_ != DatabaseError::none) return kInvalidVolume;
  const bool created = volumes_.emplace(path, Volume{}).second;
  if (created && on_volume_created) on_volume_created(path);
  const VolumeId id = next_id_++;
  mounts_.emplace(id, path);
  return id;
}

bool MemoryRecordDatabases::unmount(VolumeId volume) {
  error_ = DatabaseError::none;
  std::erase_if(handles_, [&](const auto& entry) { return entry.second.volume == volume; });
  return mounts_.erase(volume) != 0 || fail(DatabaseError::invalid_parameter);
}

std::optional<std::vector<DatabaseInfo>> MemoryRecordDatabases::enumerate(VolumeId volume) {
  const Volume* place = volume_of(volume);
  if (!place || refuses_read()) return std::nullopt;
  std::vector<DatabaseInfo> all;
  for (const auto& [id, database] : place->databases)
    all.push_back({database.name, id, static_cast<std::uint32_t>(database.records.size())});
  return all;
}

bool MemoryRecordDatabases::create(VolumeId volume, TextView name, PropertyId) {
  Volume* place = volume_of(volume);
  if (!place) return false;
  if (name.empty()) return fail(DatabaseError::invalid_parameter);
  if (fail_create != DatabaseError::none) return fail(fail_create);
  for (const auto& entry : place->databases)
    if (entry.second.name == name) return fail(DatabaseError::already_exists);
  place->databases[next_id_++].name = name;
  return true;
}

bool MemoryRecordDatabases::replace(VolumeId volume, const std::vector<Text>& removed,
                                    const std::vector<NewDatabase>& databases) {
  Volume* place = volume_of(volume);
  if (!place) return false;
  const Volume before = *place;
  for (const Text& name : removed) {
    if (remove(volume, name) || error_ == DatabaseError::file_not_found) continue;
    *place = before;
    return false;
  }
  for (const NewDatabase& one : databases) {
    bool made = create(volume, one.name, one.sort_property) && !refuses_write();
    if (made) {
      Database& database = place->databases.rbegin()->second;
      for (const Record& record : one.records) made = made && store(database, 0, record) != 0;
    }
    if (made) continue;
    *place = before;
    return false;
  }
  return true;
}

bool MemoryRecordDatabases::remove(VolumeId volume, TextView name) {
  Volume* place = volume_of(volume);
  if (!place) return false;
  if (refuses_write()) return false;
  for (auto at = place->databases.begin(); at != place->databases.end(); ++at) {
    if (at->second.name != name) continue;
    place->databases.erase(at);
    return true;
  }
  return fail(DatabaseError::file_not_found);
}

DatabaseHandle MemoryRecordDatabases::open(VolumeId volume, TextView name,
                                           PropertyId sort_property) {
  Volume* place = volume_of(volume);
  if (!place) return kInvalidDatabase;
  error_ = fail_open == DatabaseError::none ? DatabaseError::file_not_found : fail_open;
  if (fail_open != DatabaseError::none || refuses_read()) return kInvalidDatabase;
  for (const auto& [id, database] : place->databases) {
    if (database.name != name) continue;
    Handle handle{volume, id, {}, 0};
    for (const auto& record : database.records) handle.order.push_back(record.first);
    if (sort_property != 0)
      std::stable_sort(handle.order.begin(), handle.order.end(),
                       [&records = database.records, sort_property](RecordId a, RecordId b) {
                         return comes_before(records.at(a), records.at(b), sort_property);
                       });
    error_ = DatabaseError::none;
    handles_.emplace(next_id_, std::move(handle));
    return next_id_++;
  }
  return kInvalidDatabase;
}

void MemoryRecordDatabases::close(DatabaseHandle database) { handles_.erase(database); }

std::optional<DatabaseInfo> MemoryRecordDatabases::info(DatabaseHandle database) {
  const Database* found = database_of(database);
  if (!found || refuses_read()) return std::nullopt;
  return DatabaseInfo{found->name, handles_.at(database).object_id,
                      static_cast<std::uint32_t>(found->records.size())};
}

bool MemoryRecordDatabases::seek_first(DatabaseHandle database) {
  if (!database_of(database)) return false;
  handles_.at(database).next = 0;
  return true;
}

bool MemoryRecordDatabases::read_next(DatabaseHandle database, std::optional<ReadRecord>& next) {
  next.reset();
  const Database* found = database_of(database);
  if (!found || refuses_read()) return false;
  Handle& handle = handles_.at(database);
  if (fail_read_at >= 0 && handle.next >= static_cast<std::size_t>(fail_read_at))
    return fail(DatabaseError::damaged);
  while (!next && handle.next < handle.order.size()) {
    const RecordId id = handle.order[handle.next++];
    const auto record = found->records.find(id);
    if (record != found->records.end()) next = {id, record->second};
  }
  return true;
}

RecordId MemoryRecordDatabases::store(Database& database, RecordId id, const Record& properties) {
  if (properties.empty() || !well_formed(properties) ||
      (id != 0 && database.records.count(id) == 0)) {
    error_ = DatabaseError::invalid_parameter;
    return 0;
  }
  if (id == 0) id = next_id_++;
  Record& record = database.records[id];
  for (const RecordProperty& property : properties) {
    std::erase_if(record, [&](const RecordProperty& old) { return old.id == property.id; });
    record.push_back(property);
  }
  return id;
}

RecordId MemoryRecordDatabases::write(DatabaseHandle database, RecordId id,
                                      const Record& properties) {
  Database* found = database_of(database);
  if (!found || refuses_write()) return 0;
  return store(*found, id, properties);
}

bool MemoryRecordDatabases::erase(DatabaseHandle database, RecordId id) {
  Database* found = database_of(database);
  if (!found) return false;
  if (refuses_write()) return false;
  return found->records.erase(id) != 0 || fail(DatabaseError::invalid_parameter);
}

}  // namespace orvello
