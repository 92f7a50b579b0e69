// Record databases in memory, able to fail on demand.
#pragma once

#include <functional>
#include <map>
#include <set>

#include "ports/record_databases.h"

namespace orvello {

class MemoryRecordDatabases : public RecordDatabases {
 public:
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

  // Failures to come; `none` lets a call through. A locked or damaged volume is one whose mount
  // fails for that reason.
  DatabaseError fail_mount = DatabaseError::none;
  DatabaseError fail_create = DatabaseError::none;
  DatabaseError fail_open = DatabaseError::none;
  DatabaseError fail_write = DatabaseError::none;  // also of erase and remove
  int fail_read_at = -1;                           // that many records can be read after an open
  int fail_read_after = -1;                        // that many reads of any kind still succeed
  int fail_write_after = 0;                        // that many writes still succeed
  int fail_write_times = -1;                       // and so many fail; negative: all

  // Told of the path of a volume file that a mount has created.
  std::function<void(TextView)> on_volume_created;
  bool nothing_open() const { return mounts_.empty() && handles_.empty(); }
  int mounts = 0;

 private:
  struct Database {
    Text name;
    std::map<RecordId, Record> records;  // in order of creation
  };
  struct Volume {
    std::map<std::uint32_t, Database> databases;  // by object id
  };
  struct Handle {
    VolumeId volume;
    std::uint32_t object_id;
    std::vector<RecordId> order;
    std::size_t next = 0;
  };

  bool fail(DatabaseError reason);
  bool refuses_read();
  bool refuses_write();
  RecordId store(Database& database, RecordId id, const Record& properties);
  Volume* volume_of(VolumeId id);
  Database* database_of(DatabaseHandle handle);

  DatabaseError error_ = DatabaseError::none;
  std::map<Text, Volume> volumes_;   // by path
  std::map<VolumeId, Text> mounts_;  // to its path
  Volume object_store_;
  std::map<DatabaseHandle, Handle> handles_;
  std::uint32_t next_id_ = 1;
};

}  // namespace orvello
