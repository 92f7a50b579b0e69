// From the times records hold (floating, in UTC or in a kept zone) to the device's local time.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/result.h"
#include "calendar/zone.h"
#include "ports/clock.h"

namespace orvello {

class DeviceTime {
 public:
  using ZoneSource = std::function<Result<std::optional<Zone>>(std::string_view name)>;
  DeviceTime(const Clock& clock, ZoneSource zones) : clock_(clock), zones_(std::move(zones)) {}

  // The zone of that name; null for floating times and for a zone nobody described, whose times are
  // taken as they stand. Nothing when the store could not read it: then no time may be computed.
  std::optional<const Zone*> zone(const std::string& name);
  void forget_zones() { known_.clear(); }

  // What the device shows for a time in `zone`. A floating time that the device's clock skips is
  // shown at the moved time.
  LocalSeconds shown(LocalSeconds local, const Zone* zone);
  // An item's start and end as the device shows them; an all-day item's days stay as they are.
  struct Span {
    LocalSeconds start;
    LocalSeconds end;
  };
  Span shown(LocalSeconds start, LocalSeconds end, const Zone* zone, bool all_day);
  // The time in `zone` at which the device shows `local`.
  LocalSeconds in_zone(LocalSeconds local, const Zone* zone) const;
  // Whether the device's clock skips a part of that day.
  bool skips_on(Day day);

  // The device may have been carried elsewhere.
  void follow_device_zone();
  const Clock& clock() const { return clock_; }

 private:
  const Clock& clock_;
  ZoneSource zones_;
  std::unordered_map<std::string, std::unique_ptr<Zone>> known_;
  struct KnownDay {
    Day day{0x7FFFFFFF};
    bool skips = false;
  };
  std::array<KnownDay, 512> days_;  // each day has one place; thousands of occurrences ask
  std::string device_zone_;
};

}  // namespace orvello
