// The machine's clock and zone, or a clock that stands still at a given local time. Zones come
// from the database that is built in. Who carries the machine elsewhere, or sets its zone, is
// followed while the program runs.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "ports/clock.h"

namespace orvello {

// What the machine says of its zone, and the zone that is: by its name in the database where that
// has the same time as the machine's own clock, else without a name, as the machine's rules say.
DYNAMIC_TIME_ZONE_INFORMATION machine_zone();
Zone device_zone(const DYNAMIC_TIME_ZONE_INFORMATION& told);

// What the machine's rules say of each year, without a name.
Zone zone_of_rules(const TIME_ZONE_INFORMATION& rules);

class Win32Clock : public Clock {
 public:
  using ZoneSource = std::function<DYNAMIC_TIME_ZONE_INFORMATION()>;
  // With `fixed` the clock always shows that local time.
  explicit Win32Clock(std::optional<LocalSeconds> fixed = std::nullopt,
                      ZoneSource source = machine_zone);
  // With a zone of its own.
  Win32Clock(std::optional<LocalSeconds> fixed, Zone zone)
      : fixed_(fixed), zone_(std::make_shared<const Zone>(std::move(zone))) {}

  SystemTime local_time() const override;
  UtcSeconds utc_now() const override;
  std::string zone_name() const override;
  LocalSeconds to_local(UtcSeconds utc) const override { return zone()->from_utc(utc); }
  UtcSeconds to_utc(LocalSeconds local) const override { return zone()->to_utc(local); }
  std::optional<Zone> known_zone(std::string_view name) const override;

 private:
  std::shared_ptr<const Zone> zone() const;
  void follow_machine() const;

  std::optional<LocalSeconds> fixed_;
  ZoneSource source_;
  mutable std::mutex lock_;
  mutable DYNAMIC_TIME_ZONE_INFORMATION told_{};  // what zone_ was made of
  mutable std::shared_ptr<const Zone> zone_;
};

}  // namespace orvello
