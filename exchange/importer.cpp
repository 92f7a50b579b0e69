#include "exchange/importer.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <utility>

#include "calendar/rule_text.h"
#include "exchange/calendar_keys.h"
#include "exchange/vcalendar1.h"

namespace orvello {
namespace {

// In order, one for each occurrence; the one added last stands.
void sort_exceptions(AppointmentRecord& record) {
  auto& list = record.exceptions;
  std::reverse(list.begin(), list.end());
  std::stable_sort(list.begin(), list.end(), [](const auto& a, const auto& b) {
    return a.original_start < b.original_start;
  });
  const auto same = [](const auto& a, const auto& b) {
    return a.original_start == b.original_start;
  };
  list.erase(std::unique(list.begin(), list.end(), same), list.end());
}

// Changed occurrences of what has no rule, or none that can be read: a series of its start alone,
// on which they hang.
void make_room_for_exceptions(AppointmentRecord& record) {
  if (record.recurring()) return;
  for (const AppointmentException& one : record.exceptions)
    if (!one.deleted || !one.residue.empty()) {
      record.rules = "RDATE:" + moment_text(record.start);
      return;
    }
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

Importer::Importer(RecordStore& store, const Clock& clock, bool writes)
    : store_(store), clock_(clock), writes_(writes), zones_(store, clock, writes) {
  const auto kept = store.foreign();
  failed_ = !kept;
  if (failed_) return;
  for (const ForeignComponent& one : *kept) {
    if (one.key == kLoneKey) {
      std::size_t at = 0;
      for (std::string_view line; next_line(one.text, at, line);)
        if (const std::size_t tab = line.find('\t'); tab != std::string_view::npos)
          lone_[std::string(line.substr(0, tab))].emplace(line.substr(tab + 1));
    } else if (const auto uid = uid_of_hidden(one.key)) {
      hidden_[std::string(*uid)].push_back(one);
    }
  }
}

bool Importer::import_stream(std::istream& in, ImportCounts& counts, ProblemList& problems) {
  counts_ = &counts;
  problems_ = &problems;
  if (failed_) return false;
  zones_.start_file();
  in_file_.clear();
  nameless_.clear();
  foreign_in_file_.clear();
  calendar_number_ = 0;
  CalendarScanner scanner(in, problems);
  ScannedCalendar calendar;
  while (!failed_ && scanner.next(calendar)) import_calendar(calendar);
  while (!failed_ && !open_.empty()) close_series(std::string(open_.begin()->first));
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
  ++calendar_number_;
  read_header(calendar);
  zones_.start_calendar();
  if (old_version_ || calendar.text.find("QUOTED-PRINTABLE") != std::string::npos)
    convert_old(calendar);
  std::string definitions;
  bool zones_alone = true;
  for (const ScannedComponent& component : calendar.components) {
    if (component.kind != "VTIMEZONE") {
      zones_alone = false;
      continue;
    }
    definitions += calendar.text_of(component);
    if (parsed_.parse(calendar.text_of(component), component.line))
      zones_.define(parsed_.root(), *problems_);
  }
  // A message is not a calendar: what it carries goes where it belongs, and nothing else stays.
  if (method_ != Method::keep && method_ != Method::request) return apply_messages(calendar);
  // Zones by themselves are no part of our own appointments.
  if (!key_.empty() || (zones_alone && !definitions.empty()))
    key_ = fingerprint(calendar.header, definitions);
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
  method_ = Method::keep;
  old_version_ = false;
  const std::string text = "BEGIN:VCALENDAR\n" + calendar.header + "END:VCALENDAR\n";
  if (!parsed_.parse(text, calendar.line)) return;
  bool others = false;
  for (const Property& property : parsed_.root().properties) {
    const std::string_view value = trimmed(property.value);
    if (property.named("VERSION"))
      old_version_ = value == "1.0";
    else if (!property.named("PRODID") || value != kOwnProduct)
      others = true;
    if (property.named("METHOD")) take_method(value);
  }
  if (old_version_) old_zone_ = zone_of_vcalendar1(parsed_.root(), clock_);
  if (!parsed_.root().garbage.empty())
    problems_->add(parsed_.root().garbage.front(), "line is no property; left out");
  if (!others && calendar.header.find(kOwnProduct) != std::string::npos) key_.clear();
}

void Importer::take_method(std::string_view value) {
  constexpr std::pair<std::string_view, Method> kMethods[] = {
      {"REQUEST", Method::request},      {"ADD", Method::add},
      {"REPLY", Method::reply},          {"CANCEL", Method::cancel},
      {"COUNTER", Method::none_of_ours}, {"DECLINECOUNTER", Method::none_of_ours},
      {"REFRESH", Method::none_of_ours},
  };
  for (const auto& [name, method] : kMethods)
    if (equal_ignoring_case(value, name)) {
      method_ = method;
      method_name_ = name;
    }
}

void Importer::convert_old(ScannedCalendar& calendar) {
  std::string text;
  for (ScannedComponent& component : calendar.components) {
    const std::string_view before = calendar.text_of(component);
    const std::string converted =
        old_version_ ? component_from_vcalendar1(before, component.line, old_zone_.tzid, *problems_)
                     : without_quoted_printable(before);
    component.offset = text.size();
    component.length = converted.size();
    text += converted;
  }
  if (old_version_ && !old_zone_.definition.empty()) {
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
      put_foreign(own_key(zone_key(key_, value_of(root, "TZID")), root.raw), std::string(root.raw));
      continue;
    }
    ++items_;
    std::string id = value_of(root, "UID");
    if (id.empty()) id = fingerprint(text, {});
    std::string key = component_key(component.kind, id, value_of(root, "RECURRENCE-ID"));
    put_foreign(own_key(std::move(key), root.raw), key_ + "\n" + std::string(root.raw));
  }
}

// What stands twice in a file under one name, saying different things, is kept twice.
std::string Importer::own_key(std::string key, std::string_view text) {
  auto& texts = foreign_in_file_[key];
  const std::size_t place =
      texts.try_emplace(std::hash<std::string_view>()(text), texts.size()).first->second;
  return place == 0 ? key : key + "#" + std::to_string(place + 1);
}

const Component& Importer::parse(const ScannedCalendar& calendar, std::size_t index) {
  const ScannedComponent& component = calendar.components[index];
  parsed_.parse(calendar.text_of(component), component.line);
  return parsed_.root();
}

void Importer::import_master(const ScannedCalendar& calendar, std::size_t index, const Uids& uids) {
  const std::string& uid = uids.of[index];
  close_series(uid);
  const Component& event = parse(calendar, index);
  const std::string_view text = event.raw;
  const bool again = uids.again.contains(uid);
  const auto earlier = stored(oid_of(uid));
  const ForeignComponent* out_of_sight = hidden(uid);
  if ((!again && earlier && is_older(event, split_residue(earlier->residue).component)) ||
      (out_of_sight && is_older(event, split_residue(out_of_sight->text).component))) {
    tell(event, "is older than what the calendar has; left out");
    ++counts_->skipped;
    return;
  }
  EventContext context{zones_, clock_, *problems_};
  auto read = read_event(event, context);
  const auto changes = uids.changes.find(uid);
  const auto indices = changes == uids.changes.end() ? std::vector<std::size_t>() : changes->second;
  if (!read || read->cancelled) return keep_unshown(calendar, uid, read.has_value(), indices);
  if (out_of_sight) unhide(uid);
  AppointmentRecord& record = read->record;
  if (record.uid != uid) read->plain = false;
  record.uid = uid;
  record.oid = earlier ? earlier->oid : 0;
  const bool changed = changed_.contains(std::hash<std::string>()(uid));
  if ((again || changed) && earlier) merge_earlier(*earlier, record);
  std::vector<FollowingChange> following;
  read_changes(calendar, indices, *read, following);
  const bool had_lone = lone_.contains(uid);
  if (had_lone) merge_lone(uid, *read, following);
  if (hidden_.contains(uid)) merge_hidden(uid, *read);
  const auto parts = put_series(*read, following, key_, text, had_lone || earlier);
  if (earlier) erase_parts(earlier->residue, parts);
}

// An event that no day shows, and what belongs to it.
void Importer::keep_unshown(const ScannedCalendar& calendar, const std::string& uid, bool cancelled,
                            const std::vector<std::size_t>& changes) {
  const auto earlier = stored(oid_of(uid));
  ++counts_->skipped;
  if (cancelled) tell(parsed_.root(), "is cancelled; kept, but not shown");
  if (cancelled || !earlier) hide(parsed_.root(), uid);
  if (!cancelled) return import_changes(calendar, uid, changes);
  if (earlier) erase_record(*earlier);
  for (const std::size_t change : changes) hide(parse(calendar, change), uid);
}

// Stores a series, in parts where changes say so; answers the later parts.
std::vector<SeriesPart> Importer::put_series(ReadEvent& series,
                                             std::vector<FollowingChange>& following,
                                             const std::string& calendar, std::string_view text,
                                             bool known) {
  AppointmentRecord& record = series.record;
  sort_exceptions(record);
  EventContext context{zones_, clock_, *problems_};
  std::vector<SeriesPart> parts;
  if (!following.empty()) parts = split_series(series, following, context);
  for (FollowingChange& one : following) {
    problems_->add(one.line, "a change of all later occurrences is shown for this one only");
    record.exceptions.push_back(exception_of(one.event, series, std::move(one.text), clock_));
  }
  if (!following.empty()) sort_exceptions(record);
  make_room_for_exceptions(record);
  record.residue = calendar;
  if (!series.plain || !parts.empty()) record.residue.append("\n").append(text);
  if (!parts.empty()) record.residue.append("\n").append(shown_text(record, parts));
  put(record, known);
  for (SeriesPart& part : parts) {
    part.record.uid = record.uid + "#" + moment_text(part.from);
    part.record.residue =
        calendar + "\n" + part.record.residue + "\n" + shown_text(part.record, {});
    counted_.insert(std::hash<std::string>()(part.record.uid));
    put(part.record, false);
  }
  return parts;
}

void Importer::read_changes(const ScannedCalendar& calendar,
                            const std::vector<std::size_t>& indices, ReadEvent& master,
                            std::vector<FollowingChange>& following) {
  EventContext context{zones_, clock_, *problems_};
  for (const std::size_t index : indices) {
    const Component& event = parse(calendar, index);
    auto read = read_event(event, context);
    if (!read) {
      hide(event, master.record.uid);
      ++counts_->skipped;
    } else if (!read->recurrence_id) {
      import_lone(master.record.uid, *read, key_ + "\n" + std::string(event.raw));
    } else if (read->following && !read->cancelled) {
      following.push_back({std::move(*read), std::string(event.raw), event.line});
    } else {
      master.record.exceptions.push_back(
          exception_of(*read, master, std::string(event.raw), clock_));
    }
  }
}

// Of two versions that come in one go the later stands, with what the earlier one's occurrences
// said.
void Importer::merge_earlier(const AppointmentRecord& earlier, AppointmentRecord& record) {
  std::vector<AppointmentException> changed;
  for (const AppointmentException& one : earlier.exceptions)
    if (!one.residue.empty()) changed.push_back(one);
  record.exceptions.insert(record.exceptions.begin(), changed.begin(), changed.end());
}

Importer::OpenSeries* Importer::open_series(const std::string& uid) {
  const auto known = open_.find(uid);
  if (known != open_.end()) return &known->second;
  auto record = stored(oid_of(uid));
  if (!record) return nullptr;
  OpenSeries& series = open_[uid];
  series.record = std::move(*record);
  if (const std::string& zone = series.record.zone; !zone.empty())
    series.zone = zone == "UTC" ? std::optional(Zone()) : zone_named(zone);
  series.start = {series.record.start, series.record.fields.all_day,
                  series.zone ? &*series.zone : nullptr};
  series.parts = parts_of(series.record.residue);
  for (std::size_t i = 0; i < series.record.exceptions.size(); ++i)
    series.places[series.record.exceptions[i].original_start] = i;
  return &series;
}

void Importer::close_series(const std::string& uid) {
  auto node = open_.extract(uid);
  if (node.empty()) return;
  OpenSeries& series = node.mapped();
  ReadEvent master;
  master.start = series.start;
  const std::string residue = std::move(series.record.residue);
  const Residue split = split_residue(residue);
  master.plain = split.component.empty();
  master.record = std::move(series.record);
  if (series.following.empty()) {
    sort_exceptions(master.record);
    make_room_for_exceptions(master.record);
    master.record.residue = residue;
    put(master.record, true);
    return;
  }
  const std::string text = master.plain ? text_of(master.record) : std::string(split.component);
  put_series(master, series.following, std::string(split.calendar), text, true);
}

// Changes whose series is not in this calendar: in the store, in a later file, or nowhere.
void Importer::import_changes(const ScannedCalendar& calendar, const std::string& uid,
                              const std::vector<std::size_t>& indices) {
  EventContext context{zones_, clock_, *problems_};
  for (const std::size_t index : indices) {
    const Component& event = parse(calendar, index);
    auto read = read_event(event, context);
    OpenSeries* series = open_series(uid);
    if (!read || (read->cancelled && !series)) {
      if (read) tell(event, "is cancelled; kept, but not shown");
      hide(event, uid);
      ++counts_->skipped;
    } else if (!series || !read->recurrence_id) {
      import_lone(uid, *read, key_ + "\n" + std::string(event.raw));
    } else {
      import_change(*series, *read, event);
    }
  }
}

void Importer::import_change(OpenSeries& series, ReadEvent& change, const Component& event) {
  ReadEvent master;
  master.start = series.start;
  AppointmentException exception = exception_of(change, master, std::string(event.raw), clock_);
  OpenSeries* owner = &series;
  const PartName* part = nullptr;
  for (const PartName& one : series.parts)
    if (one.from <= exception.original_start) part = &one;
  if (part)
    if (OpenSeries* later = open_series(part->uid)) {
      owner = later;
      exception.original_start += part->shift;
    }
  auto& list = owner->record.exceptions;
  const auto [place, added] = owner->places.try_emplace(exception.original_start, list.size());
  if (!added && is_older(event, list[place->second].residue)) {
    tell(event, "is older than what the calendar has; left out");
    ++counts_->skipped;
    return;
  }
  ++items_;
  if (change.following && !change.cancelled) {
    if (added) owner->places.erase(place);
    if (owner != &series || !series.parts.empty())
      problems_->add(event.line,
                     "a second change of all later occurrences is shown for this one only");
    else
      return owner->following.push_back({std::move(change), std::string(event.raw), event.line});
    owner->places.try_emplace(exception.original_start, list.size());
  }
  changed_.insert(std::hash<std::string>()(series.record.uid));
  if (added)
    list.push_back(std::move(exception));
  else
    list[place->second] = std::move(exception);
}

void Importer::import_lone(const std::string& uid, ReadEvent& change, const std::string& residue) {
  AppointmentRecord& record = change.record;
  record.uid = uid + "#" + change.recurrence_id_text;
  record.residue = residue;
  if (change.following)
    problems_->add(
        parsed_.root().line,
        "a change of all later occurrences is shown for this one only: its series is not "
        "here");
  if (lone_[uid].insert(record.uid).second) lone_changed_ = true;
  // Several changes of one series are one appointment to the person who counts.
  if (counted_.contains(std::hash<std::string>()(uid)))
    counted_.insert(std::hash<std::string>()(record.uid));
  const auto earlier = stored(oid_of(record.uid));
  if (earlier && is_older(parsed_.root(), split_residue(earlier->residue).component)) {
    tell(parsed_.root(), "is older than what the calendar has; left out");
    ++counts_->skipped;
    return;
  }
  record.oid = earlier ? earlier->oid : 0;
  put(record, false);
  counted_.insert(std::hash<std::string>()(uid));
}

// The series has come: what stood for single occurrences of it become its exceptions.
void Importer::merge_lone(const std::string& uid, ReadEvent& master,
                          std::vector<FollowingChange>& following) {
  std::set<std::string> left;
  for (const std::string& name : lone_[uid]) {
    const std::int32_t oid = oid_of(name);
    const auto record = stored(oid);
    ParsedComponent parsed;
    if (!record || !parsed.parse(split_residue(record->residue).component, 1)) continue;
    ProblemList ignored{""};
    EventContext context{zones_, clock_, ignored};
    auto read = read_event(parsed.root(), context);
    if (!read || !read->recurrence_id) {
      left.insert(name);
      continue;
    }
    const std::string text(parsed.root().raw);
    const bool goes_on = read->following;
    read->record.fields = record->fields;
    read->record.start = record->start;
    read->record.end = record->end;
    read->record.zone = record->zone;
    read->record.recipients = record->recipients;
    if (goes_on) {
      following.push_back({std::move(*read), text});
    } else {
      AppointmentException exception = exception_of(*read, master, text, clock_);
      master.record.exceptions.push_back(std::move(exception));
    }
    if (writes_ && !store_.erase(oid)) failed_ = true;
  }
  changed_.insert(std::hash<std::string>()(uid));
  lone_[uid] = std::move(left);
  if (lone_[uid].empty()) lone_.erase(uid);
  lone_changed_ = true;
}

void Importer::put(AppointmentRecord& record, bool known) {
  if (record.modified == 0) record.modified = clock_.utc_now();
  if (record.oid == 0) record.oid = oid_of(record.uid);
  known = known || record.oid != 0;
  if (failed_) return;
  if (writes_) {
    record.oid = store_.put(record);
    if (record.oid == 0) {
      failed_ = true;
      return;
    }
  }
  ++items_;
  count(record.uid, known);
}

void Importer::count(const std::string& uid, bool known) {
  const bool counted = !counted_.insert(std::hash<std::string>()(uid)).second;
  if (!counted) known ? ++counts_->updated : ++counts_->imported;
}

std::int32_t Importer::oid_of(const std::string& uid) {
  const auto oid = store_.oid_of_uid(uid);
  failed_ |= !oid;
  return oid ? oid->value_or(0) : 0;
}

std::optional<AppointmentRecord> Importer::stored(std::int32_t oid) {
  if (oid == 0) return std::nullopt;
  auto record = store_.load(oid);
  failed_ |= !record;
  return record ? std::move(*record) : std::nullopt;
}

std::optional<Zone> Importer::zone_named(const std::string& name) {
  const Zone* zone = zones_.find_named(name);
  return zone ? std::optional(*zone) : std::nullopt;
}

}  // namespace orvello
