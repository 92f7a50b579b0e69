#include "exchange/event_reader.h"

#include <algorithm>

#include "base/hash.h"
#include "base/text.h"
#include "exchange/base64.h"
#include "exchange/date_values.h"

namespace orvello {
namespace {

constexpr std::int64_t kMinute = 60;

// Whether a text value is written the only way the writer writes it.
bool is_plain_text(std::string_view value) {
  for (const char c : value)
    if (c == '\\' || c == ',' || c == ';' || static_cast<unsigned char>(c) < ' ')
      return escape_text(unescape_text(value)) == value;
  return true;
}

void read_text(const Property& property, Text& field, ReadEvent& read) {
  if (!field.empty()) {
    read.plain = false;
    return;
  }
  field = to_utf16(unescape_text(property.value));
  if (!property.parameters.empty() || property.value.empty() || !is_plain_text(property.value))
    read.plain = false;
}

bool read_start(const Component& event, EventContext& context, ReadEvent& read) {
  const Property* property = event.find("DTSTART");
  if (!property) {
    context.problems.add(event.line, "event without a start; not shown");
    return false;
  }
  const auto start = read_moment(*property, property->value, context);
  if (!start) {
    context.problems.add(property->line, "start \"" + std::string(property->value.substr(0, 40)) +
                                             "\" is no date; event not shown");
    return false;
  }
  read.start = *start;
  read.record.zone = start->zone_name();
  read.record.start = start->local;
  read.record.fields.all_day = start->is_date;
  const std::string expected = start->is_date ? ";VALUE=DATE"
                               : read.record.zone.empty() || read.record.zone == "UTC"
                                   ? std::string()
                                   : ";TZID=" + parameter_text(read.record.zone);
  if (property->parameters != expected) read.plain = false;
  return true;
}

LocalSeconds all_day_end(const Moment& start, LocalSeconds exclusive) {
  return std::max(exclusive, start.local + kSecondsPerDay) - kMinute;
}

// `end` in the zone of the start; nothing when it lies before it.
std::optional<LocalSeconds> end_from(const Moment& start, const Moment& end, const Clock& clock) {
  if (start.is_date) {
    const LocalSeconds day = midnight_of(day_of(end.local));
    // A time of day behind midnight belongs to a day that is still part of it.
    const LocalSeconds exclusive = day == end.local ? day : day + kSecondsPerDay;
    if (exclusive < start.local) return std::nullopt;
    return all_day_end(start, exclusive);
  }
  Moment moment = end;
  if (end.is_date) moment.is_date = false, moment.zone = start.zone;
  const LocalSeconds local = reading_at(moment, start, clock);
  if (local >= start.local) return local;
  // Clocks set back in between: the later moment has the earlier reading.
  if (moment.zone && utc_of(moment, clock) >= utc_of(start, clock)) return start.local;
  return std::nullopt;
}

LocalSeconds end_after(const Moment& start, const DurationValue& duration, const Clock& clock) {
  if (start.is_date) {
    const std::int64_t days = (duration.total() + kSecondsPerDay - 1) / kSecondsPerDay;
    return all_day_end(start, start.local + days * kSecondsPerDay);
  }
  // Days follow the calendar, hours the clock's true course.
  Moment moment = start;
  moment.local += duration.days * kSecondsPerDay;
  if (!moment.zone || duration.seconds == 0) return moment.local + duration.seconds;
  return std::max(start.local, moment.zone->from_utc(utc_of(moment, clock) + duration.seconds));
}

// An end that cannot be is no reason to hide the event: it then ends where it starts.
void read_end(const Component& event, EventContext& context, ReadEvent& read) {
  const Moment& start = read.start;
  AppointmentRecord& record = read.record;
  record.end = start.is_date ? all_day_end(start, start.local) : start.local;
  const Property* property = event.find("DTEND");
  if (property && !property->value.empty()) {
    const auto end = read_moment(*property, property->value, context);
    const auto local = end ? end_from(start, *end, context.clock) : std::nullopt;
    if (!local) {
      context.problems.add(
          property->line, end ? "end lies before the start; not used" : "end is no date; not used");
      read.plain = false;
      return;
    }
    record.end = *local;
    const Property* began = event.find("DTSTART");
    // Written again, the end would have the start's kind and zone, and say the same.
    if (property->parameters != began->parameters || end->zone != start.zone ||
        end->is_date != start.is_date ||
        (start.is_date ? record.end + kMinute : record.end) != end->local)
      read.plain = false;
    return;
  }
  read.plain = false;  // a start alone, or a duration
  property = event.find("DURATION");
  if (!property || property->value.empty()) return;
  const auto duration = parse_duration(trimmed(property->value));
  if (!duration || duration->total() < 0) {
    context.problems.add(property->line, duration ? "duration is negative; not used"
                                                  : "duration cannot be read; not used");
    return;
  }
  record.end = end_after(start, *duration, context.clock);
}

void read_stamp(const Property& property, ReadEvent& read, bool decides) {
  const auto date = parse_date(property.value);
  if (!date) return;
  if (decides || read.record.modified == UtcSeconds())
    read.record.modified = utc_at_offset(date->local, 0);
}

void read_property(const Property& property, ReadEvent& read) {
  AppointmentFields& fields = read.record.fields;
  if (property.named("SUMMARY")) return read_text(property, fields.subject, read);
  if (property.named("LOCATION")) return read_text(property, fields.location, read);
  if (property.named("DESCRIPTION")) return read_text(property, fields.body, read);
  if (property.named("DTSTAMP")) {
    const auto date = parse_date(property.value);
    if (!date || !date->utc || !property.parameters.empty()) read.plain = false;
    return read_stamp(property, read, false);
  }
  if (property.named("DTSTART") || property.named("DTEND") || property.named("RRULE")) return;
  if (property.named("UID")) {
    if (!read.record.uid.empty() || !property.parameters.empty()) read.plain = false;
    if (read.record.uid.empty()) read.record.uid = unescape_text(trimmed(property.value));
    if (escape_text(read.record.uid) != property.value) read.plain = false;
    return;
  }
  if (property.named("CATEGORIES")) return;
  // Fields hold (some of) these, but not each way to write them.
  read.plain = false;
  if (property.named("CLASS")) {
    fields.sensitivity =
        equal_ignoring_case(trimmed(property.value), "PUBLIC") || property.value.empty() ? 0 : 2;
  } else if (property.named("LAST-MODIFIED")) {
    read_stamp(property, read, true);
  } else if (property.named("ATTENDEE")) {
    read.record.recipients.push_back(read_recipient(property));
  } else if (property.named("X-ORVELLO-INK")) {
    fields.body_ink = from_base64(property.value);
  }
}

void add_organizer(const Component& event, ReadEvent& read) {
  const Property* property = event.find("ORGANIZER");
  if (!property) return;
  StoreRecipient organizer = read_recipient(*property);
  auto& recipients = read.record.recipients;
  for (const StoreRecipient& one : recipients)
    if (upper_ascii(one.address) == upper_ascii(organizer.address)) return;
  recipients.insert(recipients.begin(), std::move(organizer));
}

void read_recurrence_id(const Component& event, EventContext& context, ReadEvent& read) {
  const Property* property = event.find("RECURRENCE-ID");
  if (!property) return;
  read.recurrence_id_text = std::string(trimmed(property->value));
  read.recurrence_id = read_moment(*property, property->value, context);
  if (!read.recurrence_id)
    context.problems.add(property->line,
                         "RECURRENCE-ID is no date; shown as an appointment of its own");
  read.following = equal_ignoring_case(parameter(*property, "RANGE").value_or(""), "THISANDFUTURE");
}

}  // namespace

StoreRecipient read_recipient(const Property& property) {
  std::string address = std::string(trimmed(property.value));
  if (equal_ignoring_case(std::string_view(address).substr(0, 7), "mailto:")) address.erase(0, 7);
  return {to_utf16(parameter(property, "CN").value_or("")), to_utf16(address)};
}

BusyStatus read_busy_status(const Component& event) {
  if (const Property* exact = event.find("X-MICROSOFT-CDO-BUSYSTATUS")) {
    const std::string_view value = trimmed(exact->value);
    if (equal_ignoring_case(value, "FREE")) return BusyStatus::free;
    if (equal_ignoring_case(value, "TENTATIVE")) return BusyStatus::tentative;
    if (equal_ignoring_case(value, "OOF")) return BusyStatus::out_of_office;
    if (equal_ignoring_case(value, "BUSY")) return BusyStatus::busy;
  }
  const Property* transparency = event.find("TRANSP");
  const Property* status = event.find("STATUS");
  const auto says = [](const Property* property, std::string_view value) {
    return property && equal_ignoring_case(trimmed(property->value), value);
  };
  if (says(transparency, "TRANSPARENT") || says(status, "CANCELLED")) return BusyStatus::free;
  return says(status, "TENTATIVE") ? BusyStatus::tentative : BusyStatus::busy;
}

bool is_cancelled(const Component& event) {
  const Property* status = event.find("STATUS");
  return status && equal_ignoring_case(trimmed(status->value), "CANCELLED");
}

std::string join_categories(const Component& event) {
  std::string joined;
  for (const Property& property : event.properties) {
    if (!property.named("CATEGORIES")) continue;
    for (const std::string_view one : split_values(property.value, ',')) {
      const std::string label = unescape_text(trimmed(one));
      if (label.empty()) continue;
      if (!joined.empty()) joined += ',';
      joined += label;
    }
  }
  return joined;
}

std::string made_up_uid(const Component& event) {
  StableHash hash;
  for (const Property& property : event.properties) {
    if (property.named("DTSTAMP") || property.named("LAST-MODIFIED")) continue;
    hash.add(property.name).add(property.parameters).add(property.value);
  }
  return hash.text() + "@orvello";
}

std::optional<ReadEvent> read_event(const Component& event, EventContext& context) {
  for (const int line : event.garbage) context.problems.add(line, "line is no property; left out");
  std::optional<ReadEvent> result(std::in_place);
  ReadEvent& read = *result;
  if (!event.garbage.empty() || !event.children.empty()) read.plain = false;
  if (!read_start(event, context, read)) return std::nullopt;
  read_end(event, context, read);
  read_recurrence_id(event, context, read);
  read.cancelled = is_cancelled(event);
  for (const Property& property : event.properties) read_property(property, read);
  AppointmentFields& fields = read.record.fields;
  if (const Property* categories = event.find("CATEGORIES")) {
    const std::string joined = join_categories(event);
    fields.categories = to_utf16(joined);
    if (categories->raw.size() != joined.size() + 11 || !categories->parameters.empty() ||
        categories->value != joined)
      read.plain = false;
  }
  fields.busy_status = read.plain ? BusyStatus::busy : read_busy_status(event);
  if (!read.plain) add_organizer(event, read);
  const Clock& clock = context.clock;
  Moment end = read.start;
  end.local = read.record.end;
  fields.start = to_calendar_date(device_local(read.start, clock));
  fields.end = to_calendar_date(device_local(end, clock));
  if (!event.children.empty())
    fields.reminder_set = reminder_alarm(event, context, read, fields.reminder_minutes) != nullptr;
  if (!read.recurrence_id)
    read_recurrence(event, context, read);
  else if (const Property* rule = event.find("RRULE"))
    context.problems.add(rule->line, "rule of a single changed occurrence is not used");
  return result;
}

AppointmentException exception_of(const ReadEvent& changed, const ReadEvent& master,
                                  std::string residue, const Clock& clock) {
  AppointmentException exception;
  exception.original_start = reading_at(*changed.recurrence_id, master.start, clock);
  exception.deleted = changed.cancelled;
  exception.fields = changed.record.fields;
  exception.start = changed.record.start;
  exception.end = changed.record.end;
  exception.zone = changed.record.zone;
  exception.recipients = changed.record.recipients;
  exception.residue = std::move(residue);
  return exception;
}

}  // namespace orvello
