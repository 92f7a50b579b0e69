// A lock on a name that the system drops when its holder ends in whatever way: shared by all who
// use something, or held alone by who replaces it.
#pragma once

#include <string>

#include "files/descriptor.h"

namespace orvello {

class FileLock {
 public:
  using Kind = FileHold;
  // Does not wait longer than a moment. Makes the lock's file where there is none; where none can
  // be made, on a disk that is read-only, nobody can replace anything either and it is granted.
  FileLock(const std::string& path, Kind kind);
  bool granted() const { return granted_; }

 private:
  Descriptor file_;
  bool granted_ = false;
};

}  // namespace orvello
