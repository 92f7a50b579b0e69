// The few files that the program itself looks at. Paths are the device's: parts joined by "\". A
// host with other paths translates them: "\a\b" is "/a/b" there. User-interface thread.
#pragma once

#include <optional>
#include <string>

#include "base/image.h"
#include "base/text.h"

namespace orvello {

class Files {
 public:
  virtual ~Files() = default;
  // Full path of the program's module: its folder is where the program's files live.
  virtual Text module_file_name() const = 0;
  virtual bool exists(TextView path) const = 0;
  // A device-independent bitmap file; nothing when it is missing or no bitmap.
  virtual std::optional<Image> load_bitmap(TextView path) const = 0;
  // Opens for appending, writes, closes; false when that failed.
  virtual bool append_diagnostic_line(TextView line) = 0;
};

}  // namespace orvello
