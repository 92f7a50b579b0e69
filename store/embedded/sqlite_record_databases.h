// Record databases in SQLite files: one a volume, and one for the object store. Every write is a
// transaction of its own, on disk when it returns. Several processes may use a volume at once.
#pragma once

#include <functional>
#include <map>

#include "store/embedded/sqlite_volume.h"

namespace orvello {

class SqliteRecordDatabases : public RecordDatabases {
 public:
  using PathOf = std::function<std::string(TextView)>;
  // `path_of` translates a volume's path as the program writes it.
  SqliteRecordDatabases(std::string object_store_path, PathOf path_of)
      : object_store_path_(std::move(object_store_path)), path_of_(std::move(path_of)) {}

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
  struct Handle {
    SqliteVolume* volume;
    VolumeId volume_id;
    std::int64_t database;
    std::vector<RecordId> order;
    std::size_t next = 0;
  };

  bool fail(DatabaseError reason);
  bool fail_for(const SqliteVolume& volume) { return fail(volume.reason()); }
  SqliteVolume* volume_of(VolumeId id);
  Handle* handle_of(DatabaseHandle database);
  bool add_database(SqliteVolume& volume, TextView name, PropertyId sort_property);
  RecordId add_record(SqliteVolume& volume, std::int64_t database, const Record& properties);
  bool write_properties(SqliteVolume& volume, RecordId id, const Record& properties);
  bool sort(Handle& handle, PropertyId sort_property);

  std::string object_store_path_;
  PathOf path_of_;
  DatabaseError error_ = DatabaseError::none;
  LockPatience patience_;
  std::map<VolumeId, std::unique_ptr<SqliteVolume>> volumes_;
  std::map<DatabaseHandle, Handle> handles_;
  std::uint32_t next_id_ = 1;
};

}  // namespace orvello
