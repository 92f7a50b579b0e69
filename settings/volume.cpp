#include "settings/volume.h"

#include <algorithm>

#include "settings/program_files.h"
#include "settings/settings_record.h"

namespace orvello {
namespace {

constexpr TextView kErrorCaption = u"Error";

// What the two ways of opening say and answer when memory or the creation fails.
struct OpeningFaults {
  TextView no_memory, not_created;
  DatabaseHandle answer;
};

// False when the opening failed in a way that was shown.
bool open_or_create(const SettingsVolume& volume, VolumeId id, TextView name,
                    PropertyId sort_property, const OpeningFaults& faults, DatabaseHandle& handle) {
  RecordDatabases& databases = volume.databases;
  handle = databases.open(id, name, sort_property);
  if (handle != kInvalidDatabase) return true;
  const DatabaseError reason = databases.last_error();
  if (reason == DatabaseError::file_not_found) {
    // Another process may have been quicker: what it created is as good.
    if (!databases.create(id, name, sort_property) &&
        databases.last_error() != DatabaseError::already_exists) {
      volume.boxes.show(faults.not_created, kErrorCaption);
      return false;
    }
    handle = databases.open(id, name, sort_property);
  } else if (reason == DatabaseError::not_enough_memory) {
    volume.boxes.show(faults.no_memory, kErrorCaption);
    return false;
  }
  return true;
}

DatabaseHandle open_counted(const SettingsVolume& volume, VolumeId id, TextView name,
                            PropertyId sort_property, const OpeningFaults& faults,
                            std::uint32_t& record_count) {
  record_count = 0;
  DatabaseHandle handle = kInvalidDatabase;
  if (!open_or_create(volume, id, name, sort_property, faults, handle)) return faults.answer;
  if (handle == kInvalidDatabase) return handle;
  if (const auto info = volume.databases.info(handle)) {
    record_count = info->record_count;
    return handle;
  }
  volume.databases.close(handle);
  return kInvalidDatabase;
}

}  // namespace

DatabaseHandle OpenCreateDB(const SettingsVolume& volume, VolumeId id, TextView name,
                            PropertyId sort_property, std::uint32_t& record_count) {
  return open_counted(volume, id, name, sort_property,
                      {u"Not enough memory!", u"Database creation failed", kInvalidDatabase},
                      record_count);
}

DatabaseHandle OpenCreateDB_profile(const SettingsVolume& volume, VolumeId id, TextView name,
                                    std::uint32_t& record_count) {
  return open_counted(volume, id, name, kCategoryLabel,
                      {u"OpenCreateDB_profile: Not enough memory!",
                       u"OpenCreateDB_profile: Database creation failed", 0},
                      record_count);
}

void reportWriteError(const SettingsVolume& volume, RecordId result) {
  if (result != 0) return;
  switch (volume.databases.last_error()) {
    case DatabaseError::not_enough_memory:
      volume.boxes.show(u"Not enough memory", kErrorCaption);
      break;
    case DatabaseError::invalid_parameter:
      volume.boxes.show(u"Invalid Parameter", kErrorCaption);
      break;
    case DatabaseError::disk_full:
      volume.boxes.show(u"Disk Full", kErrorCaption);
      break;
    case DatabaseError::sharing_violation:
      volume.boxes.show(u"In Use By Another Program", kErrorCaption);
      break;
    case DatabaseError::access_denied:
      volume.boxes.show(u"Access Denied", kErrorCaption);
      break;
    default:
      volume.boxes.show(u"Unknown Error", kErrorCaption);
  }
}

bool write_reported(const SettingsVolume& volume, DatabaseHandle database, RecordId& id,
                    const RecordProperty& property) {
  const RecordId written = volume.databases.write(database, id, {property});
  reportWriteError(volume, written);
  if (written != 0) id = written;
  return written != 0;
}

MountedVolume::MountedVolume(const SettingsVolume& volume)
    : volume_(volume), id_(volume.databases.mount(settings_volume_path(volume.files))) {
  if (id_ != kInvalidVolume) return;
  switch (volume.databases.last_error()) {
    case DatabaseError::disk_full:
      volume.boxes.show(u"Database mount failed: Disk Full", kErrorCaption);
      break;
    case DatabaseError::not_enough_memory:
      volume.boxes.show(u"Database mount failed: Not Enough Memory", kErrorCaption);
      break;
    case DatabaseError::invalid_parameter:
      volume.boxes.show(u"Database mount failed: Invalid Parameter", kErrorCaption);
      break;
    case DatabaseError::sharing_violation:
      volume.boxes.show(u"Database mount failed: In Use By Another Program", kErrorCaption);
      break;
    case DatabaseError::access_denied:
      volume.boxes.show(u"Database mount failed: Access Denied", kErrorCaption);
      break;
    default:  // every other reason stays silent
      break;
  }
}

MountedVolume::~MountedVolume() {
  if (id_ != kInvalidVolume) volume_.databases.unmount(id_);
}

bool erase_labelled(const SettingsVolume& volume, DatabaseHandle database, TextView fault,
                    TextView label) {
  std::vector<RecordId> doomed;
  const bool read = visit_records(volume, database, fault, [&](const Record& record, RecordId id) {
    const Text* stored = text_of(record, kCategoryLabel);
    if (stored && cut(*stored, kLabelLength) == label) doomed.push_back(id);
    return true;
  });
  return read && std::all_of(doomed.begin(), doomed.end(), [&](RecordId id) {
           if (volume.databases.erase(database, id)) return true;
           reportWriteError(volume, 0);
           return false;
         });
}

const Text* text_of(const Record& record, PropertyId id) {
  for (const RecordProperty& property : record)
    if (property.id == id) return std::get_if<Text>(&property.value);
  return nullptr;
}

}  // namespace orvello
