#include "exchange/meeting_request.h"

#include <algorithm>
#include <cstdlib>

#include "base/hash.h"
#include "calendar/rule_text.h"
#include "exchange/calendar_keys.h"
#include "exchange/content_line.h"
#include "exchange/date_values.h"
#include "exchange/event_reader.h"
#include "exchange/export.h"
#include "exchange/first_fault.h"
#include "exchange/series_parts.h"
#include "exchange/zone_names.h"

namespace orvello {
namespace {

using Made = Result<MeetingRequest>;
using Events = std::vector<const Component*>;

std::string address_in(const Property& person) { return to_utf8(read_recipient(person).address); }

std::string said(const Component& event, const char* name) {
  const Property* property = event.find(name);
  return property ? std::string(property->parameters) + ":" + std::string(trimmed(property->value))
                  : std::string();
}

std::optional<std::int64_t> length_of(const Component& event) {
  const Property *start = event.find("DTSTART"), *end = event.find("DTEND");
  const auto from = start ? parse_date(trimmed(start->value)) : std::nullopt;
  const auto to = end ? parse_date(trimmed(end->value)) : std::nullopt;
  return from && to ? std::optional(to->local - from->local) : std::nullopt;
}

// An occurrence with words of its own (an answer, a note) that is where its series has it.
bool is_in_place(const Component& event, const Component& series) {
  return said(event, "RECURRENCE-ID") == said(event, "DTSTART") &&
         said(event, "LOCATION") == said(series, "LOCATION") &&
         said(event, "DURATION") == said(series, "DURATION") &&
         length_of(event) == length_of(series);
}

// What attendees agree to: with a change of it the meeting is another version of itself.
std::string fingerprint_of(const Events& events) {
  std::vector<std::string> lines;
  for (const Component* event : events) {
    const std::string id = said(*event, "RECURRENCE-ID");
    if (!id.empty() && is_in_place(*event, *events[0])) continue;
    for (const Property& property : event->properties)
      for (const char* name :
           {"DTSTART", "DTEND", "DURATION", "RRULE", "RDATE", "EXRULE", "EXDATE", "LOCATION"})
        if (property.named(name))
          lines.push_back(id + "\n" + name + std::string(property.parameters) + ":" +
                          std::string(trimmed(property.value)));
  }
  std::sort(lines.begin(), lines.end());
  StableHash hash;
  for (const std::string& line : lines) hash.add(line).add("\n");
  return hash.text();
}

Events events_in(const Component& calendar) {
  Events events;
  for (const Component& child : calendar.children)
    if (child.named("VEVENT")) events.push_back(&child);
  return events;
}

// The parameters with this one, in the place of another value of it.
std::string with_parameter(std::string_view parameters, std::string_view name,
                           std::string_view value) {
  std::string made;
  for (const std::string_view one : split_values(parameters, ';'))
    if (!one.empty() && !equal_ignoring_case(trimmed(one.substr(0, one.find('='))), name))
      made.append(";").append(one);
  return made.append(";").append(name).append("=").append(value);
}

bool is_copied(const AppointmentRecord& record, const Component& event) {
  ParsedComponent kept;
  if (!kept.parse(split_residue(record.residue).component, 1)) return false;
  const Property *then = kept.root().find("UID"), *now = event.find("UID");
  return then && now && trimmed(then->value) != trimmed(now->value);
}

bool names_part(const AppointmentRecord& series, const std::string& uid) {
  const auto parts = parts_of(series.residue, series.uid);
  return std::any_of(parts.begin(), parts.end(), [&](const auto& one) { return one.uid == uid; });
}

// One request in the making.
class RequestWriter {
 public:
  RequestWriter(RecordStore& store, const StoreRecipient& organizer, const Clock& clock)
      : store_(store), organizer_(organizer), clock_(clock), failed_(store) {}
  Made make(const AppointmentRecord& record);

 private:
  void take_attendees(const AppointmentRecord& record);
  std::vector<AppointmentRecord> records_of(const AppointmentRecord& record);
  void anchor(AppointmentRecord& record) const;
  bool set_sequence(const AppointmentRecord& record, const Events& events);
  std::string attendee_text(const Property& attendee) const;
  void write_event(std::string& out, const Component& event, const Component& series) const;

