#include "exchange/event_writer.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "calendar/rule_text.h"
#include "exchange/calendar_keys.h"
#include "exchange/date_values.h"
#include "exchange/event_fields.h"
#include "exchange/rule_writer.h"
#include "exchange/zone_names.h"

namespace orvello {
namespace {

constexpr std::int64_t kMinute = 60;

void append_raw(std::string& out, std::string_view raw) {
  std::size_t at = 0;
  for (std::string_view line; next_line(raw, at, line);) out.append(line).append("\r\n");
}

bool same_rule(const std::optional<RecurrencePattern>& a,
               const std::optional<RecurrencePattern>& b) {
  if (a.has_value() != b.has_value()) return false;
  return !a || *a == *b || rule_from_pattern(*a) == rule_from_pattern(*b);
}

bool contains(const std::vector<LocalSeconds>& dates, LocalSeconds date) {
  return std::find(dates.begin(), dates.end(), date) != dates.end();
}

}  // namespace

// What an appointment and a changed occurrence have in common.
struct EventWriter::Item {
  const AppointmentFields& fields;
  const std::string& zone;
  LocalSeconds start;
  LocalSeconds end;
  const std::vector<StoreRecipient>& recipients;
  std::int64_t modified;
  std::string uid;
  const AppointmentRecord* series = nullptr;  // null: an occurrence
  std::string recurrence_id;                  // of an occurrence: the whole line
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

std::string EventWriter::times(const Item& item) {
  const LocalSeconds end =
      item.fields.all_day ? std::max(item.end + kMinute, item.start + kSecondsPerDay) : item.end;
  return date_line("DTSTART", item, item.start) + date_line("DTEND", item, end);
}

std::string EventWriter::recurrence(const Item& item) {
  if (!item.series) return {};
  const AppointmentRecord& record = *item.series;
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

void EventWriter::write(std::string& out, const AppointmentRecord& record) {
  const Item item{record.fields,   record.zone, record.start, record.end, record.recipients,
                  record.modified, record.uid,  &record,      {}};
  const Residue residue = split_residue(record.residue);
  ParsedComponent text;
  std::optional<ReadEvent> reference;
  if (!residue.component.empty() && text.parse(residue.component, 1))
    reference = reference_of(text.root());
  if (reference)
    write_kept(out, item, text.root(), *reference);
  else
    write_new(out, item);
  for (const AppointmentException& exception : record.exceptions)
    write_exception(out, item, exception, reference ? &*reference : nullptr);
}

void EventWriter::write_exception(std::string& out, const Item& series,
                                  const AppointmentException& exception,
                                  const ReadEvent* reference) {
  ParsedComponent text;
  std::optional<ReadEvent> kept;
  if (!exception.residue.empty() && text.parse(exception.residue, 1))
    kept = reference_of(text.root());
  if (exception.deleted) {
    // Excluded dates stand with the series; a cancelled occurrence has its own words.
    if (kept && kept->cancelled)
      append_raw(out, text.root().raw), note_tzids(text.root(), used_tzids_);
    return;
  }
  if (reference && exception.residue.empty())
    for (const AppointmentException& known : reference->record.exceptions)
      // An occurrence that the series itself names, as a period.
      if (!known.deleted && known.original_start == exception.original_start &&
          known.start == exception.start && known.end == exception.end &&
          known.fields == exception.fields)
        return;
  Item item{exception.fields,
            exception.zone,
            exception.start,
            exception.end,
            exception.recipients,
            series.modified,
            series.uid,
            nullptr,
            {}};
  item.recurrence_id = date_line("RECURRENCE-ID", series, exception.original_start);
  if (kept && !kept->cancelled)
    write_kept(out, item, text.root(), *kept);
  else
    write_new(out, item);
}

void EventWriter::write_new(std::string& out, const Item& item) {
  out += "BEGIN:VEVENT\r\n";
  append_folded(out, "UID:" + escape_text(item.uid));
  out += "DTSTAMP:" + moment_text(item.modified) + "Z\r\n" + item.recurrence_id + times(item);
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
  if (moved_zone || item.start != reference.record.start || item.end != reference.record.end)
    plan.replace(PropertyKind::times, times(item));
  if (now.sensitivity != then.sensitivity)
    plan.replace(PropertyKind::sensitivity, now.sensitivity == 2 ? "CLASS:PRIVATE\r\n" : "");
  if (now.busy_status != then.busy_status)
    plan.replace(PropertyKind::busy, busy_lines(now.busy_status));
  if (now.body_ink != then.body_ink) plan.replace(PropertyKind::ink, ink_line(now.body_ink));
  if (item.recipients != reference.record.recipients) {
    std::string added;
    for (const StoreRecipient& one : item.recipients) {
      const auto& known = reference.record.recipients;
      if (std::find(known.begin(), known.end(), one) == known.end()) added += attendee_line(one);
    }
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
  plan_excluded(item, reference, plan);
}

void EventWriter::plan_excluded(const Item& item, const ReadEvent& reference, Plan& plan) {
  std::vector<LocalSeconds> then, now, any;
  for (const AppointmentException& one : reference.record.exceptions)
    if (one.deleted) then.push_back(one.original_start);
  for (const AppointmentException& one : item.series->exceptions) {
    any.push_back(one.original_start);
    if (one.deleted && !is_cancelled_text(one.residue)) now.push_back(one.original_start);
  }
  std::vector<LocalSeconds> added;
  bool removed = false;
  for (const LocalSeconds date : now)
    if (!contains(then, date)) added.push_back(date);
  for (const LocalSeconds date : then) removed = removed || !contains(any, date);
  if (removed)
    plan.replace(PropertyKind::excluded, excluded(item, now));
  else if (!added.empty())
    plan.add(PropertyKind::excluded, excluded(item, added));
}

void EventWriter::write_kept(std::string& out, const Item& item, const Component& text,
                             const ReadEvent& reference) {
  Plan plan;
  plan_changes(item, reference, plan);
  const std::string stamp = moment_text(item.modified) + "Z\r\n";
  const bool own_uid = !reference.recurrence_id && reference.record.uid != item.uid;
  out += "BEGIN:VEVENT\r\n";
  if (own_uid && item.series) append_folded(out, "UID:" + escape_text(item.uid));
  bool stamped = false;
  for (const Property& property : text.properties) {
    const PropertyKind kind = kind_of(property);
    const auto index = static_cast<std::size_t>(kind);
    stamped = stamped || property.named("DTSTAMP");
    if (kind == PropertyKind::uid && own_uid && item.series) continue;
    if (kind == PropertyKind::stamp && plan.any) {
      out.append(property.name).append(":" + stamp);
    } else if (!plan.changed[index] ||
               (kind == PropertyKind::recipients &&
                std::find(item.recipients.begin(), item.recipients.end(),
                          read_recipient(property)) != item.recipients.end())) {
      append_raw(out, property.raw);
      if (const auto tzid = tzid_of(property)) used_tzids_.insert(*tzid);
    } else if (kind != PropertyKind::recipients) {  // new ones come last, as in the record
      // The first of its kind gives its place to all of them.
      out += std::exchange(plan.lines[index], {});
    }
  }
  if (!stamped) out += "DTSTAMP:" + stamp;
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
      append_raw(out, child.raw);
    } else if (now.reminder_set) {
      // Only its trigger changes; how it shows or sounds stays.
      out += "BEGIN:VALARM\r\n";
      for (const Property& property : child.properties) {
        if (property.named("TRIGGER"))
          out += trigger_line(now.reminder_minutes);
        else
          append_raw(out, property.raw);
      }
      for (const Component& part : child.children) append_raw(out, part.raw);
      out += "END:VALARM\r\n";
    }
  }
  if (now.reminder_set && !shown) out += alarm_text(now.subject, now.reminder_minutes);
}

}  // namespace orvello
