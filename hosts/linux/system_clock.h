// The machine's clock and zone, or a clock that stands still at a given local time.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ports/clock.h"

namespace orvello {

class SystemClock : public Clock {
 public:
  // With `fixed` the clock always shows that local time; the zone stays the machine's.
  explicit SystemClock(std::optional<LocalSeconds> fixed = std::nullopt);

  SystemTime local_time() const override;
  UtcSeconds utc_now() const override;
  std::string zone_name() const override;
  LocalSeconds to_local(UtcSeconds utc) const override;
  UtcSeconds to_utc(LocalSeconds local) const override;
  std::optional<Zone> known_zone(std::string_view name) const override;

 private:
  std::optional<LocalSeconds> fixed_;
  std::vector<std::string> zone_folders_;
};

// The zone's name out of the TZ variable (null: not set) or the target of the system's local-time
// link; empty when neither names a zone.
std::string zone_name_from(const char* tz_variable, const std::string& link_target);

}  // namespace orvello
