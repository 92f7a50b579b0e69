// The agenda of some days: each occurrence that touches them, by start.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/result.h"
#include "calendar/locale_data.h"
#include "ports/calendar_store.h"

namespace orvello {

// Occurrences that touch the days [from, to], by start. Fails when the store cannot be read.
Result<std::vector<StoreItem>> agenda_items(CalendarStore& store, std::int32_t from,
                                            std::int32_t to);

// For people: grouped by day, labelled as the Day view labels its rows. An occurrence of several
// days stands under each of them.
std::string agenda_text(const std::vector<StoreItem>& items, std::int32_t from, std::int32_t to,
                        bool clock24, const LocaleData& locale);

// One array of objects: oid, start, end, allDay, subject, location, categories, recurring,
// busyStatus ("free", "tentative", "busy" or "outOfOffice"), private, reminderMinutes. Times are
// local; of an all-day item they are dates, the end being the day after its last.
std::string agenda_json(const std::vector<StoreItem>& items);

}  // namespace orvello
