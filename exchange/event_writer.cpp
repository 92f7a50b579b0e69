#include "exchange/event_writer.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "calendar/rule_text.h"
#include "exchange/calendar_keys.h"
#include "exchange/component_edit.h"
#include "exchange/date_values.h"
#include "exchange/event_fields.h"
#include "exchange/rule_writer.h"
#include "exchange/series_parts.h"
#include "exchange/zone_names.h"

namespace orvello {
namespace {

constexpr std::int64_t kMinute = 60;

bool contains(const std::vector<LocalSeconds>& sorted, LocalSeconds date) {
  return std::binary_search(sorted.begin(), sorted.end(), date);
}

// The exceptions of an event as read are in order.
const AppointmentException* exception_at(const AppointmentRecord& record, LocalSeconds original) {
  const auto& all = record.exceptions;
  const auto found = std::lower_bound(
      all.begin(), all.end(), original,
      [](const auto& one, LocalSeconds moment) { return one.original_start < moment; });
  return found != all.end() && found->original_start == original ? &*found : nullptr;
}

bool is_excluded(const AppointmentRecord& record, LocalSeconds original) {
  const AppointmentException* known = exception_at(record, original);
  return known && known->deleted;
}

// A record may have a name of its own beside others of its UID: "UID#what tells it apart".
bool goes_by(std::string_view uid, std::string_view record_uid) {
  return !uid.empty() && record_uid.size() > uid.size() && record_uid.starts_with(uid) &&
         record_uid[uid.size()] == '#';
}

std::pair<Text, Text> name_of(const Property& recipient) {
  StoreRecipient one = read_recipient(recipient);
  return {std::move(one.name), std::move(one.address)};
}

std::set<std::pair<Text, Text>> names_of(const std::vector<StoreRecipient>& recipients) {
  std::set<std::pair<Text, Text>> names;
  for (const StoreRecipient& one : recipients) names.emplace(one.name, one.address);
  return names;
}

}  // namespace

// What an appointment and a changed occurrence have in common.
struct EventWriter::Item {
  const AppointmentFields& fields;
  const std::string& zone;
  LocalSeconds start;
  LocalSeconds end;
  const std::vector<StoreRecipient>& recipients;
  UtcSeconds modified;
  std::string uid;
  const AppointmentRecord* series = nullptr;  // null: an occurrence
  std::string recurrence_id;                  // of an occurrence: the whole line
  std::int64_t shift = 0;  // of a series that took over: its times less the first one's
  bool took_over = false;
  bool detached = false;         // it took over once
  bool own_uid = false;          // the UID is not that of the kept text
  bool in_series_words = false;  // the kept text is that of the series
  bool moved = false;            // an occurrence whose series is at other times than in its text
  bool rezoned = false;          // a series in another zone than in its text
};

// What takes the place of a kept event's properties.
struct EventWriter::Plan {
  std::array<bool, kPropertyKinds> changed{};
  std::array<std::string, kPropertyKinds> lines;
  bool any = false;

