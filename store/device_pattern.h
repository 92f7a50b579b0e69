// A series' pattern as the device's days have it, and a series given one.
#pragma once

#include <optional>

#include "calendar/recurrence_pattern.h"
#include "store/appointment_record.h"
#include "store/device_time.h"

namespace orvello {

// Sets the pattern in the device's time, nothing where none holds it there. False when the zone
// could not be read.
[[nodiscard]] bool device_pattern(const AppointmentRecord& record, DeviceTime& time,
                                  std::optional<RecurrencePattern>& pattern);

// Gives a record another pattern, in the device's time; in the record's own zone where a pattern
// holds it there, else from now on in the device's. Of the exceptions, which are in order, those
// stay whose day is an occurrence of the new pattern: at its time where they were at the series'
// times, else at their own. `before` is the record as it was before other changes were made to it.
// False when a zone could not be read.
[[nodiscard]] bool set_device_pattern(AppointmentRecord& record, const AppointmentRecord& before,
                                      const RecurrencePattern& pattern, DeviceTime& time);

int changed_occurrences(const AppointmentRecord& record);

}  // namespace orvello
