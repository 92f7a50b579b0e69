// What some stores have no place for, such as recurrences on a device that knows patterns alone: an
// import leaves it out and says so, in place of failing as a whole.
#pragma once

#include "store/record_store.h"

namespace orvello {

class RecordLimits {
 public:
  virtual ~RecordLimits() = default;
  // Whether put() could take the record, if nothing else is in the way.
  virtual bool has_place_for(const AppointmentRecord& record) = 0;
};

// A store that knows no such limits has a place for everything.
inline bool has_place_for(RecordStore& store, const AppointmentRecord& record) {
  auto* const limits = dynamic_cast<RecordLimits*>(&store);
  return !limits || limits->has_place_for(record);
}

}  // namespace orvello