  void replace(PropertyKind kind, std::string text) {
    changed[static_cast<std::size_t>(kind)] = true;
    lines[static_cast<std::size_t>(kind)] = std::move(text);
    any = true;
  }
  void add(PropertyKind kind, std::string text) {
    lines[static_cast<std::size_t>(kind)] += text;
    any = true;
  }
};

Moment EventWriter::start_of(const Item& item) {
  Moment start{item.start, item.fields.all_day, nullptr};
  if (item.zone == "UTC")
    start.zone = zones_.utc();
  else if (!item.zone.empty() && !item.fields.all_day)
    start.zone = zones_.find_named(item.zone);
  return start;
}

std::string EventWriter::date_line(std::string_view name, const Item& item, LocalSeconds local) {
  std::string line(name);
  if (item.fields.all_day) return line + ";VALUE=DATE:" + day_text(local) + "\r\n";
  if (item.zone == "UTC") return line + ":" + moment_text(local) + "Z\r\n";
  if (!item.zone.empty()) {
    line += ";TZID=" + parameter_text(item.zone);
    used_tzids_.insert(item.zone);
  }
  return folded(line + ":" + moment_text(local));
}

// 0: no request of it was sent, or the first one.
int EventWriter::sent_sequence(const std::string& uid) const {
  if (!sent_) return 0;
  const auto found = sent_->find(uid);
  return found == sent_->end() ? 0 : found->second;
}

std::string EventWriter::times(const Item& item) {
  const LocalSeconds end =
      item.fields.all_day ? std::max(item.end + kMinute, item.start + kSecondsPerDay) : item.end;
  return date_line("DTSTART", item, item.start) + date_line("DTEND", item, end);
}

std::string EventWriter::recurrence(const Item& item) {
  if (!item.series) return {};
  const AppointmentRecord& record = *item.series;
  if (is_start_alone(record)) return {};
  const Moment start = start_of(item);
  if (record.pattern) return folded("RRULE:" + rule_value(*record.pattern, start));
  std::string lines;
  std::size_t at = 0;
  for (std::string_view line; next_line(record.rules, at, line);) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) continue;
    const std::string_view value = line.substr(colon + 1);
    if (!equal_ignoring_case(line.substr(0, colon), "RDATE")) {
      append_folded(lines, std::string(line.substr(0, colon + 1)) + rule_value(value, start));
      continue;
    }
    for (const std::string_view date : split_values(value, ','))
      if (const auto parsed = parse_date(date)) lines += date_line("RDATE", item, parsed->local);
  }
  return lines;
}

std::string EventWriter::excluded(const Item& item, const std::vector<LocalSeconds>& dates) {
  std::string lines;
  for (const LocalSeconds date : dates) lines += date_line("EXDATE", item, date);
  return lines;
}

std::optional<ReadEvent> EventWriter::reference_of(const Component& text) {
  ProblemList ignored{""};
  EventContext context{zones_, clock_, ignored};
  return read_event(text, context);
}

EventWriter::Item EventWriter::item_of(const AppointmentRecord& record,
                                       const ReadEvent* reference) {
  // Of what a store does not know when it changed, it is the time of writing.
  const UtcSeconds modified = record.modified == UtcSeconds() ? clock_.utc_now() : record.modified;
  Item item{record.fields, record.zone, record.start, record.end, record.recipients,
            modified,      record.uid,  &record,      {},         0};
  if (!reference) return item;
  item.rezoned = !record.fields.all_day && record.zone != reference->record.zone;
  const std::string& kept = reference->record.uid;
  item.own_uid = kept != record.uid;
  // A change without a series has its name from both.
  const std::string mark = "#" + reference->recurrence_id_text;
  if (kept.empty() && mark.size() > 1 && item.uid.ends_with(mark))
    item.uid.resize(item.uid.size() - mark.size());
  item.took_over = is_part(record, *reference) && families_.stands(kept);
  item.detached = item.own_uid && !item.took_over && reference->recurrence_id && record.recurring();
  if (item.detached || !goes_by(kept, record.uid)) return item;
  item.own_uid = false;
  item.uid = kept;
  if (item.took_over)
    item.shift = record.start - reading_at(*reference->recurrence_id, reference->start, clock_);
  return item;
}

// Whether it was read as a change of an occurrence and all that follow.
bool EventWriter::is_part(const AppointmentRecord& record, const ReadEvent& reference) {
  return reference.recurrence_id && record.recurring() && goes_by(reference.record.uid, record.uid);
}

// What was split, or had no rule for its exceptions, is compared with what it was shown as then.
void EventWriter::show_as_kept(const AppointmentRecord& record, ReadEvent& reference) {
  const std::string_view shown = shown_component(record.residue);
  ParsedComponent text;
  const std::string& first = is_part(record, reference) ? reference.record.uid : record.uid;
  const bool whole = !shown.empty() && text.parse(shown, 1) && families_.stands(first);
  if (auto read = whole ? reference_of(text.root()) : std::nullopt) {
    reference.record.pattern = std::move(read->record.pattern);
    reference.record.rules = std::move(read->record.rules);
    reference.record.exceptions = std::move(read->record.exceptions);
  }
  if (!reference.record.recurring() && is_start_alone(record))
    reference.record.rules = record.rules;
  // Excluded dates of what is no series are nobody's exceptions.
  if (!reference.record.recurring() && !record.recurring()) reference.record.exceptions.clear();
}

