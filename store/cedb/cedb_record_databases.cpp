#include "store/cedb/cedb_record_databases.h"

#include <algorithm>

#include "ports/record_order.h"
#include "store/cedb/cedb_records.h"
#include "store/cedb/cedb_replacement.h"

namespace orvello {

// While it lives no other program changes names, or sees them half changed.
class CedbRecordDatabases::Turn {
 public:
  explicit Turn(CedbRecordDatabases& databases) : databases_(databases) {
    const DWORD since = databases.calls_.GetTickCount();
    taken_ =
        databases.calls_.take_turn(0) || databases.calls_.take_turn(databases.patience_.left());
    if (databases.calls_.GetTickCount() != since) databases.patience_.spent(since);
  }
  ~Turn() {
    if (taken_) databases_.calls_.end_turn();
  }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;
  explicit operator bool() const { return taken_; }

 private:
  CedbRecordDatabases& databases_;
  bool taken_;
};

bool CedbRecordDatabases::answer(DatabaseError reason) {
  error_ = reason;
  return reason == DatabaseError::none;
}

bool CedbRecordDatabases::settle(Place& place) {
  if (!place.settled) place.settled = answer(undo_unfinished_change(*place.volume));
  return place.settled;
}

CedbVolume* CedbRecordDatabases::volume_of(VolumeId id, const Turn& turn) {
  answer(DatabaseError::invalid_parameter);
  if (id == kObjectStore && places_.count(id) == 0)
    places_[id].volume = std::make_unique<CedbVolume>(calls_, patience_);
  const auto found = places_.find(id);
  if (found == places_.end()) return nullptr;
  if (!turn) return answer(DatabaseError::sharing_violation), nullptr;
  answer(DatabaseError::none);
  return settle(found->second) ? found->second.volume.get() : nullptr;
}

CedbRecordDatabases::Handle* CedbRecordDatabases::handle_of(DatabaseHandle database) {
  const auto found = handles_.find(database);
  answer(found == handles_.end() ? DatabaseError::invalid_parameter : DatabaseError::none);
  return found == handles_.end() ? nullptr : &found->second;
}

VolumeId CedbRecordDatabases::mount(TextView path) {
  const Turn turn(*this);
  if (!turn) return answer(DatabaseError::sharing_violation), kInvalidVolume;
  Place place{CedbVolume::mount(calls_, patience_, path, error_), false};
  const bool mounted = place.volume && settle(place);
  // A path to what is no sound volume is a wrong parameter, and so people are told of it.
  if (error_ == DatabaseError::damaged || error_ == DatabaseError::file_not_found)
    answer(DatabaseError::invalid_parameter);
  if (!mounted) return kInvalidVolume;
  places_[next_id_] = std::move(place);
  return next_id_++;
}

bool CedbRecordDatabases::unmount(VolumeId volume) {
  const auto found = places_.find(volume);
  if (volume == kObjectStore || found == places_.end())
    return answer(DatabaseError::invalid_parameter);
  std::erase_if(handles_, [&](const auto& entry) { return entry.second.volume == volume; });
  const DatabaseError reason = found->second.volume->unmount();
  places_.erase(found);
  return answer(reason);
}

std::optional<std::vector<DatabaseInfo>> CedbRecordDatabases::enumerate(VolumeId volume) {
  const Turn turn(*this);
  CedbVolume* place = volume_of(volume, turn);
  std::vector<DatabaseInfo> all;
  if (!place || !answer(place->list(all))) return std::nullopt;
  std::erase_if(all, [](const DatabaseInfo& one) { return is_of_change(one.name); });
  return all;
}

bool CedbRecordDatabases::create(VolumeId volume, TextView name, PropertyId sort_property) {
  const Turn turn(*this);
  CedbVolume* place = volume_of(volume, turn);
  CeOid made = 0;
  if (place && is_of_change(name)) return answer(DatabaseError::invalid_parameter);
  return place && answer(place->create(name, sort_property, made)) && answer(place->flush());
}

bool CedbRecordDatabases::replace(VolumeId volume, const std::vector<Text>& removed,
                                  const std::vector<NewDatabase>& databases) {
  const Turn turn(*this);
  CedbVolume* place = volume_of(volume, turn);
  return place && answer(replace_databases(*place, removed, databases, places_[volume].settled));
}

bool CedbRecordDatabases::remove(VolumeId volume, TextView name) {
  const Turn turn(*this);
  CedbVolume* place = volume_of(volume, turn);
  std::vector<DatabaseInfo> all;
  if (!place || !answer(place->list(all))) return false;
  for (const DatabaseInfo& one : all)
    if (one.name == name) return answer(place->remove(one.object_id)) && answer(place->flush());
  return answer(DatabaseError::file_not_found);
}

DatabaseHandle CedbRecordDatabases::open(VolumeId volume, TextView name, PropertyId sort_property) {
  const Turn turn(*this);
  CedbVolume* place = volume_of(volume, turn);
  if (!place) return kInvalidDatabase;
  Handle handle{volume, 0, sort_property, {}, false, {}, 0, DatabaseError::none};
  if (!answer(place->open(name, sort_property, handle.id, handle.opened))) return kInvalidDatabase;
  handles_.emplace(next_id_, std::move(handle));
  return next_id_++;
}

void CedbRecordDatabases::close(DatabaseHandle database) { handles_.erase(database); }

std::optional<DatabaseInfo> CedbRecordDatabases::info(DatabaseHandle database) {
  const Handle* handle = handle_of(database);
  std::optional<DatabaseInfo> found;
  if (!handle || !answer(places_[handle->volume].volume->info(handle->id, found)))
    return std::nullopt;
  if (!found) answer(DatabaseError::file_not_found);
  return found;
}

bool CedbRecordDatabases::seek_first(DatabaseHandle database) {
  Handle* handle = handle_of(database);
  if (!handle) return false;
  // Opened anew it stands before its first record: a seek fails where there is none.
  handle->loaded = false;
  return answer(
      places_[handle->volume].volume->open({}, handle->sort_property, handle->id, handle->opened));
}

void CedbRecordDatabases::load(Handle& handle) {
  handle.loaded = true;
  handle.next = 0;
  handle.end = read_records(calls_, handle.opened.get(), handle.records);
  if (handle.sort_property != 0)
    std::stable_sort(handle.records.begin(), handle.records.end(),
                     [&](const ReadRecord& a, const ReadRecord& b) {
                       return comes_before(a.properties, b.properties, handle.sort_property);
                     });
}

bool CedbRecordDatabases::read_next(DatabaseHandle database, std::optional<ReadRecord>& next) {
  next.reset();
  Handle* handle = handle_of(database);
  if (!handle) return false;
  if (!handle->loaded) load(*handle);
  if (handle->next == handle->records.size()) return answer(handle->end);
  next = handle->records[handle->next++];
  return true;
}

RecordId CedbRecordDatabases::write(DatabaseHandle database, RecordId id,
                                    const Record& properties) {
  Handle* handle = handle_of(database);
  CeOid written = id;
  if (!handle || !answer(write_record(calls_, handle->opened.get(), written, properties))) return 0;
  // Read before it was written: whoever comes to it sees what it is now.
  for (auto& [number, other] : handles_) {
    if (other.volume != handle->volume || other.id != handle->id) continue;
    for (ReadRecord& record : other.records) {
      if (record.id != written) continue;
      for (const RecordProperty& property : properties) {
        std::erase_if(record.properties,
                      [&](const RecordProperty& old) { return old.id == property.id; });
        record.properties.push_back(property);
      }
    }
  }
  return answer(places_[handle->volume].volume->flush()) ? written : 0;
}

bool CedbRecordDatabases::erase(DatabaseHandle database, RecordId id) {
  Handle* handle = handle_of(database);
  if (!handle) return false;
  if (!calls_.CeDeleteRecord(handle->opened.get(), id)) return answer(cedb_reason(calls_));
  forget(*handle, id);
  return answer(places_[handle->volume].volume->flush());
}

void CedbRecordDatabases::forget(const Handle& changed, RecordId id) {
  for (auto& [number, other] : handles_) {
    if (other.volume != changed.volume || other.id != changed.id) continue;
    // Those that were given already count for where it stands.
    const auto at = std::find_if(other.records.begin(), other.records.end(),
                                 [&](const ReadRecord& record) { return record.id == id; });
    if (at == other.records.end()) continue;
    if (at - other.records.begin() < static_cast<std::ptrdiff_t>(other.next)) --other.next;
    other.records.erase(at);
  }
}

}  // namespace orvello
