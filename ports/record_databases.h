// Small record databases on volumes: records of typed properties, read in one sort order. There are
// two kinds of place: a volume file, mounted by path, and the device's own object store, always
// there. Nothing is cached between calls; every write is durable when it returns. User-interface
// thread. Numbers below are the platform's, since callers show them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "base/text.h"

namespace orvello {

// Property identifier: (number << 16) | value type.
using PropertyId = std::uint32_t;
inline constexpr std::uint32_t kTypeShort = 0x0002;
inline constexpr std::uint32_t kTypeLong = 0x0003;
inline constexpr std::uint32_t kTypeText = 0x001F;
constexpr std::uint32_t property_type(PropertyId id) { return id & 0xFFFF; }
constexpr std::uint32_t property_number(PropertyId id) { return id >> 16; }

struct RecordProperty {
  PropertyId id = 0;
  std::variant<std::int16_t, std::int32_t, Text> value;
};
using Record = std::vector<RecordProperty>;

enum class DatabaseError : std::uint32_t {
  none = 0,
  file_not_found = 2,
  not_enough_memory = 8,
  invalid_parameter = 87,
  access_denied = 5,
  disk_full = 112,
  already_exists = 183,
  sharing_violation = 32,  // locked by another process
  damaged = 1393,          // cannot be read; a mount of no volume is an invalid_parameter
};

using VolumeId = std::uint32_t;
inline constexpr VolumeId kInvalidVolume = 0xFFFFFFFF;
inline constexpr VolumeId kObjectStore = 0;  // the device's own store: never mounted or unmounted
using DatabaseHandle = std::uint32_t;
inline constexpr DatabaseHandle kInvalidDatabase = 0xFFFFFFFF;
using RecordId = std::uint32_t;

struct DatabaseInfo {
  Text name;
  std::uint32_t object_id = 0;
  std::uint32_t record_count = 0;
};

struct ReadRecord {
  RecordId id = 0;  // names it for write and erase
  Record properties;
};

// A database that comes into being with its records.
struct NewDatabase {
  Text name;
  PropertyId sort_property = 0;
  std::vector<Record> records;
};

class RecordDatabases {
 public:
  virtual ~RecordDatabases() = default;
  // Every failing call returns its invalid value or false and leaves the reason here. A volume that
  // another process has locked is waited for, but for less than half a second in all.
  virtual DatabaseError last_error() const = 0;

  // Creates a missing volume file; one that may only be read can be mounted for reading.
  virtual VolumeId mount(TextView path) = 0;
  virtual bool unmount(VolumeId volume) = 0;
  // In order of creation; nothing when they could not be read.
  virtual std::optional<std::vector<DatabaseInfo>> enumerate(VolumeId volume) = 0;
  virtual bool create(VolumeId volume, TextView name, PropertyId sort_property) = 0;
  // Removes those of these names that are there, then creates the others with their records: all of
  // it or, also when the process dies, nothing.
  virtual bool replace(VolumeId volume, const std::vector<Text>& removed,
                       const std::vector<NewDatabase>& databases) = 0;
  bool create_all(VolumeId volume, const std::vector<NewDatabase>& databases) {
    return replace(volume, {}, databases);
  }
  virtual bool remove(VolumeId volume, TextView name) = 0;

  // Opens by name, positioned before the first record in the order of `sort_property` (ascending,
  // case-sensitive by UTF-16 units, a missing property first, equal ones in order of creation);
  // 0 keeps the order of creation.
  virtual DatabaseHandle open(VolumeId volume, TextView name, PropertyId sort_property) = 0;
  virtual void close(DatabaseHandle database) = 0;
  virtual std::optional<DatabaseInfo> info(DatabaseHandle database) = 0;
  virtual bool seek_first(DatabaseHandle database) = 0;
  // The next record with all its properties, nothing at the end. False when it could not be read.
  [[nodiscard]] virtual bool read_next(DatabaseHandle database,
                                       std::optional<ReadRecord>& next) = 0;
  // Sets the given properties of record `id`, or of a new record when `id` is 0; returns its id, 0
  // on failure.
  virtual RecordId write(DatabaseHandle database, RecordId id, const Record& properties) = 0;
  virtual bool erase(DatabaseHandle database, RecordId id) = 0;
};

// The way through a database: from where it stands until `visit(properties, id)` is false. False
// when a record could not be read: then there may be more than was visited.
template <typename Visit>
[[nodiscard]] bool each_record(RecordDatabases& databases, DatabaseHandle database, Visit visit) {
  std::optional<ReadRecord> next;
  while (databases.read_next(database, next)) {
    if (!next || !visit(next->properties, next->id)) return true;
  }
  return false;
}

}  // namespace orvello
