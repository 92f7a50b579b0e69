// The agenda of some days: each occurrence that touches them, by start.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/result.h"
#include "ports/calendar_store.h"
#include "ports/registry.h"
#include "settings/settings_record.h"
#include "settings/volume.h"

namespace orvello {

// Occurrences that touch the days [from, to], by start. Fails when the store cannot be read.
Result<std::vector<StoreItem>> agenda_items(CalendarStore& store, std::int32_t from,
                                            std::int32_t to);

// The settings that the text form follows: the clock and the active profile.
void load_agenda_settings(SettingsRecord& settings, Registry& registry,
                          const SettingsVolume& volume, const LocaleData& locale);

// For people: grouped by day, labelled as the Day view labels its rows and in its order. An
// occurrence of several days stands under each of them. What the active profile hides is left out;
// one other than "All" is named in the first line.
std::string agenda_text(const std::vector<StoreItem>& items, std::int32_t from, std::int32_t to,
                        const SettingsRecord& settings);

// For programs, whatever the profile: one array of objects: oid, start, end, allDay, subject,
// location, categories, recurring, busyStatus ("free", "tentative", "busy" or "outOfOffice"),
// private, reminderMinutes. One that stands for many of one day's occurrences of a series also has
// occurrences: how many, null where they were not counted. Times are local; of an all-day item they
// are dates, the end being the day after its last.
std::string agenda_json(const std::vector<StoreItem>& items);

}  // namespace orvello
