// The device's record databases. A device's own programs keep its category list; here nobody else
// does, so it is brought up to date with the calendar before anyone looks at it.
#pragma once

#include "ports/record_databases.h"
#include "store/record_calendar_store.h"

namespace orvello {

// Passes everything on to `databases`. Before the object store is enumerated or its category list
// opened, the list is made if it is missing, labels in use are added, the counts of their uses set,
// and a label marked for removal that nothing uses any more is deleted. Only what differs is
// written, and nothing while the list or the uses could not be read. What cannot be written never
// stands in the way of reading.
class DeviceDatabases : public RecordDatabases {
 public:
  // Without a store (null) the list is only made.
  DeviceDatabases(RecordDatabases& databases, RecordCalendarStore* store)
      : databases_(databases), store_(store) {}

  DatabaseError last_error() const override { return databases_.last_error(); }
  VolumeId mount(TextView path) override { return databases_.mount(path); }
  bool unmount(VolumeId volume) override { return databases_.unmount(volume); }
  std::optional<std::vector<DatabaseInfo>> enumerate(VolumeId volume) override;
  bool create(VolumeId volume, TextView name, PropertyId sort_property) override {
    return databases_.create(volume, name, sort_property);
  }
  bool replace(VolumeId volume, const std::vector<Text>& removed,
               const std::vector<NewDatabase>& databases) override {
    return databases_.replace(volume, removed, databases);
  }
  bool remove(VolumeId volume, TextView name) override { return databases_.remove(volume, name); }
  DatabaseHandle open(VolumeId volume, TextView name, PropertyId sort_property) override;
  void close(DatabaseHandle database) override { databases_.close(database); }
  std::optional<DatabaseInfo> info(DatabaseHandle database) override {
    return databases_.info(database);
  }
  bool seek_first(DatabaseHandle database) override { return databases_.seek_first(database); }
  [[nodiscard]] bool read_next(DatabaseHandle database, std::optional<ReadRecord>& next) override {
    return databases_.read_next(database, next);
  }
  RecordId write(DatabaseHandle database, RecordId id, const Record& properties) override {
    return databases_.write(database, id, properties);
  }
  bool erase(DatabaseHandle database, RecordId id) override {
    return databases_.erase(database, id);
  }

 private:
  void bring_list_up_to_date();

  RecordDatabases& databases_;
  RecordCalendarStore* store_;
  bool fresh_ = false;  // who enumerates opens next: that is one look
};

}  // namespace orvello
