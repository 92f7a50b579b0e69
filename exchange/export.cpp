#include "exchange/export.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include "exchange/calendar_keys.h"
#include "exchange/event_fields.h"
#include "exchange/event_writer.h"
#include "exchange/zone_names.h"

namespace orvello {
namespace {

// One VCALENDAR to be.
struct Group {
  std::string key;
  bool had_items = false;
  std::string header;
  std::vector<std::string> zones;  // VTIMEZONEs as they stood in the file
  std::vector<std::string> others;
  std::unique_ptr<EventWriter> writer;
  std::string events;
  std::set<std::string> more_tzids;  // of events that joined it
  bool empty() const { return events.empty() && others.empty(); }
};

class Exporter {
 public:
  Exporter(RecordStore& store, const Clock& clock, bool whole)
      : store_(store), clock_(clock), whole_(whole), failed_(store) {}

  bool collect(const std::vector<std::int32_t>& oids);
  bool collect(const std::vector<AppointmentRecord>& records);
  Result<std::string> text();

 private:
  Group& group(std::string_view key);
  void add(const AppointmentRecord& record);
  std::unique_ptr<EventWriter> writer_for(const Group& calendar);
  bool collect_foreign();
  void join_own();
  void write_group(std::string& out, const Group& group);
  std::string header_text(const Group& group);
  std::string zone_texts(const Group& group);

