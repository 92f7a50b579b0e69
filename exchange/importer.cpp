#include "exchange/importer.h"

#include <cstdlib>
#include <functional>
#include <utility>

#include "base/hash.h"
#include "exchange/calendar_keys.h"
#include "exchange/vcalendar1.h"
#include "store/record_limits.h"
#include "store/record_rules.h"

namespace orvello {
namespace {

constexpr std::size_t kLongestTold = 60;  // of a subject, in a sentence about it

std::string fingerprint(std::string_view a, std::string_view b) {
  return StableHash().add(a).add(b).text();
}

std::string value_of(const Component& component, std::string_view name) {
  const Property* property = component.find(name);
  return property ? std::string(trimmed(property->value)) : std::string();
}

}  // namespace

Importer::Importer(RecordStore& store, const Clock& clock, bool writes, ImportWatcher* watcher)
    : store_(store),
      clock_(clock),
      writes_(writes),
      watcher_(watcher),
      failed_(store),
      zones_(store, clock, writes),
      time_(clock, [this](std::string_view name) { return zone_named(std::string(name)); }),
      contacts_(store, writes, watcher) {
  const auto kept = store.foreign();
  failed_ |= !kept;
  if (failed_) return;
  for (const ForeignComponent& one : *kept) {
    if (one.key == kLoneKey) {
      std::size_t at = 0;
      for (std::string_view line; next_line(one.text, at, line);)
        if (const std::size_t tab = line.find('\t'); tab != std::string_view::npos)
          lone_[std::string(line.substr(0, tab))].emplace(line.substr(tab + 1));
    } else if (one.key.starts_with(kSentPrefix)) {
      sent_.emplace(one.key.substr(kSentPrefix.size()), std::atoi(one.text.c_str()));
    } else if (const auto uid = uid_of_hidden(one.key)) {
      hidden_[std::string(*uid)].push_back(one);
    }
  }
}

bool Importer::finish() {
  if (!lone_changed_ || failed_) return !failed_;
  std::string text;
  for (const auto& [uid, records] : lone_)
    for (const std::string& record : records) text += uid + "\t" + record + "\n";
  put_foreign(std::string(kLoneKey), text);
  return !failed_;
}

void Importer::import_card(const ScannedComponent& component) {
  contacts_.import_card(calendar_.text_of(component), component.line, *counts_, *problems_);
  failed_ |= contacts_.fault();
}

void Importer::read_header() {
  key_ = "?";
  name_.clear();
  method_ = Method::keep;
  old_version_ = false;
  const std::string text = "BEGIN:VCALENDAR\n" + calendar_.header + "END:VCALENDAR\n";
  if (!parsed_.parse(text, calendar_.line)) return;
  bool others = false;
  for (const Property& property : parsed_.root().properties) {
    const std::string_view value = trimmed(property.value);
    if (property.named("VERSION"))
      old_version_ = value == "1.0";
    else if (!property.named("PRODID") || value != kOwnProduct)
      others = true;
    if (property.named("METHOD")) take_method(value);
    const bool own_name = property.named("X-WR-CALNAME");
    if (own_name || (name_.empty() && property.named("NAME"))) name_ = unescape_text(value);
  }
  if (old_version_) old_zone_ = zone_of_vcalendar1(parsed_.root(), clock_);
  if (!parsed_.root().garbage.empty())
    problems_->add(parsed_.root().garbage.front(), "line is no property; left out");
  if (!others && calendar_.header.find(kOwnProduct) != std::string::npos) key_.clear();
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

void Importer::convert(const ScannedComponent& component) {
  const std::string_view before = calendar_.text_of(component);
  ScannedComponent& place = calendar_.components[at_];
  const std::size_t offset = converted_.size();
  converted_ += old_version_
                    ? component_from_vcalendar1(before, component.line, old_zone_.tzid, *problems_)
                    : without_quoted_printable(before);
  place.offset = offset;
  place.length = converted_.size() - offset;
}

void Importer::put_foreign(std::string key, std::string text) {
  failed_ |= writes_ && !store_.put_foreign({std::move(key), std::move(text)});
}

void Importer::keep_foreign(const ScannedComponent& component) {
  const std::string_view text = calendar_.text_of(component);
  if (!parsed_.parse(text, component.line)) {
    problems_->add(component.line, component.kind.substr(0, 40) + " cannot be read; left out");
    return;
  }
  const Component& root = parsed_.root();
  if (component.kind == "VTIMEZONE")
    return put_foreign(own_key(zone_key(key_, value_of(root, "TZID")), root.raw),
                       std::string(root.raw));
  ++items_;
  std::string id = value_of(root, "UID");
  if (id.empty()) id = fingerprint(text, {});
  std::string key = component_key(component.kind, id, value_of(root, "RECURRENCE-ID"));
  put_foreign(own_key(std::move(key), root.raw), key_ + "\n" + std::string(root.raw));
}

// Zones by themselves are no part of our own appointments.
void Importer::name_calendar() {
  if (!key_.empty() || (zones_alone_ && !definitions_.empty()))
    key_ = fingerprint(calendar_.header, definitions_);
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
  if (earlier) keep_ink(*earlier, record);
  const auto parts = put_series(*read, following, key_, text, had_lone || earlier);
  if (earlier) erase_parts(*earlier, parts);
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
  if (earlier && watcher_) watcher_->cancelled(*earlier);
  for (const std::size_t change : changes) hide(parse(calendar, change), uid);
}

void Importer::put(AppointmentRecord& record, bool known) {
  if (record.modified == UtcSeconds()) record.modified = clock_.utc_now();
  if (record.oid == 0) record.oid = oid_of(record.uid);
  known = known || record.oid != 0;
  if (failed_) return;
  if (!has_place_for(store_, record)) {
    ++counts_->skipped;
    const std::string name = to_utf8(cut(record.fields.subject, kLongestTold));
    return problems_->add(parsed_.root().line,
                          (name.empty() ? "event" : "\"" + name + "\"") +
                              " is nothing that this device's calendar has a place for; left out");
  }
  if (writes_) {
    record.oid = store_.put(record);
    if (record.oid == 0) {
      failed_ |= true;
      return;
    }
  }
  ++items_;
  count(record.uid, known);
  if (watcher_) show(record, !known);
}

void Importer::show(const AppointmentRecord& record, bool fresh) {
  if (writes_) return watcher_->put(record, fresh, nullptr);
  const auto earlier = stored(record.oid);
  AppointmentRecord shown = record;
  failed_ |= !complete_record(shown, time_) || !localize_record(shown, time_);
  if (!failed_) watcher_->put(shown, fresh, earlier ? &*earlier : nullptr);
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
