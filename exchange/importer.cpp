#include "exchange/importer.h"

#include <algorithm>
#include <cstdio>
#include <functional>

#include "exchange/calendar_keys.h"
#include "exchange/vcalendar1.h"

namespace orvello {
namespace {

void add_exception(AppointmentRecord& record, AppointmentException exception) {
  for (AppointmentException& known : record.exceptions)
    if (known.original_start == exception.original_start) {
      known = std::move(exception);
      return;
    }
  record.exceptions.push_back(std::move(exception));
}

void sort_exceptions(AppointmentRecord& record) {
  std::sort(record.exceptions.begin(), record.exceptions.end(),
            [](const auto& a, const auto& b) { return a.original_start < b.original_start; });
}

std::string fingerprint(std::string_view a, std::string_view b) {
  std::uint64_t hash = 0xCBF29CE484222325u;  // FNV-1a
  for (const std::string_view text : {a, b})
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
  char text[20];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
  return text;
}

std::string value_of(const Component& component, std::string_view name) {
  const Property* property = component.find(name);
  return property ? std::string(trimmed(property->value)) : std::string();
}

}  // namespace

// Which component is which item: the last event of each UID, and the changes of each series.
struct Importer::Uids {
  std::unordered_map<std::string, std::size_t> masters;
  std::map<std::string, std::vector<std::size_t>> changes;
  std::vector<std::string> of;  // each component's UID
};

Importer::Importer(RecordStore& store, const Clock& clock, bool writes)
    : store_(store), clock_(clock), writes_(writes), zones_(store, clock, writes) {
  const auto kept = store.foreign();
  failed_ = !kept;
  if (failed_) return;
  for (const ForeignComponent& one : *kept) {
    if (one.key != kLoneKey) continue;
    std::size_t at = 0;
    for (std::string_view line; next_line(one.text, at, line);)
      if (const std::size_t tab = line.find('\t'); tab != std::string_view::npos)
        lone_[std::string(line.substr(0, tab))].emplace_back(line.substr(tab + 1));
  }
}

bool Importer::import_stream(std::istream& in, ImportCounts& counts, ProblemList& problems) {
  counts_ = &counts;
  problems_ = &problems;
  zones_.start_file();
  CalendarScanner scanner(in, problems);
  ScannedCalendar calendar;
  while (!failed_ && scanner.next(calendar)) import_calendar(calendar);
  return !failed_ && !zones_.failed();
}

bool Importer::finish() {
  if (!lone_changed_ || failed_) return !failed_;
  std::string text;
  for (const auto& [uid, records] : lone_)
    for (const std::string& record : records) text += uid + "\t" + record + "\n";
  put_foreign(std::string(kLoneKey), text);
  return !failed_;
}

void Importer::import_calendar(ScannedCalendar& calendar) {
  counts_->skipped += calendar.broken_events;
  read_header(calendar);
  zones_.start_calendar();
  if (old_version_) convert_old(calendar);
  std::string definitions;
  for (const ScannedComponent& component : calendar.components) {
    if (component.kind != "VTIMEZONE") continue;
    definitions += calendar.text_of(component);
    if (parsed_.parse(calendar.text_of(component), component.line))
      zones_.define(parsed_.root(), *problems_);
  }
  if (!key_.empty()) key_ = fingerprint(calendar.header, definitions);
  items_ = 0;
  keep_foreign(calendar);
  const Uids uids = find_uids(calendar);
  for (std::size_t i = 0; i < calendar.components.size() && !failed_; ++i) {
    if (calendar.components[i].kind != "VEVENT") continue;
    const auto master = uids.masters.find(uids.of[i]);
    if (master != uids.masters.end() && master->second == i) import_master(calendar, i, uids);
  }
  for (const auto& [uid, indices] : uids.changes)
    if (!failed_ && !uids.masters.contains(uid)) import_changes(calendar, uid, indices);
  // A calendar that had items is gone with its last one; an empty one stays as it was.
  if (!key_.empty())
    put_foreign(calendar_key(key_), (items_ > 0 ? "items\n" : "empty\n") + calendar.header);
}

void Importer::read_header(ScannedCalendar& calendar) {
  key_ = "?";
  old_version_ = false;
  bool only_ours = true;
  const std::string text = "BEGIN:VCALENDAR\n" + calendar.header + "END:VCALENDAR\n";
  if (!parsed_.parse(text, calendar.line)) return;
  for (const Property& property : parsed_.root().properties) {
    const std::string_view value = trimmed(property.value);
    if (property.named("VERSION"))
      old_version_ = value == "1.0";
    else if (!property.named("PRODID") || value != kOwnProduct)
      only_ours = false;
  }
  if (old_version_) old_zone_ = zone_of_vcalendar1(parsed_.root(), clock_);
  if (!parsed_.root().garbage.empty())
    problems_->add(parsed_.root().garbage.front(), "line is no property; left out");
  if (only_ours && calendar.header.find(kOwnProduct) != std::string::npos) key_.clear();
}

void Importer::convert_old(ScannedCalendar& calendar) {
  std::string text;
  for (ScannedComponent& component : calendar.components) {
    const std::string converted = component_from_vcalendar1(
        calendar.text_of(component), component.line, old_zone_.tzid, *problems_);
    component.offset = text.size();
    component.length = converted.size();
    text += converted;
  }
  if (!old_zone_.definition.empty()) {
    calendar.components.push_back(
        {"VTIMEZONE", text.size(), old_zone_.definition.size(), calendar.line});
    text += old_zone_.definition;
  }
  calendar.text = std::move(text);
}

void Importer::put_foreign(std::string key, std::string text) {
  if (writes_ && !store_.put_foreign({std::move(key), std::move(text)})) failed_ = true;
}

void Importer::keep_foreign(const ScannedCalendar& calendar) {
  for (const ScannedComponent& component : calendar.components) {
    if (component.kind == "VEVENT") continue;
    const std::string_view text = calendar.text_of(component);
    if (!parsed_.parse(text, component.line)) {
      problems_->add(component.line, component.kind.substr(0, 40) + " cannot be read; left out");
      continue;
    }
    const Component& root = parsed_.root();
    if (component.kind == "VTIMEZONE") {
      put_foreign(zone_key(key_, value_of(root, "TZID")), std::string(root.raw));
      continue;
    }
    ++items_;
    std::string id = value_of(root, "UID");
    if (id.empty()) id = fingerprint(text, {});
    put_foreign(component_key(component.kind, id, value_of(root, "RECURRENCE-ID")),
                key_ + "\n" + std::string(root.raw));
  }
}

Importer::Uids Importer::find_uids(const ScannedCalendar& calendar) {
  Uids uids;
  uids.of.resize(calendar.components.size());
  uids.masters.reserve(calendar.components.size());
  for (std::size_t i = 0; i < calendar.components.size(); ++i) {
    const ScannedComponent& component = calendar.components[i];
    if (component.kind != "VEVENT") continue;
    if (!parsed_.parse(calendar.text_of(component), component.line)) {
      problems_->add(component.line, "event cannot be read; left out");
      ++counts_->skipped;
      continue;
    }
    const Component& event = parsed_.root();
    std::string uid = unescape_text(value_of(event, "UID"));
    if (uid.empty()) {
      const std::string base = uid = made_up_uid(event);
      for (int n = 2; uids.masters.contains(uid); ++n) uid = base + "-" + std::to_string(n);
    }
    uids.of[i] = uid;
    if (event.find("RECURRENCE-ID")) {
      uids.changes[uid].push_back(i);
      continue;
    }
    const auto [known, added] = uids.masters.try_emplace(uid, i);
    if (added) continue;
    problems_->add(calendar.components[known->second].line,
                   "an event of the same UID follows; this one is left out");
    ++counts_->skipped;
    known->second = i;
  }
  return uids;
}

void Importer::import_master(const ScannedCalendar& calendar, std::size_t index, const Uids& uids) {
  const ScannedComponent& component = calendar.components[index];
  parsed_.parse(calendar.text_of(component), component.line);
  EventContext context{zones_, clock_, *problems_};
  auto read = read_event(parsed_.root(), context);
  if (!read) {
    ++counts_->skipped;
    return;
  }
  AppointmentRecord& record = read->record;
  const std::string& uid = uids.of[index];
  if (record.uid != uid) read->plain = false;
  record.uid = uid;
  record.residue = key_;
  if (!read->plain) record.residue.append("\n").append(parsed_.root().raw);
  const auto changes = uids.changes.find(uid);
  if (changes != uids.changes.end())
    for (AppointmentException& one : read_changes(calendar, changes->second, *read))
      add_exception(record, std::move(one));
  if (const auto earlier = changes_.find(uid); earlier != changes_.end())
    for (AppointmentException& one : earlier->second) add_exception(record, one);
  const bool had_lone = lone_.contains(uid);
  if (had_lone) merge_lone(uid, *read);
  sort_exceptions(record);
  put(record, had_lone);
}

std::vector<AppointmentException> Importer::read_changes(const ScannedCalendar& calendar,
                                                         const std::vector<std::size_t>& indices,
                                                         const ReadEvent& master) {
  std::vector<AppointmentException> changes;
  EventContext context{zones_, clock_, *problems_};
  for (const std::size_t index : indices) {
    const ScannedComponent& component = calendar.components[index];
    parsed_.parse(calendar.text_of(component), component.line);
    if (const auto read = read_event(parsed_.root(), context))
      changes.push_back(exception_of(*read, master, std::string(parsed_.root().raw), clock_));
    else
      ++counts_->skipped;
  }
  return changes;
}

// Changes whose series is not in this calendar: in the store, in a later file, or nowhere.
void Importer::import_changes(const ScannedCalendar& calendar, const std::string& uid,
                              const std::vector<std::size_t>& indices) {
  auto record = stored(uid);
  if (failed_) return;
  if (!record || !record->recurring()) {
    EventContext context{zones_, clock_, *problems_};
    for (const std::size_t index : indices) {
      const ScannedComponent& component = calendar.components[index];
      parsed_.parse(calendar.text_of(component), component.line);
      if (auto read = read_event(parsed_.root(), context))
        import_lone(uid, *read, key_ + "\n" + std::string(parsed_.root().raw));
      else
        ++counts_->skipped;
    }
    return;
  }
  ReadEvent master;
  master.start = {record->start, record->fields.all_day,
                  record->zone.empty() ? nullptr : zones_.find_named(record->zone)};
  for (AppointmentException& one : read_changes(calendar, indices, master)) {
    changes_[uid].push_back(one);
    add_exception(*record, std::move(one));
  }
  sort_exceptions(*record);
  put(*record, true);
}

void Importer::import_lone(const std::string& uid, ReadEvent& change, const std::string& residue) {
  AppointmentRecord& record = change.record;
  record.uid = uid + "#" + change.recurrence_id_text;
  record.residue = residue;
  auto& known = lone_[uid];
  if (std::find(known.begin(), known.end(), record.uid) == known.end()) {
    known.push_back(record.uid);
    lone_changed_ = true;
  }
  // Several changes of one series are one appointment to the person who counts.
  if (counted_.contains(std::hash<std::string>()(uid)))
    counted_.insert(std::hash<std::string>()(record.uid));
  put(record, false);
  counted_.insert(std::hash<std::string>()(uid));
}

// The series has come: what stood for single occurrences of it become its exceptions.
void Importer::merge_lone(const std::string& uid, ReadEvent& master) {
  for (const std::string& name : lone_[uid]) {
    const auto record = stored(name);
    if (failed_) return;
    ParsedComponent parsed;
    if (!record || !parsed.parse(split_residue(record->residue).component, 1)) continue;
    ProblemList ignored{""};
    EventContext context{zones_, clock_, ignored};
    auto read = read_event(parsed.root(), context);
    if (!read || !read->recurrence_id) continue;
    AppointmentException exception =
        exception_of(*read, master, std::string(parsed.root().raw), clock_);
    exception.fields = record->fields;
    exception.start = record->start;
    exception.end = record->end;
    exception.zone = record->zone;
    exception.recipients = record->recipients;
    changes_[uid].push_back(exception);
    add_exception(master.record, std::move(exception));
    if (writes_ && !store_.erase(record->oid)) failed_ = true;
  }
  lone_.erase(uid);
  lone_changed_ = true;
}

std::optional<AppointmentRecord> Importer::stored(const std::string& uid) {
  const auto oid = store_.oid_of_uid(uid);
  failed_ |= !oid;
  if (!oid || !*oid) return std::nullopt;
  auto record = store_.load(**oid);
  failed_ |= !record;
  return record ? std::move(*record) : std::nullopt;
}

void Importer::put(AppointmentRecord& record, bool known) {
  if (record.modified == 0) record.modified = clock_.utc_now();
  if (record.oid == 0) {
    const auto oid = store_.oid_of_uid(record.uid);
    if (!oid) {
      failed_ = true;
      return;
    }
    record.oid = oid->value_or(0);
  }
  known = known || record.oid != 0;
  if (writes_ && store_.put(record) == 0) {
    failed_ = true;
    return;
  }
  ++items_;
  count(record.uid, known);
}

void Importer::count(const std::string& uid, bool known) {
  const bool counted = !counted_.insert(std::hash<std::string>()(uid)).second;
  if (!counted) known ? ++counts_->updated : ++counts_->imported;
}

}  // namespace orvello
