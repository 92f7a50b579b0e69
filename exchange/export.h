// Export as iCalendar 2.0. What was imported comes back as it was, but for what changed since.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/result.h"
#include "ports/clock.h"
#include "store/record_store.h"

namespace orvello {

// Everything in the store, or the appointments with an occurrence that touches the days [from, to].
// Imported calendars keep their own properties, so the text may hold several calendars; what is no
// appointment (tasks, journals ...) is part of an export without bounds only. All is one state of
// the store, or a failure.
Result<std::string> export_calendar(RecordStore& store, std::optional<Day> from_day,
                                    std::optional<Day> to_day, const Clock& clock);

// All contacts as vCards, in the order in which they came into the store. A card that came from a
// file is as it was there, but for what changed since; one that did not is of version 3.0. A store
// without contacts gives an empty text.
Result<std::string> export_contacts(RecordStore& store);

// Appointments as they are in their records, stored or not.
Result<std::string> export_appointments(RecordStore& store,
                                        const std::vector<AppointmentRecord>& records,
                                        const Clock& clock);

}  // namespace orvello
