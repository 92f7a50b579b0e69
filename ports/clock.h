// The device's clock, its time zone and what it knows of others. Called on any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

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
  // The zone of that name ("Europe/Berlin") in the device's time-zone database, as the database has
  // it today; nothing where it has none. May read a file: keep the answer.
  virtual std::optional<Zone> known_zone(std::string_view) const { return std::nullopt; }
};

}  // namespace orvello
