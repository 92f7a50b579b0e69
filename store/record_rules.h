// What a record must hold before it is stored, and what is computed from it.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/rule.h"
#include "store/appointment_record.h"
#include "store/device_time.h"

namespace orvello {

// Brings a record into the form stores keep: its own times from device-local ones where it has
// none, all-day items on whole days, a pattern's length and last day, exceptions in order and one
// for each occurrence. False when a zone could not be read: the record is then of no use.
[[nodiscard]] bool complete_record(AppointmentRecord& record, DeviceTime& time);

// A name that no other item anywhere has.
std::string made_up_uid();

// Fills the device-local times of a record and its exceptions; false likewise.
[[nodiscard]] bool localize_record(AppointmentRecord& record, DeviceTime& time);

// An all-day item's end: 23:59 of the day on which `end` falls.
LocalSeconds all_day_end(LocalSeconds end);

// Splits recurrence lines ("RRULE;X=1:value"): take(name, value), both without the parameters.
template <typename Take>
void for_each_rule_line(std::string_view lines, Take take) {
  while (!lines.empty()) {
    const auto end = std::min(lines.find('\n'), lines.size());
    auto line = lines.substr(0, end);
    lines.remove_prefix(std::min(end + 1, lines.size()));
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    const auto colon = line.find(':');
    if (colon == std::string_view::npos) continue;
    take(line.substr(0, std::min(line.find(';'), colon)), line.substr(colon + 1));
  }
}

// Reads recurrence lines ("RRULE:...\nRDATE:..."); a line that cannot be read is left out.
RecurrenceSet read_rules(const std::string& lines, LocalSeconds start, const Zone* zone,
                         bool all_day);
// The record's lines with each COUNT turned into the moment it ends, so that a query never counts,
// and without what an all-day item ignores.
std::string resolved_rules(const AppointmentRecord& record, const Zone* zone);

// The start of the first instance: the record's, or a date added before it.
LocalSeconds first_start(const AppointmentRecord& record, const Zone* zone);
// The start of the last instance; nothing for a recurrence without end.
std::optional<LocalSeconds> last_start(const AppointmentRecord& record, const Zone* zone);

}  // namespace orvello