void EventWriter::write(std::string& out, const AppointmentRecord& record) {
  const Residue residue = split_residue(record.residue);
  ParsedComponent text;
  std::optional<ReadEvent> reference;
  if (!residue.component.empty() && text.parse(residue.component, 1))
    reference = reference_of(text.root());
  if (reference) show_as_kept(record, *reference);
  const Item item = item_of(record, reference ? &*reference : nullptr);
  if (reference)
    write_kept(out, item, text.root(), *reference);
  else
    write_new(out, item);
  for (const AppointmentException& exception : record.exceptions)
    write_exception(out, item, exception, reference ? &text.root() : nullptr,
                    reference ? &*reference : nullptr);
}

std::string EventWriter::occurrence(const AppointmentRecord& record,
                                    const AppointmentException& exception) {
  const Residue residue = split_residue(record.residue);
  ParsedComponent text;
  std::optional<ReadEvent> reference;
  if (!residue.component.empty() && text.parse(residue.component, 1))
    reference = reference_of(text.root());
  const Item item = item_of(record, reference ? &*reference : nullptr);
  std::string out;
  write_exception(out, item, exception, reference ? &text.root() : nullptr,
                  reference ? &*reference : nullptr);
  return out;
}

// A cancelled occurrence, in its own words but for what its series and its time are called now.
void EventWriter::write_cancelled(std::string& out, const Item& series, const std::string& id,
                                  bool moved, const Component& text, const ReadEvent& kept) {
  std::string words(text.raw);
  if (kept.record.uid != series.uid)
    words = with_property(std::move(words), "UID", folded("UID:" + escape_text(series.uid)));
  if (moved) words = with_property(std::move(words), "RECURRENCE-ID", id);
  append_lines(out, words);
  note_tzids(text, used_tzids_);
}

void EventWriter::write_exception(std::string& out, const Item& series,
                                  const AppointmentException& exception,
                                  const Component* series_text, const ReadEvent* reference) {
  ParsedComponent text;
  std::optional<ReadEvent> kept;
  if (!exception.residue.empty() && text.parse(exception.residue, 1))
    kept = reference_of(text.root());
  const std::string id =
      date_line("RECURRENCE-ID", series, exception.original_start - series.shift);
  const bool moved = kept && kept->recurrence_id &&
                     reading_at(*kept->recurrence_id, start_of(series), clock_) !=
                         exception.original_start - series.shift;
  if (exception.deleted) {
    // Excluded dates stand with the series; a cancelled occurrence has its own words.
    if (kept && kept->cancelled)
      write_cancelled(out, series, id, moved, text.root(), *kept);
    else if (series.took_over && !is_excluded(reference->record, exception.original_start))
      out += "BEGIN:VEVENT\r\n" + folded("UID:" + escape_text(series.uid)) +
             "DTSTAMP:" + moment_text(series.modified) + "\r\n" + id +
             date_line("DTSTART", series, exception.original_start) +
             "STATUS:CANCELLED\r\nEND:VEVENT\r\n";
    return;
  }
  if (reference && exception.residue.empty()) {
    // An occurrence that the series itself names, as a period.
    const AppointmentException* known = exception_at(reference->record, exception.original_start);
    if (known && !known->deleted && known->start == exception.start &&
        known->end == exception.end && known->fields == exception.fields)
      return;
  }
  Item item{exception.fields,
            exception.zone,
            exception.start,
            exception.end,
            exception.recipients,
            series.modified,
            series.uid,
            nullptr,
            id,
            0,
            false,
            series.own_uid};
  if (kept && !kept->cancelled) {
    item.own_uid = kept->record.uid != series.uid;
    item.moved = moved || series.rezoned;
    write_kept(out, item, text.root(), *kept);
  } else if (series_text && reference) {
    item.in_series_words = true;
    write_kept(out, item, *series_text, *reference);  // what it does not change is the series'
  } else {
    write_new(out, item);
  }
}

