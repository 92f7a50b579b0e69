#include "store/embedded/sqlite_record_databases.h"

#include "ports/record_order.h"
#include "store/embedded/sqlite/transaction.h"

namespace orvello {
namespace {

RecordProperty property_from(Statement& row, int column) {
  RecordProperty property;
  property.id = static_cast<PropertyId>(row.number(column));
  switch (property_type(property.id)) {
    case kTypeShort:
      property.value = static_cast<std::int16_t>(row.number(column + 1));
      break;
    case kTypeLong:
      property.value = static_cast<std::int32_t>(row.number(column + 1));
      break;
    default:
      property.value = row.utf16(column + 1);
  }
  return property;
}

bool write_property(SqliteVolume& volume, RecordId id, const RecordProperty& property) {
  auto insert = volume.connection().use("INSERT OR REPLACE INTO properties VALUES(?1, ?2, ?3)");
  insert->bind(1, id).bind(2, property.id);
  if (const auto* text = std::get_if<Text>(&property.value))
    insert->bind_utf16(3, *text);
  else if (const auto* number = std::get_if<std::int32_t>(&property.value))
    insert->bind(3, *number);
  else
    insert->bind(3, std::get<std::int16_t>(property.value));
  return insert->run();
}

}  // namespace

bool SqliteRecordDatabases::fail(DatabaseError reason) {
  error_ = reason;
  return false;
}

SqliteVolume* SqliteRecordDatabases::volume_of(VolumeId id) {
  error_ = DatabaseError::none;
  const auto found = volumes_.find(id);
  if (found != volumes_.end()) return found->second.get();
  error_ = DatabaseError::invalid_parameter;
  if (id != kObjectStore) return nullptr;
  auto opened = SqliteVolume::open(object_store_path_, patience_, error_);
  if (!opened) return nullptr;
  return (volumes_[kObjectStore] = std::move(opened)).get();
}

SqliteRecordDatabases::Handle* SqliteRecordDatabases::handle_of(DatabaseHandle database) {
  const auto found = handles_.find(database);
  error_ = found == handles_.end() ? DatabaseError::invalid_parameter : DatabaseError::none;
  return found == handles_.end() ? nullptr : &found->second;
}

VolumeId SqliteRecordDatabases::mount(TextView path) {
  error_ = DatabaseError::invalid_parameter;
  if (path.empty()) return kInvalidVolume;
  auto opened = SqliteVolume::open(path_of_(path), patience_, error_);
  // A path to a file that is no volume is a wrong parameter, and so people are told of it.
  if (!opened && error_ == DatabaseError::damaged) error_ = DatabaseError::invalid_parameter;
  if (!opened) return kInvalidVolume;
  volumes_[next_id_] = std::move(opened);
  return next_id_++;
}

bool SqliteRecordDatabases::unmount(VolumeId volume) {
  if (volume == kObjectStore || volumes_.count(volume) == 0)
    return fail(DatabaseError::invalid_parameter);
  std::erase_if(handles_, [&](const auto& entry) { return entry.second.volume_id == volume; });
  volumes_.erase(volume);
  error_ = DatabaseError::none;
  return true;
}

std::optional<std::vector<DatabaseInfo>> SqliteRecordDatabases::enumerate(VolumeId volume) {
  SqliteVolume* place = volume_of(volume);
  if (!place) return std::nullopt;
  std::vector<DatabaseInfo> all;
  auto query = place->connection().use(
      "SELECT name, id, (SELECT count(*) FROM records WHERE database = databases.id)"
      " FROM databases ORDER BY id");
  const bool read = query->each([&](Statement& row) {
    all.push_back({row.utf16(0), static_cast<std::uint32_t>(row.number(1)),
                   static_cast<std::uint32_t>(row.number(2))});
  });
  if (!read) return fail_for(*place), std::nullopt;
  return all;
}

// Inside the change of the caller.
bool SqliteRecordDatabases::add_database(SqliteVolume& volume, TextView name,
                                         PropertyId sort_property) {
  if (name.empty()) return fail(DatabaseError::invalid_parameter);
  auto insert = volume.connection().use(
      "INSERT OR IGNORE INTO databases(name, sort_property) VALUES(?1, ?2)");
  if (!insert->bind_utf16(1, name).bind(2, sort_property).run()) return fail_for(volume);
  return volume.connection().changed_rows() > 0 || fail(DatabaseError::already_exists);
}

bool SqliteRecordDatabases::create(VolumeId volume, TextView name, PropertyId sort_property) {
  return create_all(volume, {{Text(name), sort_property, {}}});
}

bool SqliteRecordDatabases::replace(VolumeId volume, const std::vector<Text>& removed,
                                    const std::vector<NewDatabase>& databases) {
  SqliteVolume* place = volume_of(volume);
  if (!place) return false;
  SqliteTransaction change(place->connection(), SqliteTransaction::Kind::write);
  if (!change) return fail_for(*place);
  for (const Text& name : removed) {
    auto erase = place->connection().use("DELETE FROM databases WHERE name = ?1");
    if (!erase->bind_utf16(1, name).run()) return fail_for(*place);
  }
  for (const NewDatabase& one : databases) {
    if (!add_database(*place, one.name, one.sort_property)) return false;
    const std::int64_t database = place->connection().last_row();
    for (const Record& record : one.records)
      if (add_record(*place, database, record) == 0) return false;
  }
  return change.commit() || fail_for(*place);
}

bool SqliteRecordDatabases::remove(VolumeId volume, TextView name) {
  SqliteVolume* place = volume_of(volume);
  if (!place) return false;
  SqliteTransaction change(place->connection(), SqliteTransaction::Kind::write);
  if (!change) return fail_for(*place);
  auto erase = place->connection().use("DELETE FROM databases WHERE name = ?1");
  if (!erase->bind_utf16(1, name).run()) return fail_for(*place);
  if (place->connection().changed_rows() == 0) return fail(DatabaseError::file_not_found);
  return change.commit() || fail_for(*place);
}

DatabaseHandle SqliteRecordDatabases::open(VolumeId volume, TextView name,
                                           PropertyId sort_property) {
  SqliteVolume* place = volume_of(volume);
  if (!place) return kInvalidDatabase;
  Handle handle{place, volume, 0, {}, 0};
  auto named = place->connection().use("SELECT id FROM databases WHERE name = ?1");
  const bool read =
      named->bind_utf16(1, name).each([&](Statement& row) { handle.database = row.number(0); });
  if (!read || handle.database == 0) {
    fail(read ? DatabaseError::file_not_found : place->reason());
    return kInvalidDatabase;
  }
  if (!sort(handle, sort_property)) return kInvalidDatabase;
  handles_.emplace(next_id_, std::move(handle));
  return next_id_++;
}

// The file's own collation compares bytes, which is not the order of UTF-16 units.
bool SqliteRecordDatabases::sort(Handle& handle, PropertyId sort_property) {
  std::vector<std::pair<RecordId, Record>> keys;
  auto query = handle.volume->connection().use(
      "SELECT r.id, p.property, p.value FROM records r LEFT JOIN properties p"
      " ON p.record = r.id AND p.property = ?1 WHERE r.database = ?2 ORDER BY r.id");
  const bool read =
      query->bind(1, sort_property).bind(2, handle.database).each([&](Statement& row) {
        keys.push_back({static_cast<RecordId>(row.number(0)), {}});
        if (!row.is_null(1)) keys.back().second.push_back(property_from(row, 1));
      });
  if (!read) return fail_for(*handle.volume);
  if (sort_property != 0)
    std::stable_sort(keys.begin(), keys.end(), [&](const auto& a, const auto& b) {
      return comes_before(a.second, b.second, sort_property);
    });
  for (const auto& key : keys) handle.order.push_back(key.first);
  return true;
}

void SqliteRecordDatabases::close(DatabaseHandle database) { handles_.erase(database); }

std::optional<DatabaseInfo> SqliteRecordDatabases::info(DatabaseHandle database) {
  const Handle* handle = handle_of(database);
  if (!handle) return std::nullopt;
  const auto all = enumerate(handle->volume_id);
  if (!all) return std::nullopt;
  for (const DatabaseInfo& one : *all)
    if (one.object_id == handle->database) return one;
  return fail(DatabaseError::file_not_found), std::nullopt;
}

bool SqliteRecordDatabases::seek_first(DatabaseHandle database) {
  Handle* handle = handle_of(database);
  if (handle) handle->next = 0;
  return handle != nullptr;
}

bool SqliteRecordDatabases::read_next(DatabaseHandle database, std::optional<ReadRecord>& next) {
  next.reset();
  Handle* handle = handle_of(database);
  if (!handle) return false;
  while (handle->next < handle->order.size()) {
    ReadRecord found{handle->order[handle->next++], {}};
    auto query = handle->volume->connection().use(
        "SELECT property, value FROM properties WHERE record = ?1");
    const bool read = query->bind(1, found.id).each([&](Statement& row) {
      found.properties.push_back(property_from(row, 0));
    });
    if (!read) return fail_for(*handle->volume);
    // Another process may have deleted it since the opening.
    if (found.properties.empty()) continue;
    next = std::move(found);
    break;
  }
  return true;
}

// Inside the change of the caller; 0 on failure.
RecordId SqliteRecordDatabases::add_record(SqliteVolume& volume, std::int64_t database,
                                           const Record& properties) {
  if (properties.empty() || !well_formed(properties))
    return fail(DatabaseError::invalid_parameter), 0;
  auto insert = volume.connection().use(
      "INSERT INTO records(database) SELECT id FROM databases WHERE id = ?1");
  if (!insert->bind(1, database).run()) return fail_for(volume), 0;
  if (volume.connection().changed_rows() == 0) return fail(DatabaseError::file_not_found), 0;
  const auto id = static_cast<RecordId>(volume.connection().last_row());
  return write_properties(volume, id, properties) ? id : 0;
}

bool SqliteRecordDatabases::write_properties(SqliteVolume& volume, RecordId id,
                                             const Record& properties) {
  for (const RecordProperty& property : properties)
    if (!write_property(volume, id, property)) return fail_for(volume);
  return true;
}

RecordId SqliteRecordDatabases::write(DatabaseHandle database, RecordId id,
                                      const Record& properties) {
  Handle* handle = handle_of(database);
  if (!handle) return 0;
  if (properties.empty() || !well_formed(properties))
    return fail(DatabaseError::invalid_parameter), 0;
  SqliteVolume& volume = *handle->volume;
  SqliteTransaction change(volume.connection(), SqliteTransaction::Kind::write);
  if (!change) return fail_for(volume), 0;
  if (id == 0) {
    id = add_record(volume, handle->database, properties);
    if (id == 0) return 0;
  } else {
    bool known = false;
    auto query = volume.connection().use("SELECT 1 FROM records WHERE id = ?1 AND database = ?2");
    const bool read =
        query->bind(1, id).bind(2, handle->database).each([&](Statement&) { known = true; });
    if (!read) return fail_for(volume), 0;
    if (!known) return fail(DatabaseError::invalid_parameter), 0;
    if (!write_properties(volume, id, properties)) return 0;
  }
  return change.commit() ? id : (fail_for(volume), 0);
}

bool SqliteRecordDatabases::erase(DatabaseHandle database, RecordId id) {
  Handle* handle = handle_of(database);
  if (!handle) return false;
  SqliteVolume& volume = *handle->volume;
  SqliteTransaction change(volume.connection(), SqliteTransaction::Kind::write);
  if (!change) return fail_for(volume);
  auto erase = volume.connection().use("DELETE FROM records WHERE id = ?1 AND database = ?2");
  if (!erase->bind(1, id).bind(2, handle->database).run()) return fail_for(volume);
  if (volume.connection().changed_rows() == 0) return fail(DatabaseError::invalid_parameter);
  return change.commit() || fail_for(volume);
}

}  // namespace orvello
