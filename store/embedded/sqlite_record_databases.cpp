#include "store/embedded/sqlite_record_databases.h"

#include "ports/record_order.h"

namespace orvello {
namespace {

RecordProperty property_from(const SqliteQuery& row, int column) {
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
      property.value = row.text(column + 1);
  }
  return property;
}

bool write_property(SqliteVolume& volume, RecordId id, const RecordProperty& property) {
  SqliteQuery insert(volume, "INSERT OR REPLACE INTO properties VALUES(?, ?, ?)");
  insert.bind(0, id).bind(1, property.id);
  if (const auto* text = std::get_if<Text>(&property.value))
    insert.bind(2, TextView(*text));
  else if (const auto* number = std::get_if<std::int32_t>(&property.value))
    insert.bind(2, *number);
  else
    insert.bind(2, std::get<std::int16_t>(property.value));
  return insert.finish();
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
  auto opened = SqliteVolume::open(object_store_path_, error_);
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
  auto opened = SqliteVolume::open(path_of_(path), error_);
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

std::vector<DatabaseInfo> SqliteRecordDatabases::enumerate(VolumeId volume) {
  std::vector<DatabaseInfo> all;
  SqliteVolume* place = volume_of(volume);
  if (!place) return all;
  SqliteQuery rows(*place,
                   "SELECT name, id, (SELECT count(*) FROM records WHERE database = databases.id)"
                   " FROM databases ORDER BY id");
  while (rows.next())
    all.push_back({rows.text(0), static_cast<std::uint32_t>(rows.number(1)),
                   static_cast<std::uint32_t>(rows.number(2))});
  if (rows.failed()) fail_for(*place);
  return all;
}

bool SqliteRecordDatabases::create(VolumeId volume, TextView name, PropertyId sort_property) {
  SqliteVolume* place = volume_of(volume);
  if (!place) return false;
  if (name.empty()) return fail(DatabaseError::invalid_parameter);
  SqliteChange change(*place);
  if (!change) return fail_for(*place);
  SqliteQuery insert(*place, "INSERT OR IGNORE INTO databases(name, sort_property) VALUES(?, ?)");
  if (!insert.bind(0, name).bind(1, sort_property).finish()) return fail_for(*place);
  if (place->changed_rows() == 0) return fail(DatabaseError::already_exists);
  return change.commit() || fail_for(*place);
}

bool SqliteRecordDatabases::remove(VolumeId volume, TextView name) {
  SqliteVolume* place = volume_of(volume);
  if (!place) return false;
  SqliteChange change(*place);
  if (!change) return fail_for(*place);
  SqliteQuery erase(*place, "DELETE FROM databases WHERE name = ?");
  if (!erase.bind(0, name).finish()) return fail_for(*place);
  if (place->changed_rows() == 0) return fail(DatabaseError::file_not_found);
  return change.commit() || fail_for(*place);
}

DatabaseHandle SqliteRecordDatabases::open(VolumeId volume, TextView name,
                                           PropertyId sort_property) {
  SqliteVolume* place = volume_of(volume);
  if (!place) return kInvalidDatabase;
  Handle handle{place, volume, 0, {}, 0};
  {
    SqliteQuery row(*place, "SELECT id FROM databases WHERE name = ?");
    row.bind(0, name);
    if (!row.next()) {
      fail(row.failed() ? place->reason() : DatabaseError::file_not_found);
      return kInvalidDatabase;
    }
    handle.database = row.number(0);
  }
  if (!sort(handle, sort_property)) return kInvalidDatabase;
  handles_.emplace(next_id_, std::move(handle));
  return next_id_++;
}

// The file's own collation compares bytes, which is not the order of UTF-16 units.
bool SqliteRecordDatabases::sort(Handle& handle, PropertyId sort_property) {
  std::vector<std::pair<RecordId, Record>> keys;
  SqliteQuery rows(*handle.volume,
                   "SELECT r.id, p.property, p.value FROM records r LEFT JOIN properties p"
                   " ON p.record = r.id AND p.property = ? WHERE r.database = ? ORDER BY r.id");
  rows.bind(0, sort_property).bind(1, handle.database);
  while (rows.next()) {
    keys.push_back({static_cast<RecordId>(rows.number(0)), {}});
    if (rows.number(1) != 0) keys.back().second.push_back(property_from(rows, 1));
  }
  if (rows.failed()) return fail_for(*handle.volume);
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
  for (DatabaseInfo& one : enumerate(handle->volume_id))
    if (one.object_id == handle->database) return one;
  if (error_ == DatabaseError::none) error_ = DatabaseError::file_not_found;
  return std::nullopt;
}

bool SqliteRecordDatabases::seek_first(DatabaseHandle database) {
  Handle* handle = handle_of(database);
  if (handle) handle->next = 0;
  return handle != nullptr;
}

// Another process may have deleted the record since the opening: then `record` stays empty.
bool SqliteRecordDatabases::read(SqliteVolume& volume, RecordId id, Record& record) {
  SqliteQuery rows(volume, "SELECT property, value FROM properties WHERE record = ?");
  rows.bind(0, id);
  while (rows.next()) record.push_back(property_from(rows, 0));
  return !rows.failed() || fail_for(volume);
}

std::optional<Record> SqliteRecordDatabases::read_next(DatabaseHandle database, RecordId& id) {
  Handle* handle = handle_of(database);
  while (handle && handle->next < handle->order.size()) {
    id = handle->order[handle->next++];
    Record record;
    if (!read(*handle->volume, id, record)) return std::nullopt;
    if (!record.empty()) return record;
  }
  return std::nullopt;
}

RecordId SqliteRecordDatabases::write(DatabaseHandle database, RecordId id,
                                      const Record& properties) {
  Handle* handle = handle_of(database);
  if (!handle) return 0;
  if (properties.empty() || !well_formed(properties))
    return fail(DatabaseError::invalid_parameter), 0;
  SqliteVolume& volume = *handle->volume;
  SqliteChange change(volume);
  if (!change) return fail_for(volume), 0;
  if (id == 0) {
    SqliteQuery insert(volume,
                       "INSERT INTO records(database) SELECT id FROM databases WHERE id = ?");
    if (!insert.bind(0, handle->database).finish()) return fail_for(volume), 0;
    if (volume.changed_rows() == 0) return fail(DatabaseError::file_not_found), 0;
    id = static_cast<RecordId>(volume.last_row_id());
  } else {
    SqliteQuery known(volume, "SELECT 1 FROM records WHERE id = ? AND database = ?");
    known.bind(0, id).bind(1, handle->database);
    if (!known.next())
      return fail(known.failed() ? volume.reason() : DatabaseError::invalid_parameter), 0;
  }
  for (const RecordProperty& property : properties)
    if (!write_property(volume, id, property)) return fail_for(volume), 0;
  return change.commit() ? id : (fail_for(volume), 0);
}

bool SqliteRecordDatabases::erase(DatabaseHandle database, RecordId id) {
  Handle* handle = handle_of(database);
  if (!handle) return false;
  SqliteVolume& volume = *handle->volume;
  SqliteChange change(volume);
  if (!change) return fail_for(volume);
  SqliteQuery erase(volume, "DELETE FROM records WHERE id = ? AND database = ?");
  if (!erase.bind(0, id).bind(1, handle->database).finish()) return fail_for(volume);
  if (volume.changed_rows() == 0) return fail(DatabaseError::invalid_parameter);
  return change.commit() || fail_for(volume);
}

}  // namespace orvello
