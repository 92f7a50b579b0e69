// The machine's clock and zone, or a clock that stands still at a given local time. Zones come
// from the database that is built in.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "ports/clock.h"

namespace orvello {

// The zone that the machine is in when this is called: by its name in the database where that has
// the same time as the machine's own clock, else without a name, as the machine's rules say.
Zone device_zone();

// What the machine's rules say of each year, without a name.
Zone zone_of_rules(const TIME_ZONE_INFORMATION& rules);

class Win32Clock : public Clock {
 public:
  // With `fixed` the clock always shows that local time.
  explicit Win32Clock(std::optional<LocalSeconds> fixed = std::nullopt, Zone zone = device_zone())
      : fixed_(fixed), zone_(std::move(zone)) {}

  SystemTime local_time() const override;
  UtcSeconds utc_now() const override;
  std::string zone_name() const override { return zone_.name(); }
  LocalSeconds to_local(UtcSeconds utc) const override { return zone_.from_utc(utc); }
  UtcSeconds to_utc(LocalSeconds local) const override { return zone_.to_utc(local); }
  std::optional<Zone> known_zone(std::string_view name) const override;

 private:
  std::optional<LocalSeconds> fixed_;
  Zone zone_;
};

}  // namespace orvello
