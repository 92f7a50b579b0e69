#include "store/device_time.h"

#include "calendar/rule_days.h"

namespace orvello {

std::optional<const Zone*> DeviceTime::zone(const std::string& name) {
  if (name.empty()) return nullptr;
  const auto found = known_.find(name);
  if (found != known_.end()) return found->second.get();
  auto described = zones_(name);
  if (!described) return std::nullopt;
  auto& kept = known_[name];
  if (*described)
    kept = std::make_unique<Zone>(std::move(**described));
  else if (name == "UTC")
    kept = std::make_unique<Zone>();
  return kept.get();
}

LocalSeconds DeviceTime::shown(LocalSeconds local, const Zone* zone) {
  if (local >= to_seconds(kNoDate)) return local;
  if (zone) return clock_.to_local(zone->to_utc(local));
  if (!skips_on(day_of(local))) return local;
  return clock_.to_local(clock_.to_utc(local));
}

DeviceTime::Span DeviceTime::shown(LocalSeconds start, LocalSeconds end, const Zone* zone,
                                   bool all_day) {
  if (all_day) return {start, end};
  const Span span{shown(start, zone), shown(end, zone)};
  // Only the start was moved, past the end.
  return span.end < span.start ? Span{span.start, span.start + (end - start)} : span;
}

LocalSeconds DeviceTime::in_zone(LocalSeconds local, const Zone* zone) const {
  if (!zone || local >= to_seconds(kNoDate)) return local;
  return zone->from_utc(clock_.to_utc(local));
}

bool DeviceTime::skips_on(Day day) {
  KnownDay& known = days_[static_cast<std::uint32_t>(day.number()) % days_.size()];
  if (known.day == day) return known.skips;
  const LocalSeconds midnight = midnight_of(day);
  // A day whose first moment is skipped is short as well: that moment reads as the moved one.
  known.day = day;
  known.skips =
      clock_.to_utc(midnight + kSecondsPerDay) - clock_.to_utc(midnight) < kSecondsPerDay ||
      clock_.to_local(clock_.to_utc(midnight)) != midnight;
  return known.skips;
}

void DeviceTime::follow_device_zone() {
  auto name = clock_.zone_name();
  if (name == device_zone_) return;
  device_zone_ = std::move(name);
  days_.fill({});
}

}  // namespace orvello
