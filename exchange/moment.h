// A moment in the zone its property names.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "calendar/zone.h"
#include "exchange/content_line.h"
#include "exchange/problem_list.h"
#include "exchange/zone_table.h"
#include "ports/clock.h"

namespace orvello {

struct EventContext {
  ZoneTable& zones;
  const Clock& clock;
  ProblemList& problems;
};

struct Moment {
  LocalSeconds local;
  bool is_date = false;
  const Zone* zone = nullptr;  // null: floating
  std::string zone_name() const { return zone ? zone->name() : std::string(); }
};

// `value` is the property's or one of its values. Nothing for a date that does not exist; a zone
// that nobody knows is a problem and leaves the moment floating.
std::optional<Moment> read_moment(const Property& property, std::string_view value,
                                  EventContext& context);

// The reading of `moment` in the zone of `reference`. A floating one is taken to be there already,
// a bare date to have the reference's time of day where that has one.
LocalSeconds reading_at(const Moment& moment, const Moment& reference, const Clock& clock);

UtcSeconds utc_of(const Moment& moment, const Clock& clock);
LocalSeconds device_local(const Moment& moment, const Clock& clock);

}  // namespace orvello