void EventWriter::write_new(std::string& out, const Item& item) {
  out += "BEGIN:VEVENT\r\n";
  append_folded(out, "UID:" + escape_text(item.uid));
  out += "DTSTAMP:" + moment_text(item.modified) + "\r\n";
  if (const int sequence = sent_sequence(item.uid); sequence > 0)
    out += "SEQUENCE:" + std::to_string(sequence) + "\r\n";
  out += item.recurrence_id + times(item);
  append_text(out, "SUMMARY", item.fields.subject);
  append_text(out, "LOCATION", item.fields.location);
  append_text(out, "DESCRIPTION", item.fields.body);
  out += categories_line(item.fields.categories) + recurrence(item);
  if (item.series) {
    std::vector<LocalSeconds> dates;
    for (const AppointmentException& one : item.series->exceptions)
      if (one.deleted && !is_cancelled_text(one.residue)) dates.push_back(one.original_start);
    out += excluded(item, dates);
  }
  if (item.fields.sensitivity == 2) out += "CLASS:PRIVATE\r\n";
  if (item.fields.busy_status != BusyStatus::busy) out += busy_lines(item.fields.busy_status);
  for (const StoreRecipient& recipient : item.recipients) out += attendee_line(recipient);
  out += ink_line(item.fields.body_ink);
  if (item.fields.reminder_set)
    out += alarm_text(item.fields.subject, item.fields.reminder_minutes);
  out += "END:VEVENT\r\n";
}

void EventWriter::plan_changes(const Item& item, const ReadEvent& reference, Plan& plan) {
  const AppointmentFields& now = item.fields;
  const AppointmentFields& then = reference.record.fields;
  std::string text;
  const auto replace_text = [&](PropertyKind kind, std::string_view name, const Text& a,
                                const Text& b) {
    if (a == b) return;
    std::string line;
    append_text(line, name, a);
    plan.replace(kind, std::move(line));
  };
  replace_text(PropertyKind::subject, "SUMMARY", now.subject, then.subject);
  replace_text(PropertyKind::location, "LOCATION", now.location, then.location);
  replace_text(PropertyKind::body, "DESCRIPTION", now.body, then.body);
  if (now.categories != then.categories)
    plan.replace(PropertyKind::categories, categories_line(now.categories));
  const bool moved_zone =
      now.all_day != then.all_day || (!now.all_day && item.zone != reference.record.zone);
  if (item.in_series_words || moved_zone || item.start != reference.record.start ||
      item.end != reference.record.end)
    plan.replace(PropertyKind::times, times(item));
  if (item.in_series_words) {
    plan.replace(PropertyKind::recurrence, "");
    plan.replace(PropertyKind::excluded, "");
  }
  if (now.sensitivity != then.sensitivity)
    plan.replace(PropertyKind::sensitivity, now.sensitivity == 2 ? "CLASS:PRIVATE\r\n" : "");
  if (now.busy_status != then.busy_status)
    plan.replace(PropertyKind::busy, busy_lines(now.busy_status));
  if (now.body_ink != then.body_ink) plan.replace(PropertyKind::ink, ink_line(now.body_ink));
  if (item.recipients != reference.record.recipients) {
    std::string added;
    const auto known = names_of(reference.record.recipients);
    for (const StoreRecipient& one : item.recipients)
      if (!known.contains({one.name, one.address})) added += attendee_line(one);
    plan.replace(PropertyKind::recipients, added);
  }
  if (now.reminder_set != then.reminder_set ||
      (now.reminder_set && now.reminder_minutes != then.reminder_minutes))
    plan.any = true;
  if (!item.series) return;
  const AppointmentRecord& record = *item.series;
  if (!same_rule(record.pattern, reference.record.pattern) ||
      record.rules != reference.record.rules || (moved_zone && record.recurring()))
    plan.replace(PropertyKind::recurrence, recurrence(item));
  if (!item.took_over) plan_excluded(item, reference, plan);
}

