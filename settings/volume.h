// The settings volume: a file of small record databases beside the program. It is mounted for one
// operation at a time and never left mounted. Failures are shown in boxes without an owner, and the
// operation is given up.
#pragma once

#include "ports/files.h"
#include "ports/message_box.h"
#include "ports/record_databases.h"

namespace orvello {

inline constexpr PropertyId kPretextText = 0x000D001F;
inline constexpr PropertyId kCategoryLabel = 0x000A001F;
inline constexpr PropertyId kCategoryColor = 0x000B0003;
inline constexpr PropertyId kCategoryFlag = 0x000C0002;

// What the operations on the volume need of the device.
struct SettingsVolume {
  RecordDatabases& databases;
  MessageBoxes& boxes;
  const Files& files;
};

// Opens a database in the order of `sort_property`, creating it when it is missing. One whose
// number of records cannot be told is not opened.
DatabaseHandle OpenCreateDB(const SettingsVolume& volume, VolumeId id, TextView name,
                            PropertyId sort_property, std::uint32_t& record_count);
// The same for profiles, whose two messages name it and answer 0 instead of the invalid handle.
DatabaseHandle OpenCreateDB_profile(const SettingsVolume& volume, VolumeId id, TextView name,
                                    std::uint32_t& record_count);

// Follows every write: shows why `result` is 0.
void reportWriteError(const SettingsVolume& volume, RecordId result);
// Writes one property into the record, or into a new one whose id it leaves in `id` when that is 0.
// False when it failed, which has been reported.
bool write_reported(const SettingsVolume& volume, DatabaseHandle database, RecordId& id,
                    const RecordProperty& property);

// The volume for as long as this lives; a failed mount has been shown.
class MountedVolume {
 public:
  explicit MountedVolume(const SettingsVolume& volume);
  ~MountedVolume();
  MountedVolume(const MountedVolume&) = delete;
  MountedVolume& operator=(const MountedVolume&) = delete;
  explicit operator bool() const { return id_ != kInvalidVolume; }
  VolumeId id() const { return id_; }

 private:
  const SettingsVolume& volume_;
  VolumeId id_;
};

// A database of the volume for as long as this lives.
class OpenDatabase {
 public:
  OpenDatabase(RecordDatabases& databases, DatabaseHandle handle)
      : databases_(databases), handle_(handle) {}
  ~OpenDatabase() {
    if (*this) databases_.close(handle_);
  }
  OpenDatabase(const OpenDatabase&) = delete;
  OpenDatabase& operator=(const OpenDatabase&) = delete;
  explicit operator bool() const { return handle_ != kInvalidDatabase && handle_ != 0; }
  DatabaseHandle handle() const { return handle_; }

 private:
  RecordDatabases& databases_;
  DatabaseHandle handle_;
};

// Goes through the records until `visit(record, id)` is false. False when one could not be read,
// which has been shown as `fault`: nothing may be saved from what was visited then.
template <typename Visit>
[[nodiscard]] bool visit_records(const SettingsVolume& volume, DatabaseHandle database,
                                 TextView fault, Visit visit, TextView caption = u"error") {
  if (each_record(volume.databases, database, visit)) return true;
  volume.boxes.show(fault, caption);
  return false;
}

// Erases the records with this category label. False after a failure; one to read has been shown as
// `fault`.
bool erase_labelled(const SettingsVolume& volume, DatabaseHandle database, TextView fault,
                    TextView label);

// The text of the record's property, null without one.
const Text* text_of(const Record& record, PropertyId id);

}  // namespace orvello
