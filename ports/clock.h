// The device's clock and its time zone. Called on any thread.
#pragma once

#include <string>

#include "calendar/calendar_date.h"
#include "calendar/zone.h"

namespace orvello {

class Clock {
 public:
  virtual ~Clock() = default;
  virtual SystemTime local_time() const = 0;
  virtual UtcSeconds utc_now() const = 0;
  // The device's zone: its name ("Europe/Berlin", "" when unknown) and the local reading of a
  // moment.
  virtual std::string zone_name() const = 0;
  virtual LocalSeconds to_local(UtcSeconds utc) const = 0;
  virtual UtcSeconds to_utc(LocalSeconds local) const = 0;
};

}  // namespace orvello