void EventWriter::plan_excluded(const Item& item, const ReadEvent& reference, Plan& plan) {
  std::vector<LocalSeconds> then, now, any;
  for (const AppointmentException& one : reference.record.exceptions)
    if (one.deleted) then.push_back(one.original_start);
  for (const AppointmentException& one : item.series->exceptions) {
    any.push_back(one.original_start);
    if (one.deleted && !is_cancelled_text(one.residue)) now.push_back(one.original_start);
  }
  for (auto* dates : {&then, &now, &any}) std::sort(dates->begin(), dates->end());
  std::vector<LocalSeconds> added;
  bool removed = false;
  for (const LocalSeconds date : now)
    if (!contains(then, date)) added.push_back(date);
  for (const LocalSeconds date : then) removed = removed || !contains(any, date);
  // At another zone, or as days, they would be other dates in their old words.
  const bool other_words = item.fields.all_day != reference.record.fields.all_day ||
                           (!item.fields.all_day && item.zone != reference.record.zone);
  if (removed || (other_words && !now.empty()))
    plan.replace(PropertyKind::excluded, excluded(item, now));
  else if (!added.empty())
    plan.add(PropertyKind::excluded, excluded(item, added));
}

void EventWriter::write_kept(std::string& out, const Item& item, const Component& text,
                             const ReadEvent& reference) {
  Plan plan;
  plan_changes(item, reference, plan);
  const std::string stamp = moment_text(item.modified) + "\r\n";
  std::set<std::pair<Text, Text>> recipients;
  if (plan.changed[static_cast<std::size_t>(PropertyKind::recipients)])
    recipients = names_of(item.recipients);
  const bool new_id = item.series ? item.detached
                                  : item.in_series_words || item.own_uid || item.moved ||
                                        !text.find("RECURRENCE-ID");
  out += "BEGIN:VEVENT\r\n";
  if (item.own_uid) append_folded(out, "UID:" + escape_text(item.uid));
  const int sent = sent_sequence(item.uid);
  const bool newer = sent > sequence_of(text);
  if (newer) out += "SEQUENCE:" + std::to_string(sent) + "\r\n";
  bool stamped = false;
  for (const Property& property : text.properties) {
    const PropertyKind kind = kind_of(property);
    const auto index = static_cast<std::size_t>(kind);
    stamped = stamped || property.named("DTSTAMP");
    if (kind == PropertyKind::uid && item.own_uid) continue;
    if (new_id && property.named("RECURRENCE-ID")) continue;
    if (newer && property.named("SEQUENCE")) continue;
    if (kind == PropertyKind::stamp && plan.any) {
      out.append(property.name).append(":" + stamp);
    } else if (!plan.changed[index] ||
               (kind == PropertyKind::recipients && recipients.contains(name_of(property)))) {
      append_lines(out, property.raw);
      if (const auto tzid = tzid_of(property)) used_tzids_.insert(*tzid);
    } else if (kind != PropertyKind::recipients) {  // new ones come last, as in the record
      // The first of its kind gives its place to all of them.
      out += std::exchange(plan.lines[index], {});
    }
  }
  if (!stamped) out += "DTSTAMP:" + stamp;
  if (new_id) out += item.recurrence_id;
  for (const std::string& lines : plan.lines) out += lines;
  write_alarms(out, item, text, reference);
  out += "END:VEVENT\r\n";
}

void EventWriter::write_alarms(std::string& out, const Item& item, const Component& text,
                               const ReadEvent& reference) {
  const AppointmentFields& now = item.fields;
  const AppointmentFields& then = reference.record.fields;
  ProblemList ignored{""};
  EventContext context{zones_, clock_, ignored};
  std::int32_t minutes = 0;
  const Component* shown =
      then.reminder_set ? reminder_alarm(text, context, reference, minutes) : nullptr;
  const bool same = now.reminder_set == then.reminder_set &&
                    (!now.reminder_set || now.reminder_minutes == then.reminder_minutes);
  for (const Component& child : text.children) {
    if (&child != shown || same) {
      append_lines(out, child.raw);
    } else if (now.reminder_set) {
      // Only its trigger changes; how it shows or sounds stays.
      out += "BEGIN:VALARM\r\n";
      for (const Property& property : child.properties) {
        if (property.named("TRIGGER"))
          out += trigger_line(now.reminder_minutes);
        else
          append_lines(out, property.raw);
      }
      for (const Component& part : child.children) append_lines(out, part.raw);
      out += "END:VALARM\r\n";
    }
  }
  if (now.reminder_set && !shown) out += alarm_text(now.subject, now.reminder_minutes);
}

}  // namespace orvello
