// Series and their changed occurrences, in whatever order and from however many files they come.
#include <algorithm>
#include <functional>

#include "calendar/rule_text.h"
#include "exchange/calendar_keys.h"
#include "exchange/importer.h"

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

}  // namespace

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

// Other programs drop ink on the way: where a file has none and the text is still the same, nobody
// wished it gone.
void Importer::keep_ink(const AppointmentRecord& earlier, AppointmentRecord& record) {
  const auto keep = [](const AppointmentFields& before, AppointmentFields& now) {
    if (now.body_ink.empty() && now.body == before.body) now.body_ink = before.body_ink;
  };
  keep(earlier.fields, record.fields);
  for (const AppointmentException& before : earlier.exceptions)
    for (AppointmentException& now : record.exceptions)
      if (now.original_start == before.original_start) keep(before.fields, now.fields);
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
  series.parts = parts_of(series.record.residue, uid);
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
    failed_ |= writes_ && !store_.erase(oid);
  }
  changed_.insert(std::hash<std::string>()(uid));
  lone_[uid] = std::move(left);
  if (lone_[uid].empty()) lone_.erase(uid);
  lone_changed_ = true;
}

}  // namespace orvello