  RecordStore& store_;
  const StoreRecipient& organizer_;
  const Clock& clock_;
  FirstFault failed_;
  MeetingRequest request_;
  int sequence_ = 0;
  bool is_newer_ = false;
  bool is_copy_ = false;  // what its kept text says was said of another meeting
};

void RequestWriter::take_attendees(const AppointmentRecord& record) {
  const auto same = [](const StoreRecipient& a, const StoreRecipient& b) {
    return equal_ignoring_case(to_utf8(a.address), to_utf8(b.address));
  };
  auto& all = request_.attendees;
  const auto take = [&](const std::vector<StoreRecipient>& people) {
    for (const StoreRecipient& one : people)
      if (is_mail_address(one.address) && !same(one, organizer_) &&
          std::none_of(all.begin(), all.end(), [&](const auto& other) { return same(one, other); }))
        all.push_back(one);
  };
  take(record.recipients);
  for (const AppointmentException& one : record.exceptions) take(one.recipients);
}

// The device's local time is nobody else's.
void RequestWriter::anchor(AppointmentRecord& record) const {
  const std::string named = clock_.zone_name(), zone = is_utc_name(named) ? "UTC" : named;
  const bool known = zone == "UTC" || clock_.known_zone(zone).has_value();
  const auto anchor_times = [&](auto& item) {
    if (!item.zone.empty() || item.fields.all_day) return;
    if (known) {
      item.zone = zone;
    } else if (!record.recurring()) {
      const auto utc = [&](LocalSeconds local) { return local_at_offset(clock_.to_utc(local), 0); };
      item.zone = "UTC", item.start = utc(item.start), item.end = utc(item.end);
    }
  };
  for (AppointmentException& one : record.exceptions) {
    if (one.deleted) one.residue.clear();  // no request says "cancelled": its date is excluded
    anchor_times(one);
  }
  anchor_times(record);
}

// A series that was divided in its file is one meeting still, whichever part of it is sent.
std::vector<AppointmentRecord> RequestWriter::records_of(const AppointmentRecord& record) {
  const auto stored = [&](const std::string& uid) -> std::optional<AppointmentRecord> {
    if (uid == record.uid) return record;
    const auto oid = store_.oid_of_uid(uid);
    failed_ |= !oid;
    if (!oid || !*oid) return std::nullopt;
    auto loaded = store_.load(**oid);
    failed_ |= !loaded;
    return loaded ? std::move(*loaded) : std::nullopt;
  };
  std::vector<AppointmentRecord> records{record};
  const std::string whole_uid = record.uid.substr(0, record.uid.rfind('#'));
  if (whole_uid != record.uid)
    if (const auto first = stored(whole_uid); first && names_part(*first, record.uid))
      records = {*first};
  for (const PartName& part : parts_of(records[0].residue, records[0].uid))
    if (auto other = stored(part.uid)) records.push_back(std::move(*other));
  for (AppointmentRecord& one : records) anchor(one);
  return records;
}

// It rises when what was sent last, or came from a file, says another time, place or recurrence.
bool RequestWriter::set_sequence(const AppointmentRecord& record, const Events& events) {
  const auto all = store_.foreign();
  failed_ |= !all;
  if (!all) return false;
  if (!is_copy_)
    for (const Component* event : events) sequence_ = std::max(sequence_, sequence_of(*event));
  const std::string now = fingerprint_of(events);
  const Property* uid = events[0]->find("UID");
  request_.sent.key = sent_key(uid ? unescape_text(uid->value) : record.uid);
  std::string before;
  for (const ForeignComponent& one : *all) {
    if (one.key != request_.sent.key) continue;
    sequence_ = std::max(sequence_, std::atoi(one.text.c_str()));
    before = one.text.substr(one.text.find(' ') + 1);
  }
  if (const Residue kept = split_residue(record.residue); before.empty()) {
    std::string text = "BEGIN:VCALENDAR\n" + std::string(kept.component) + "\n";
    for (const AppointmentException& one : record.exceptions) text += one.residue + "\n";
    text += "END:VCALENDAR\n";
    ParsedComponent then;
    const bool had = !is_copy_ && then.parse(text, 1) && !then.root().children.empty() &&
                     then.root().children[0].find("ORGANIZER");
    before = had ? fingerprint_of(events_in(then.root())) : now;
  }
  is_newer_ = before != now;
  if (is_newer_) ++sequence_;
  request_.sent.text = std::to_string(sequence_) + " " + now;
  return true;
}

std::string RequestWriter::attendee_text(const Property& attendee) const {
  const StoreRecipient person = read_recipient(attendee);
  if (!is_mail_address(person.address)) return {};
  std::string parameters(attendee.parameters);
  const std::string answer = parameter(attendee, "PARTSTAT").value_or("");
  const bool own = equal_ignoring_case(to_utf8(person.address), to_utf8(organizer_.address));
  const bool open = is_copy_ || answer.empty() || equal_ignoring_case(answer, "NEEDS-ACTION");
  if (!parameter(attendee, "ROLE"))
    parameters = with_parameter(parameters, "ROLE", "REQ-PARTICIPANT");
  if (open) parameters = with_parameter(parameters, "PARTSTAT", own ? "ACCEPTED" : "NEEDS-ACTION");
  if (!own && (open || is_newer_)) parameters = with_parameter(parameters, "RSVP", "TRUE");
  return folded("ATTENDEE" + parameters + ":" + std::string(attendee.value));
}

void RequestWriter::write_event(std::string& out, const Component& event,
                                const Component& series) const {
  out += "BEGIN:VEVENT\r\n";
  out += "DTSTAMP:" + moment_text(clock_.utc_now()) + "\r\nSEQUENCE:" + std::to_string(sequence_) +
         "\r\n";
  std::string name = to_utf8(organizer_.name);
  if (!name.empty()) name = ";CN=" + parameter_text(name);
  append_folded(out, "ORGANIZER" + name + ":mailto:" + to_utf8(organizer_.address));
  for (const Property& property : event.properties) {
    bool left_out = property.named("ATTENDEE");
    for (const char* other : {"DTSTAMP", "SEQUENCE", "ORGANIZER", "X-ORVELLO-INK", "X-PART"})
      left_out = left_out || property.named(other);
    if (!left_out) append_lines(out, property.raw);
  }
  if (!event.find("SUMMARY")) out += "SUMMARY:\r\n";
  // An occurrence that names nobody is everybody's.
  for (const Property& property : (event.find("ATTENDEE") ? event : series).properties)
    if (property.named("ATTENDEE")) out += attendee_text(property);
  for (const Component& child : event.children)
    if (!child.named("VALARM")) append_lines(out, child.raw);
  out += "END:VEVENT\r\n";
}

Made RequestWriter::make(const AppointmentRecord& record) {
  take_attendees(record);
  if (request_.attendees.empty())
    return Made::failure("None of the attendees has an address that mail can be sent to.");
  const auto text = export_appointments(store_, records_of(record), clock_);
  if (!text) return Made::failure(text.reason());
  ParsedComponent calendar;
  const bool whole = calendar.parse(*text, 1);
  const Events events = events_in(calendar.root());
  if (!whole || events.empty()) return Made::failure("The meeting cannot be written as a request.");
  const Property* organizer = events[0]->find("ORGANIZER");
  is_copy_ = is_copied(record, *events[0]);
  if (organizer && !is_copy_ &&
      !equal_ignoring_case(address_in(*organizer), to_utf8(organizer_.address)))
    return Made::failure("This is a meeting of " + address_in(*organizer) +
                         ", who alone can send it.");
  if (!set_sequence(record, events) || failed_) return Made::failure(failed_.reason());
  std::string& out = request_.calendar;
  out = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:" + std::string(kOwnProduct) +
        "\r\nMETHOD:REQUEST\r\n";
  for (const Component& child : calendar.root().children)
    if (child.named("VTIMEZONE")) append_lines(out, child.raw);
  for (const Component* event : events) write_event(out, *event, *events[0]);
  out += "END:VCALENDAR\r\n";
  return std::move(request_);
}

}  // namespace

bool is_mail_address(TextView address) {
  const std::size_t at = address.find(u'@');
  if (at == TextView::npos || at == 0 || at + 1 == address.size() || address.size() > 254 ||
      address.front() == u'-' || address.find(u'@', at + 1) != TextView::npos)
    return false;
  return std::none_of(address.begin(), address.end(), [](char16_t c) {
    return c <= u' ' || c == 0x7F || TextView(u"<>()[],;:\\\"").find(c) != TextView::npos ||
           (c >= 0x80 && c < 0xA0) || (c >= 0x2000 && c < 0x2070) || c == 0xFEFF;
  });
}

Made meeting_request(RecordStore& store, const AppointmentRecord& record,
                     const StoreRecipient& organizer, const Clock& clock) {
  StoreReading reading(store);
  if (!reading) return Made::failure(store.problem());
  return RequestWriter(store, organizer, clock).make(record);
}

}  // namespace orvello
