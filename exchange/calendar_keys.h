// How the store tells imported calendars and what belongs to them apart: keys of foreign components
// and the first line of a record's residue.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvello {

inline constexpr std::string_view kOwnProduct = "-//Orvello//Orvello//EN";

// A residue is the key of the calendar the item came from (empty: our own), and behind a line break
// the text of its component where the record does not say it all.
struct Residue {
  std::string_view calendar;
  std::string_view component;
};

inline Residue split_residue(std::string_view residue) {
  const std::size_t end = residue.find('\n');
  if (end == std::string_view::npos) return {residue, {}};
  return {residue.substr(0, end), residue.substr(end + 1)};
}

// A calendar: "items" or "empty" (whether it had any), and behind a line break its own properties.
inline constexpr std::string_view kCalendarPrefix = "calendar/";
inline std::string calendar_key(std::string_view calendar) {
  return std::string(kCalendarPrefix) + std::string(calendar);
}

// A VTIMEZONE of a calendar, as it stood there.
inline std::string zone_key(std::string_view calendar, std::string_view tzid) {
  return "zone/" + std::string(calendar) + "/" + std::string(tzid);
}

// The calendar of a zone's key, nothing for any other key.
inline std::optional<std::string_view> calendar_of_zone(std::string_view key) {
  if (!key.starts_with("zone/")) return std::nullopt;
  key.remove_prefix(5);
  return key.substr(0, key.find('/'));
}

// Anything else: the key of its calendar, and behind a line break its text.
inline constexpr std::string_view kComponentPrefix = "component/";
inline std::string component_key(std::string_view kind, std::string_view uid,
                                 std::string_view recurrence_id) {
  return std::string(kComponentPrefix) + std::string(kind) + "/" + std::string(uid) + "/" +
         std::string(recurrence_id);
}

// Events that no day shows (cancelled ones, those without a start) are kept like that: the UID of
// one, nothing for any other key.
inline std::optional<std::string_view> uid_of_hidden(std::string_view key) {
  constexpr std::string_view kPrefix = "component/VEVENT/";
  if (!key.starts_with(kPrefix)) return std::nullopt;
  key.remove_prefix(kPrefix.size());
  return key.substr(0, key.rfind('/'));
}

// A meeting of which a request was sent: its SEQUENCE, and behind a blank what tells that time,
// place or recurrence have changed since. Apart from the record, which may become what it was.
inline constexpr std::string_view kSentPrefix = "sent/";
inline std::string sent_key(std::string_view uid) {
  return std::string(kSentPrefix) + std::string(uid);
}

// Changed occurrences that came without their series: lines of "UID<tab>record's UID".
inline constexpr std::string_view kLoneKey = "changes-without-series";

}  // namespace orvello
