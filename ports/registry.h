// A registry: keys under two roots, holding named values. Called on the user-interface thread.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "base/text.h"

namespace orvello {

enum class RegistryRoot { classes_root, local_machine };

// A value as stored: a 32-bit number or a text. Its bytes are what a reader that does not look at
// the type gets: 4 bytes little-endian for a number, UTF-16 with terminator for a text.
struct RegistryValue {
  bool is_text = false;
  std::uint32_t number = 0;
  Text text;
};

// An open key; closing is destruction. Names compare without regard to ASCII case.
class RegistryKey {
 public:
  virtual ~RegistryKey() = default;
  virtual std::optional<RegistryValue> query(TextView name) const = 0;
  virtual bool set(TextView name, const RegistryValue& value) = 0;  // false: could not be written
  // What was set is on disk when this returns true. Closing a key keeps its changes as well, but
  // may write them later.
  virtual bool flush() = 0;
};

class Registry {
 public:
  virtual ~Registry() = default;
  // Why the last flush brought nothing to the disk, a sentence for a person that names the file;
  // empty when it did. What was set is still there then for as long as the registry is, and the
  // next flush tries again.
  virtual Text trouble() const = 0;
  virtual std::unique_ptr<RegistryKey> open(RegistryRoot root, TextView path) = 0;  // null: missing
  virtual std::unique_ptr<RegistryKey> create(RegistryRoot root, TextView path) = 0;  // or opens
};

}  // namespace orvello
