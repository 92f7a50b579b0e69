#include "exchange/zone_table.h"

#include <libical/ical.h>

#include <algorithm>

#include "calendar/rule_text.h"
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

std::optional<std::vector<Observance>> builtin_observances(const std::string& tzid) {
  for (const std::string& name : zone_name_candidates(tzid)) {
    icaltimezone* zone = icaltimezone_get_builtin_timezone(name.c_str());
    icalcomponent* component = zone ? icaltimezone_get_component(zone) : nullptr;
    if (!component) continue;
    char* text = icalcomponent_as_ical_string_r(component);
    ParsedComponent parsed;
    ProblemList ignored{""};
    std::vector<Observance> observances;
    if (text && parsed.parse(text, 1)) observances = read_observances(parsed.root(), ignored);
    icalmemory_free_buffer(text);
    if (!observances.empty()) return observances;
  }
  return std::nullopt;
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

void ZoneTable::define(const Component& vtimezone, ProblemList& problems) {
  const Property* tzid = vtimezone.find("TZID");
  if (!tzid) {
    problems.add(vtimezone.line, "time zone without TZID");
    return;
  }
  std::vector<Observance> observances = read_observances(vtimezone, problems);
  if (observances.empty())
    problems.add(vtimezone.line, "time zone without observances: " + std::string(tzid->value));
  else
    defined_[std::string(trimmed(tzid->value))] = std::move(observances);
}

const Zone* ZoneTable::find(std::string_view tzid) {
  const auto known = known_.find(tzid);
  if (known != known_.end()) return known->second.get();
  const std::string name(tzid);
  std::optional<Zone> zone = look_up(name);
  auto& slot = known_[name];
  if (zone) slot = std::make_unique<Zone>(std::move(*zone));
  return slot.get();
}

const Zone* ZoneTable::find_named(const std::string& name) {
  const auto [slot, added] = named_.try_emplace(name);
  if (!added) return slot->second.get();
  if (auto zone = store_.zone(name)) slot->second = std::make_unique<Zone>(std::move(*zone));
  return slot->second.get();
}

std::optional<Zone> ZoneTable::look_up(const std::string& tzid) {
  if (auto own = own_definition(tzid)) return own;
  if (is_utc_name(tzid)) return Zone();
  if (auto stored = store_.zone(tzid)) return stored;
  auto observances = builtin_observances(tzid);
  if (!observances) return std::nullopt;
  Zone zone(tzid, std::move(*observances));
  if (writes_ && !store_.put_zone(zone)) failed_ = true;
  return zone;
}

// Two files may mean different things by one TZID: the second gets a name of its own, so that the
// appointments of the first stay where they are.
std::optional<Zone> ZoneTable::own_definition(const std::string& tzid) {
  const auto defined = defined_.find(tzid);
  if (defined == defined_.end()) return std::nullopt;
  constexpr int kMostVariants = 1000;
  for (int variant = 1; variant < kMostVariants; ++variant) {
    std::string name = tzid;
    if (variant > 1 || is_utc_name(tzid)) name += "#" + std::to_string(variant);
    std::optional<Zone> stored = store_.zone(name);
    if (stored && stored->observances() == defined->second) return stored;
    if (stored) continue;
    Zone zone(name, defined->second);
    if (writes_ && !store_.put_zone(zone)) failed_ = true;
    return zone;
  }
  return std::nullopt;
}

std::string vtimezone_text(const Zone& zone, std::string_view tzid) {
  std::string text = "BEGIN:VTIMEZONE\r\n";
  append_folded(text, "TZID:" + std::string(tzid));
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
    for (const LocalSeconds date : part.dates) text += "RDATE:" + moment_text(date) + "\r\n";
    text += "END:" + kind + "\r\n";
  }
  return text + "END:VTIMEZONE\r\n";
}

}  // namespace orvello
