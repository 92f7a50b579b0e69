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

class RecordDatabases {
 public:
  virtual ~RecordDatabases() = default;
  // Every failing call returns its invalid value or false and leaves the reason here.
  virtual DatabaseError last_error() const = 0;

  virtual VolumeId mount(TextView path) = 0;  // creates a missing volume file
  virtual bool unmount(VolumeId volume) = 0;
  virtual std::vector<DatabaseInfo> enumerate(VolumeId volume) = 0;  // in order of creation
  virtual bool create(VolumeId volume, TextView name, PropertyId sort_property) = 0;
  virtual bool remove(VolumeId volume, TextView name) = 0;

  // Opens by name, positioned before the first record in the order of `sort_property` (ascending,
  // case-sensitive by UTF-16 units, a missing property first, equal ones in order of creation);
  // 0 keeps the order of creation.
  virtual DatabaseHandle open(VolumeId volume, TextView name, PropertyId sort_property) = 0;
  virtual void close(DatabaseHandle database) = 0;
  virtual std::optional<DatabaseInfo> info(DatabaseHandle database) = 0;
  virtual bool seek_first(DatabaseHandle database) = 0;
  // The next record with all its properties; `id` names it for write and erase. Nothing at the end
  // (last_error none) or on a failure.
  virtual std::optional<Record> read_next(DatabaseHandle database, RecordId& id) = 0;
  // Sets the given properties of record `id`, or of a new record when `id` is 0; returns its id, 0
  // on failure.
  virtual RecordId write(DatabaseHandle database, RecordId id, const Record& properties) = 0;
  virtual bool erase(DatabaseHandle database, RecordId id) = 0;
};

}  // namespace orvello
