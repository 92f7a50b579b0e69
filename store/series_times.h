// A series at other times, with everything that hangs on its occurrences.
#pragma once

#include "store/appointment_record.h"
#include "store/device_time.h"

namespace orvello {

// Whether a changed occurrence stands at its series' own times, and so follows them.
bool stands_with(const AppointmentException& one, const AppointmentRecord& series);

// Gives the series new times, in its own zone: its recurrence goes along, and so do its exceptions,
// of which those that were at the series' times stay at them. False, with nothing changed, where it
// would be another recurrence: rules that name times of day, and days that no longer suit.
[[nodiscard]] bool move_series(AppointmentRecord& record, LocalSeconds start, LocalSeconds end);

// The record and its exceptions in the device's time, for a store that keeps no zones; a series
// stays at the distance that its start has. False when a zone could not be read or, as above, no
// recurrence holds it.
[[nodiscard]] bool make_floating(AppointmentRecord& record, DeviceTime& time);

}  // namespace orvello
