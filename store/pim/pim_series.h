// A series on the device: its pattern, and the occurrences that differ from it or were deleted.
#pragma once

#include <optional>
#include <vector>

#include "store/appointment_record.h"
#include "store/pim/pim_fields.h"

namespace orvello {

// The pattern as the device has it. Nothing: failure.
std::optional<RecurrencePattern> read_pattern(const PimObject& pattern);
// Puts all of it, in the platform's order, to be saved with the item; whole days end in the
// platform's form.
[[nodiscard]] bool write_pattern(const PimObject& pattern, const RecurrencePattern& fields,
                                 bool all_day, const PimForm& form);

// The exceptions of a series whose occurrences start at that time of day (seconds): what the
// platform says of the original moment may be its day alone. `wanted` of those that were changed.
std::optional<std::vector<AppointmentException>> read_exceptions(const PimObject& pattern,
                                                                 std::int64_t time_of_day,
                                                                 AppointmentFieldSet wanted,
                                                                 const PimForm& form);
// Makes the saved series' exceptions those of `record`, from those of `now`, of which none is
// missing there and no deleted one is changed: the platform takes no exception back.
[[nodiscard]] bool write_exceptions(const PimObject& item,
                                    const std::vector<AppointmentException>& now,
                                    const AppointmentRecord& record, const PimForm& form);

// Whether the platform can get from these exceptions to those.
bool can_follow_exceptions(const std::vector<AppointmentException>& now,
                           const std::vector<AppointmentException>& wanted);

// What the device shows of a record or an exception that is kept in its own time.
template <typename Item>
AppointmentFields timed_fields(const Item& item) {
  AppointmentFields fields = item.fields;
  fields.start = to_calendar_date(item.start);
  fields.end = to_calendar_date(item.end);
  return fields;
}

}  // namespace orvello