  RecordStore& store_;
  const Clock& clock_;
  bool whole_;
  FirstFault failed_;
  std::vector<Group> groups_;
  std::map<std::string, std::size_t, std::less<>> index_;
  std::map<std::string, int> sent_;  // SEQUENCE by UID
};

Group& Exporter::group(std::string_view key) {
  const auto known = index_.find(key);
  if (known != index_.end()) return groups_[known->second];
  index_.emplace(key, groups_.size());
  Group& made = groups_.emplace_back();
  made.key = std::string(key);
  made.had_items = true;
  return made;
}

bool Exporter::collect_foreign() {
  group("");  // ours
  auto all = store_.foreign();
  if (!all) return false;
  std::vector<std::pair<std::string, std::string>> zones;  // of which calendar
  for (ForeignComponent& one : *all) {
    const Residue split = split_residue(one.text);
    if (one.key.starts_with(kCalendarPrefix)) {
      Group& calendar = group(std::string_view(one.key).substr(kCalendarPrefix.size()));
      calendar.had_items = split.calendar == "items";
      calendar.header = std::string(split.component);
    } else if (one.key.starts_with(kComponentPrefix) && whole_) {
      Group& calendar = group(split.calendar);
      calendar.others.emplace_back(split.component);
      ParsedComponent event;
      if (uid_of_hidden(one.key) && event.parse(split.component, 1))
        note_tzids(event.root(), calendar.more_tzids);
    } else if (one.key.starts_with(kSentPrefix)) {
      sent_.emplace(one.key.substr(kSentPrefix.size()), std::atoi(one.text.c_str()));
    } else if (const auto calendar = calendar_of_zone(one.key)) {
      zones.emplace_back(*calendar, std::move(one.text));
    }
  }
  for (auto& [calendar, zone] : zones)
    if (const auto known = index_.find(calendar); known != index_.end())
      groups_[known->second].zones.push_back(std::move(zone));
  return true;
}

// A calendar with a METHOD is a message; what it says is not said of anything else.
bool is_message(const Group& group) {
  ParsedComponent parsed;
  const std::string whole = "BEGIN:VCALENDAR\n" + group.header + "END:VCALENDAR\n";
  return parsed.parse(whole, 1) && parsed.root().find("METHOD");
}

bool Exporter::collect(const std::vector<std::int32_t>& oids) {
  if (!collect_foreign()) return false;
  for (const std::int32_t oid : oids) {
    const auto record = store_.load(oid);
    if (!record || !*record) return false;
    add(**record);
  }
  join_own();
  return true;
}

bool Exporter::collect(const std::vector<AppointmentRecord>& records) {
  if (!collect_foreign()) return false;
  for (const AppointmentRecord& record : records) add(record);
  return true;
}

void Exporter::add(const AppointmentRecord& record) {
  Group& calendar = group(split_residue(record.residue).calendar);
  if (!calendar.writer) calendar.writer = writer_for(calendar);
  calendar.writer->write(calendar.events, record);
}

std::unique_ptr<EventWriter> Exporter::writer_for(const Group& calendar) {
  auto writer = std::make_unique<EventWriter>(store_, clock_);
  writer->know_sent(sent_);
  ProblemList ignored{""};
  for (const std::string& zone : calendar.zones) {
    ParsedComponent parsed;
    if (parsed.parse(zone, 1)) writer->zones().define(parsed.root(), ignored);
  }
  return writer;
}

// Whether a TZID means one thing in the first and another in the second.
bool zones_differ(const std::vector<std::string>& a, const std::vector<std::string>& b) {
  std::map<std::string, const std::string*> known;
  ParsedComponent parsed;
  const auto name = [&](const std::string& zone) {
    const Property* tzid = parsed.parse(zone, 1) ? parsed.root().find("TZID") : nullptr;
    return tzid ? tzid_text(tzid->value) : std::string();
  };
  for (const std::string& zone : a) known[name(zone)] = &zone;
  for (const std::string& zone : b)
    if (const auto same = known.find(name(zone)); same != known.end() && *same->second != zone)
      return true;
  return false;
}

// Ours join the first calendar that is no message to somebody: many readers take only one.
void Exporter::join_own() {
  const auto own = index_.find(std::string_view());
  if (own == index_.end()) return;
  Group& ours = groups_[own->second];
  for (Group& other : groups_) {
    if (other.key.empty() || other.empty() || is_message(other)) continue;
    if (zones_differ(ours.zones, other.zones)) continue;
    other.events += std::exchange(ours.events, {});
    other.others.insert(other.others.end(), ours.others.begin(), ours.others.end());
    ours.others.clear();
    for (std::string& zone : ours.zones)
      if (std::find(other.zones.begin(), other.zones.end(), zone) == other.zones.end())
        other.zones.push_back(std::move(zone));
    ours.zones.clear();
    if (ours.writer)
      other.more_tzids.insert(ours.writer->used_tzids().begin(), ours.writer->used_tzids().end());
    other.more_tzids.merge(ours.more_tzids);
    return;
  }
}

std::string Exporter::header_text(const Group& group) {
  std::string text = "BEGIN:VCALENDAR\r\n";
  ParsedComponent parsed;
  const std::string whole = "BEGIN:VCALENDAR\n" + group.header + "END:VCALENDAR\n";
  parsed.parse(whole, 1);
  const Component& root = parsed.root();
  // These two first, whatever the file's order: an export of an export is then the same.
  const Property* version = root.find("VERSION");
  const Property* product = root.find("PRODID");
  // Whatever came in the older form was converted.
  const bool keep_version = version && trimmed(version->value) != "1.0";
  if (keep_version)
    append_lines(text, version->raw);
  else
    text += "VERSION:2.0\r\n";
  if (product)
    append_lines(text, product->raw);
  else
    text += "PRODID:" + std::string(kOwnProduct) + "\r\n";
  for (const Property& property : root.properties)
    if (&property != version && &property != product) append_lines(text, property.raw);
  return text;
}

std::string Exporter::zone_texts(const Group& group) {
  std::string text;
  std::set<std::string> missing = group.more_tzids;
  if (group.writer)
    missing.insert(group.writer->used_tzids().begin(), group.writer->used_tzids().end());
  for (const std::string& zone : group.zones) {
    ParsedComponent parsed;
    if (!parsed.parse(zone, 1)) continue;
    const Property* tzid = parsed.root().find("TZID");
    const bool used = tzid && missing.erase(tzid_text(tzid->value)) > 0;
    if (used || whole_) append_lines(text, zone);
  }
  ZoneTable zones(store_, clock_, false);
  for (const std::string& tzid : missing)
    if (const Zone* zone = zones.find(tzid)) text += vtimezone_text(*zone, tzid);
  failed_ |= zones.fault();
  return text;
}

void Exporter::write_group(std::string& out, const Group& group) {
  out += header_text(group) + zone_texts(group);
  out += group.events;
  for (const std::string& other : group.others) append_lines(out, other);
  out += "END:VCALENDAR\r\n";
}

Result<std::string> Exporter::text() {
  std::string out;
  for (const Group& group : groups_)
    if (!group.empty() || (!group.had_items && whole_)) write_group(out, group);
  // A file without a calendar is no calendar file.
  if (out.empty()) write_group(out, Group{});
  for (const Group& group : groups_)
    if (group.writer) failed_ |= group.writer->fault();
  if (failed_) return Result<std::string>::failure(failed_.reason());
  return out;
}

}  // namespace

Result<std::string> export_calendar(RecordStore& store, std::optional<Day> from_day,
                                    std::optional<Day> to_day, const Clock& clock) {
  StoreReading reading(store);
  if (!reading) return Result<std::string>::failure(store.problem());
  Exporter exporter(store, clock, !from_day && !to_day);
  const auto oids = store.oids(from_day, to_day);
  if (!oids || !exporter.collect(*oids)) return Result<std::string>::failure(store.problem());
  return exporter.text();
}

Result<std::string> export_appointments(RecordStore& store,
                                        const std::vector<AppointmentRecord>& records,
                                        const Clock& clock) {
  StoreReading reading(store);
  Exporter exporter(store, clock, false);
  if (!reading || !exporter.collect(records)) return Result<std::string>::failure(store.problem());
  return exporter.text();
}

}  // namespace orvello
