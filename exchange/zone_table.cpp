#include "exchange/zone_table.h"

#include <libical/ical.h>

#include <algorithm>

#include "base/hash.h"
#include "calendar/rule_text.h"
#include "calendar/zone_file.h"
#include "exchange/date_values.h"
#include "exchange/zone_names.h"

namespace orvello {
namespace {

// The last moments of a rule are written in UTC, an onset is local to the offset before it.
void make_local(Rule& rule, int offset_from) {
  if (rule.until && rule.until_is_utc) *rule.until += offset_from;
  rule.until_is_utc = false;
}

void read_dates(const Property& property, Observance& observance) {
  for (const std::string_view one : split_values(property.value, ','))
    if (const auto date = parse_date(one.substr(0, one.find('/'))))
      observance.dates.push_back(date->local + (date->utc ? observance.offset_from : 0));
}

std::optional<Observance> read_observance(const Component& part) {
  const Property* start = part.find("DTSTART");
  const Property* from = part.find("TZOFFSETFROM");
  const Property* to = part.find("TZOFFSETTO");
  if (!start || !to) return std::nullopt;
  const auto date = parse_date(start->value);
  const auto offset_to = parse_utc_offset(trimmed(to->value));
  const auto offset_from = from ? parse_utc_offset(trimmed(from->value)) : offset_to;
  if (!date || !offset_to || !offset_from) return std::nullopt;
  Observance observance;
  observance.offset_from = *offset_from;
  observance.offset_to = *offset_to;
  observance.start = date->local + (date->utc ? *offset_from : 0);
  return observance;
}

// What the calendar library has, for a device without a database.
std::vector<Observance> builtin_observances(const std::string& place) {
  icaltimezone* zone = icaltimezone_get_builtin_timezone(place.c_str());
  icalcomponent* component = zone ? icaltimezone_get_component(zone) : nullptr;
  if (!component) return {};
  char* text = icalcomponent_as_ical_string_r(component);
  ParsedComponent parsed;
  ProblemList ignored{""};
  std::vector<Observance> observances;
  if (text && parsed.parse(text, 1)) observances = read_observances(parsed.root(), ignored);
  icalmemory_free_buffer(text);
  return observances;
}

// Files describe zones for a few years, by rules of another year or by half; what they cannot do
// without saying something else is to give a zone offsets that it never has.
bool may_mean(const std::vector<Observance>& observances, const Zone& known) {
  const auto moment = [](int year) { return utc_at_offset(midnight_of(day_of(year, 1, 1)), 0); };
  const auto claimed = Zone("", observances).offsets_between(moment(1971), moment(2038));
  auto real = known.offsets_between(moment(1700), moment(2100));
  // Some files give the mean time of before there were zones.
  const auto earliest =
      static_cast<int>(known.from_utc(moment(1700)) - local_at_offset(moment(1700), 0));
  real.insert(std::upper_bound(real.begin(), real.end(), earliest), earliest);
  return std::includes(real.begin(), real.end(), claimed.begin(), claimed.end());
}

std::string variant_name(const std::string& tzid, const Zone& zone) {
  return tzid + "#" + StableHash().add(zone.definition()).text(12);
}

}  // namespace

std::vector<Observance> read_observances(const Component& vtimezone, ProblemList& problems) {
  std::vector<Observance> observances;
  for (const Component& part : vtimezone.children) {
    if (!part.named("STANDARD") && !part.named("DAYLIGHT")) continue;
    auto observance = read_observance(part);
    if (!observance) {
      problems.add(part.line, "part of a time zone without a usable date or offset; left out");
      continue;
    }
    std::vector<Rule> rules;
    for (const Property& property : part.properties) {
      if (property.named("RDATE")) read_dates(property, *observance);
      if (!property.named("RRULE")) continue;
      Result<Rule> rule = parse_rule(trimmed(property.value));
      if (!rule) {
        problems.add(property.line, "time zone rule: " + rule.reason());
        continue;
      }
      make_local(*rule, observance->offset_from);
      rules.push_back(*rule);
    }
    std::sort(observance->dates.begin(), observance->dates.end());
    if (!rules.empty()) observance->rule = rules.front();
    observances.push_back(*observance);
    for (std::size_t i = 1; i < rules.size(); ++i) {
      observance->dates.clear();
      observance->rule = rules[i];
      observances.push_back(*observance);
    }
  }
  return observances;
}

void ZoneTable::start_calendar() {
  constexpr std::size_t kMostKept = 500;
  found_.clear();
  defined_.clear();
  if (known_.size() + stored_.size() < kMostKept) return;
  known_.clear();
  stored_.clear();
}

void ZoneTable::define(const Component& vtimezone, ProblemList& problems) {
  const Property* tzid = vtimezone.find("TZID");
  const std::string name = tzid ? tzid_text(tzid->value) : std::string();
  if (name.empty()) {
    problems.add(vtimezone.line, "time zone without TZID");
    return;
  }
  Definition definition{read_observances(vtimezone, problems), {}};
  if (definition.observances.empty()) {
    problems.add(vtimezone.line, "time zone without observances: " + name.substr(0, 80));
    return;
  }
  if (const Property* place = vtimezone.find("X-LIC-LOCATION"))
    definition.place = tzid_text(place->value);
  defined_[name] = std::move(definition);
}

const Zone* ZoneTable::find(std::string_view tzid) {
  const auto found = found_.find(tzid);
  if (found != found_.end()) return found->second;
  const std::string name(tzid);
  return found_[name] = look_up(name);
}

const Zone* ZoneTable::find_named(const std::string& name) {
  if (name == "UTC") return utc();
  const Zone* zone = known(name);
  return zone ? zone : stored(name);
}

const Zone* ZoneTable::look_up(const std::string& tzid) {
  const auto defined = defined_.find(tzid);
  const Zone* zone = known_by(tzid);
  if (defined != defined_.end()) {
    if (!zone) zone = known_by(defined->second.place);
    if (!zone || !may_mean(defined->second.observances, *zone)) return own(tzid, defined->second);
  }
  if (!zone) zone = stored(tzid);
  if (zone) {
    // Kept for a device without a database.
    const Zone* kept = zone == &utc_ || !writes_ ? zone : stored(zone->name());
    if (!kept || kept->observances() != zone->observances()) keep(*zone);
    return zone;
  }
  const auto offset = offset_in_name(tzid);
  if (!offset) return nullptr;
  if (*offset == 0) return utc();
  const LocalSeconds start = midnight_of(day_of(1970, 1, 1));
  return keep(Zone("UTC" + utc_offset_text(*offset), {{start, *offset, *offset, {}, {}}}));
}

// By whatever name another program may give it.
const Zone* ZoneTable::known_by(std::string_view tzid) {
  if (is_utc_name(tzid)) return utc();
  // A name that tells an offset means no town that never had it.
  std::optional<int> offset;
  if (tzid.starts_with('(')) offset = offset_in_name(tzid);
  for (const std::string& name : zone_name_candidates(tzid)) {
    if (is_utc_name(name)) return utc();
    const Zone* zone = known(name);
    if (!zone) continue;
    if (!offset || may_mean({{{}, *offset, *offset, {}, {}}}, *zone)) return zone;
  }
  return nullptr;
}

const Zone* ZoneTable::known(const std::string& place) {
  if (!is_zone_name(place)) return nullptr;
  const auto [slot, added] = known_.try_emplace(place);
  if (!added) return slot->second.get();
  auto zone = clock_.known_zone(place);
  if (!zone)
    if (auto observances = builtin_observances(place); !observances.empty()) {
      // What an earlier import kept comes from a database.
      const Zone* kept = stored(place);
      zone = kept ? *kept : Zone(place, std::move(observances));
    }
  if (zone) slot->second = std::make_unique<Zone>(std::move(*zone));
  return slot->second.get();
}

// Two files may mean different things by one TZID, and one may mean what no device means by it: the
// second gets a name of its own, so that the appointments of the first stay where they are.
const Zone* ZoneTable::own(const std::string& tzid, const Definition& definition) {
  Zone zone(tzid, definition.observances);
  if (!is_utc_name(tzid) && !known(tzid)) {
    const Zone* before = stored(tzid);
    if (!before) return keep(std::move(zone));
    if (before->observances() == zone.observances()) return before;
  }
  const std::string name = variant_name(tzid, zone);
  const Zone* before = stored(name);
  return before ? before : keep(Zone(name, definition.observances));
}

const Zone* ZoneTable::stored(const std::string& name) {
  const auto [slot, added] = stored_.try_emplace(name);
  if (!added) return slot->second.get();
  auto zone = store_.zone(name);
  failed_ |= !zone;
  if (zone && *zone) slot->second = std::make_unique<Zone>(std::move(**zone));
  return slot->second.get();
}

const Zone* ZoneTable::keep(Zone zone) {
  // What the store could not read again must not get into it.
  if (!Zone::parse(zone.definition())) return nullptr;
  failed_ |= writes_ && !store_.put_zone(zone);
  auto& slot = stored_[zone.name()];
  slot = std::make_unique<Zone>(std::move(zone));
  return slot.get();
}

std::string vtimezone_text(const Zone& zone, std::string_view tzid) {
  std::string text = "BEGIN:VTIMEZONE\r\n";
  append_folded(text, "TZID:" + escape_text(tzid));
  for (const Observance& part : zone.observances()) {
    const std::string kind = part.offset_to > part.offset_from ? "DAYLIGHT" : "STANDARD";
    text += "BEGIN:" + kind + "\r\nDTSTART:" + moment_text(part.start) + "\r\n";
    text += "TZOFFSETFROM:" + utc_offset_text(part.offset_from) + "\r\n";
    text += "TZOFFSETTO:" + utc_offset_text(part.offset_to) + "\r\n";
    if (part.rule) {
      Rule rule = *part.rule;
      if (rule.until && !rule.until_is_date) {
        *rule.until -= part.offset_from;
        rule.until_is_utc = true;
      }
      append_folded(text, "RRULE:" + rule_text(rule));
    }
    std::string dates;
    for (const LocalSeconds date : part.dates)
      dates += (dates.empty() ? "RDATE:" : ",") + moment_text(date);
    if (!dates.empty()) append_folded(text, dates);
    text += "END:" + kind + "\r\n";
  }
  return text + "END:VTIMEZONE\r\n";
}

}  // namespace orvello
