// The device's record databases through the platform's volume calls, in its numbers. What is kept
// must fit it: names of 31 units at most, texts without a null unit; all else is refused as an
// invalid parameter. Volumes are flushed after each write; where that alone fails, the failure is
// told, although what was written may stand. The order of the platform depends on its
// language, so records are ordered here; equal ones stay in the platform's order, which is that of
// creation. A change of several databases is all or nothing as store/cedb/cedb_replacement.h says.
#pragma once

#include <map>

#include "store/cedb/cedb_volume.h"

namespace orvello {

class CedbRecordDatabases : public RecordDatabases {
 public:
  explicit CedbRecordDatabases(CedbCalls calls) : calls_(std::move(calls)) {}
  CedbRecordDatabases(const CedbRecordDatabases&) = delete;
  CedbRecordDatabases& operator=(const CedbRecordDatabases&) = delete;

  DatabaseError last_error() const override { return error_; }
  VolumeId mount(TextView path) override;
  bool unmount(VolumeId volume) override;
  std::optional<std::vector<DatabaseInfo>> enumerate(VolumeId volume) override;
  bool create(VolumeId volume, TextView name, PropertyId sort_property) override;
  bool replace(VolumeId volume, const std::vector<Text>& removed,
               const std::vector<NewDatabase>& databases) override;
  bool remove(VolumeId volume, TextView name) override;
  DatabaseHandle open(VolumeId volume, TextView name, PropertyId sort_property) override;
  void close(DatabaseHandle database) override;
  std::optional<DatabaseInfo> info(DatabaseHandle database) override;
  bool seek_first(DatabaseHandle database) override;
  [[nodiscard]] bool read_next(DatabaseHandle database, std::optional<ReadRecord>& next) override;
  RecordId write(DatabaseHandle database, RecordId id, const Record& properties) override;
  bool erase(DatabaseHandle database, RecordId id) override;

 private:
  struct Place {
    std::unique_ptr<CedbVolume> volume;
    bool settled = false;  // nothing of a change that did not end is left
  };
  struct Handle {
    VolumeId volume;
    CeOid id;
    PropertyId sort_property;
    CedbHandle opened;
    bool loaded = false;
    std::vector<ReadRecord> records;  // those that were read before `end`
    std::size_t next = 0;
    DatabaseError end = DatabaseError::none;
  };
  class Turn;

  bool answer(DatabaseError reason);
  bool settle(Place& place);
  CedbVolume* volume_of(VolumeId id, const Turn& turn);
  Handle* handle_of(DatabaseHandle database);
  void load(Handle& handle);
  void forget(const Handle& changed, RecordId id);

  CedbCalls calls_;
  CedbPatience patience_{calls_};
  DatabaseError error_ = DatabaseError::none;
  std::map<VolumeId, Place> places_;
  std::map<DatabaseHandle, Handle> handles_;  // closed before their volumes are unmounted
  std::uint32_t next_id_ = 1;
};

}  // namespace orvello
