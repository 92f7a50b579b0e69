#include "exchange/vcalendar1_zone.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "calendar/rule_text.h"
#include "exchange/date_values.h"
#include "exchange/zone_names.h"

namespace orvello {
namespace {

// "TRUE;+02;20260329T020000;20261025T030000;CET;CEST", in Coordinated Universal Time.
struct Summer {
  int offset;
  UtcSeconds begin, end;
};

// "+01", "-5", "+0530", "+05:30"
std::optional<int> old_offset(std::string_view text) {
  text = trimmed(text);
  if (text.empty() || (text[0] >= '0' && text[0] <= '9'))
    return offset_in_name("UTC+" + std::string(text));
  return offset_in_name("UTC" + std::string(text));
}

std::vector<Summer> read_summers(const Component& header, int standard) {
  constexpr std::size_t kMost = 200;
  std::vector<Summer> summers;
  for (const Property& property : header.properties) {
    if (!property.named("DAYLIGHT") || summers.size() == kMost) continue;
    const auto parts = split_values(property.value, ';');
    if (parts.size() < 4 || !equal_ignoring_case(trimmed(parts[0]), "TRUE")) continue;
    const auto offset = old_offset(parts[1]);
    const auto begin = parse_date(trimmed(parts[2])), end = parse_date(trimmed(parts[3]));
    if (!offset || *offset == standard || !begin || !end) continue;
    summers.push_back({*offset, utc_at_offset(begin->local, begin->utc ? 0 : standard),
                       utc_at_offset(end->local, end->utc ? 0 : *offset)});
  }
  std::sort(summers.begin(), summers.end(),
            [](const Summer& a, const Summer& b) { return a.begin < b.begin; });
  return summers;
}

int device_offset(const Clock& clock, UtcSeconds utc) {
  return static_cast<int>(clock.to_local(utc) - local_at_offset(utc, 0));
}

bool is_devices(const std::vector<Summer>& summers, int standard, const Clock& clock) {
  if (summers.empty()) {  // in winter, on either half of the earth
    const int year = civil_of(day_of(clock.utc_now())).year;
    const auto offset_in = [&](int month) {
      return device_offset(clock, utc_at_offset(midnight_of(day_of(year, month, 1)), 0));
    };
    return standard == std::min(offset_in(1), offset_in(7));
  }
  return std::all_of(summers.begin(), summers.end(), [&](const Summer& each) {
    return device_offset(clock, each.begin - kSecondsPerDay) == standard &&
           device_offset(clock, each.begin + kSecondsPerDay) == each.offset &&
           device_offset(clock, each.end + kSecondsPerDay) == standard;
  });
}

// The yearly rule by which the clock changes on such a day, as "2SU" or "-1SU" of its month.
std::string rule_of(const SystemTime& day) {
  constexpr const char* kNames[] = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};
  const int length = day_of(day.year, day.month + 1, 1) - day_of(day.year, day.month, 1);
  const std::string which = day.day + 7 > length ? "-1" : std::to_string((day.day + 6) / 7);
  return "RRULE:FREQ=YEARLY;BYMONTH=" + std::to_string(day.month) + ";BYDAY=" + which +
         kNames[day.day_of_week] + "\r\n";
}

// All changes of one kind. The last one goes on for ever; a lone one has been so before.
std::string part(const char* kind, int from, int to, std::vector<LocalSeconds> onsets) {
  std::string text = std::string("BEGIN:") + kind + "\r\n";
  const SystemTime last = civil_of(day_of(onsets.back()));
  const std::string offsets =
      "TZOFFSETFROM:" + utc_offset_text(from) + "\r\nTZOFFSETTO:" + utc_offset_text(to) + "\r\n";
  const std::string end = std::string("END:") + kind + "\r\n";
  LocalSeconds start = onsets.back();
  if (onsets.size() == 1) {  // 28 years later or earlier days fall on the same weekdays
    constexpr std::int64_t kCycle = 10227 * kSecondsPerDay;
    while (start > midnight_of(day_of(1998, 1, 1))) start -= kCycle;
  }
  text += "DTSTART:" + moment_text(start) + "\r\n" + offsets + rule_of(last) + end;
  onsets.pop_back();
  for (const LocalSeconds onset : onsets)
    text +=
        std::string("BEGIN:") + kind + "\r\nDTSTART:" + moment_text(onset) + "\r\n" + offsets + end;
  return text;
}

}  // namespace

OldZone zone_of_vcalendar1(const Component& header, const Clock& clock) {
  const Property* property = header.find("TZ");
  if (!property || trimmed(property->value).empty()) return {};
  const auto standard = old_offset(property->value);
  if (!standard) return {tzid_text(property->value), {}};  // some write a name
  const std::vector<Summer> summers = read_summers(header, *standard);
  if (is_devices(summers, *standard, clock)) return {};
  OldZone zone;
  zone.tzid = "TZ" + utc_offset_text(*standard);
  std::string parts;
  if (summers.empty()) {
    parts =
        "BEGIN:STANDARD\r\nDTSTART:19700101T000000\r\nTZOFFSETFROM:" + utc_offset_text(*standard) +
        "\r\nTZOFFSETTO:" + utc_offset_text(*standard) + "\r\nEND:STANDARD\r\n";
  } else {
    const int offset = summers.back().offset;
    zone.tzid += "/" + utc_offset_text(offset);
    std::vector<LocalSeconds> begins, ends;
    for (const Summer& each : summers) {
      if (each.offset != offset) continue;
      begins.push_back(local_at_offset(each.begin, *standard));
      ends.push_back(local_at_offset(each.end, offset));
    }
    parts = part("DAYLIGHT", *standard, offset, begins) + part("STANDARD", offset, *standard, ends);
  }
  zone.definition = "BEGIN:VTIMEZONE\r\nTZID:" + zone.tzid + "\r\n" + parts + "END:VTIMEZONE\r\n";
  return zone;
}

}  // namespace orvello
