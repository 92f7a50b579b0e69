#include "exchange/moment.h"

#include "exchange/date_values.h"
#include "exchange/zone_names.h"

namespace orvello {

std::optional<Moment> read_moment(const Property& property, std::string_view value,
                                  EventContext& context) {
  const auto date = parse_date(value);
  if (!date) return std::nullopt;
  Moment moment{date->local, date->is_date, nullptr};
  if (date->is_date) return moment;
  if (date->utc) {  // a TZID beside a Z means nothing
    moment.zone = context.zones.utc();
    return moment;
  }
  const auto tzid = tzid_of(property);
  if (!tzid) return moment;
  moment.zone = context.zones.find(*tzid);
  if (!moment.zone && context.zones.first_miss(*tzid))
    context.problems.add(property.line, "time zone \"" + tzid->substr(0, 80) +
                                            "\" is not known; its times are taken as local");
  return moment;
}

UtcSeconds utc_of(const Moment& moment, const Clock& clock) {
  return moment.zone ? moment.zone->to_utc(moment.local) : clock.to_utc(moment.local);
}

LocalSeconds device_local(const Moment& moment, const Clock& clock) {
  return moment.zone ? clock.to_local(moment.zone->to_utc(moment.local)) : moment.local;
}

LocalSeconds reading_at(const Moment& moment, const Moment& reference, const Clock& clock) {
  if (moment.is_date)
    return reference.is_date ? moment.local : moment.local + second_of_day(reference.local);
  LocalSeconds local = moment.local;
  if (moment.zone && !reference.is_date && moment.zone != reference.zone &&
      moment.zone_name() != reference.zone_name()) {
    const UtcSeconds utc = moment.zone->to_utc(moment.local);
    local = reference.zone ? reference.zone->from_utc(utc) : clock.to_local(utc);
  }
  return reference.is_date ? midnight_of(day_of(local)) : local;
}

}  // namespace orvello
