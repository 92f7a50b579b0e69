#include "exchange/event_fields.h"

#include "exchange/base64.h"
#include "exchange/date_values.h"
#include "exchange/event_reader.h"
#include "exchange/zone_names.h"

namespace orvello {
namespace {

struct Row {
  std::string_view name;
  PropertyKind kind;
};

constexpr Row kRows[] = {
    {"UID", PropertyKind::uid},
    {"DTSTAMP", PropertyKind::stamp},
    {"LAST-MODIFIED", PropertyKind::stamp},
    {"SUMMARY", PropertyKind::subject},
    {"LOCATION", PropertyKind::location},
    {"DESCRIPTION", PropertyKind::body},
    {"CATEGORIES", PropertyKind::categories},
    {"DTSTART", PropertyKind::times},
    {"DTEND", PropertyKind::times},
    {"DURATION", PropertyKind::times},
    {"RRULE", PropertyKind::recurrence},
    {"RDATE", PropertyKind::recurrence},
    {"EXRULE", PropertyKind::recurrence},
    {"EXDATE", PropertyKind::excluded},
    {"CLASS", PropertyKind::sensitivity},
    {"TRANSP", PropertyKind::busy},
    {"X-MICROSOFT-CDO-BUSYSTATUS", PropertyKind::busy},
    {"ATTENDEE", PropertyKind::recipients},
    {"ORGANIZER", PropertyKind::recipients},
    {"X-ORVELLO-INK", PropertyKind::ink},
};

}  // namespace

PropertyKind kind_of(const Property& property) {
  for (const Row& row : kRows)
    if (property.named(row.name)) return row.kind;
  return PropertyKind::other;
}

void append_text(std::string& out, std::string_view name, TextView value) {
  if (!value.empty()) append_folded(out, std::string(name) + ":" + escape_text(to_utf8(value)));
}

std::string categories_line(TextView categories) {
  std::string joined;
  for (const Text& one : split(categories, u',')) {
    const std::string label = to_utf8(one);
    if (trimmed(label).empty()) continue;
    joined += (joined.empty() ? "" : ",") + escape_text(trimmed(label));
  }
  return joined.empty() ? std::string() : folded("CATEGORIES:" + joined);
}

std::string busy_lines(BusyStatus status) {
  const char* exact = status == BusyStatus::free        ? "FREE"
                      : status == BusyStatus::tentative ? "TENTATIVE"
                      : status == BusyStatus::busy      ? "BUSY"
                                                        : "OOF";
  return std::string(status == BusyStatus::free ? "TRANSP:TRANSPARENT" : "TRANSP:OPAQUE") +
         "\r\nX-MICROSOFT-CDO-BUSYSTATUS:" + exact + "\r\n";
}

std::string attendee_line(const StoreRecipient& recipient) {
  std::string line = "ATTENDEE";
  if (!recipient.name.empty()) line += ";CN=" + parameter_text(to_utf8(recipient.name));
  const std::string address = to_utf8(recipient.address);
  // Anything with a scheme of its own stays as it is.
  const bool is_uri = address.find(':') != std::string::npos;
  std::string value;
  for (const char c : address)
    if (static_cast<unsigned char>(c) > ' ') value += c;
  return folded(line + (is_uri ? ":" : ":mailto:") + value);
}

std::string ink_line(std::string_view ink) {
  if (ink.empty()) return {};
  return folded("X-ORVELLO-INK;ENCODING=BASE64;VALUE=BINARY:" + to_base64(ink));
}

std::string trigger_line(std::int32_t minutes) {
  return "TRIGGER:" + duration_text(std::int64_t{minutes} * -60) + "\r\n";
}

std::string alarm_text(TextView subject, std::int32_t minutes) {
  std::string text = "BEGIN:VALARM\r\nACTION:DISPLAY\r\n" + trigger_line(minutes);
  append_text(text, "DESCRIPTION", subject.empty() ? TextView(u"Reminder") : subject);
  return text + "END:VALARM\r\n";
}

bool is_cancelled_text(std::string_view residue) {
  ParsedComponent text;
  return !residue.empty() && text.parse(residue, 1) && is_cancelled(text.root());
}

void note_tzids(const Component& component, std::set<std::string>& tzids) {
  for (const Property& property : component.properties)
    if (const auto tzid = tzid_of(property)) tzids.insert(*tzid);
}

}  // namespace orvello
